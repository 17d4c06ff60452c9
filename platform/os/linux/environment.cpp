#include "platform/os/environment.h"

#include <stdlib.h>

#if !defined(__linux__)
#error "this source is for Linux"
#endif

namespace VYX::Os {

const char* EnvironmentValue(const char* iName) noexcept {
  return iName == nullptr ? nullptr : getenv(iName);  // NOLINT(concurrency-mt-unsafe): the contract says when it is
}

const char* TrustedEnvironmentValue(const char* iName) noexcept {
  return iName == nullptr ? nullptr : secure_getenv(iName);
}

}  // namespace VYX::Os
