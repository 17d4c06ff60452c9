#include "KORSysBase/KOREnvironment.h"

#include "platform/os/environment.h"

const char* KORGetEnv(const char* iName) noexcept {
  return VYX::Os::EnvironmentValue(iName);
}
