#include "KORSysBase/KOREnvironment.h"
#include "VYXInfLog/settings.h"
#include "VYXInfStringUtil.h"
#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"

namespace VYX::Internal {

namespace {

// Unset and empty are the same.
KORUnicodeString Variable(const char* iName) {
  return KORUnicodeString(KORGetEnv(iName));
}

// True when the settings now follow the settings file that the environment names.
bool ApplyConfigFile(LoggerSettings& ioSettings) {
  KORUnicodeString config = Variable("VYX_LOG_CONFIG_FILE");
  if (config.IsEmpty()) {
    return false;
  }
  if (!VYXInfSystemUtil::DoesFileExist(config)) {
    return FailureReturn(VYX_HERE, false);
  }
  ioSettings.config = std::move(config);
  ioSettings.file.Reset();
  return true;
}

void ApplyOutput(LoggerSettings& ioSettings, const KORUnicodeString& iAppName) {
  const KORUnicodeString output = Variable("VYX_LOG_OUTPUT");
  if (output.IsEmpty()) {
    return;
  }
  if (VYXInfStringUtil::Compare(output, "CONSOLE", false)) {
    ioSettings.file.Reset();
    ioSettings.config.Reset();
    return;
  }
  if (!VYXInfSystemUtil::DoesFileExist(output)) {
    TraceFailureReturn(VYX_HERE);
    return;
  }
  KORUnicodeString name;
  if (!VYXInfLog::BuildLogFileName(name, iAppName, output)) {
    TraceFailureReturn(VYX_HERE);
    return;
  }
  ioSettings.file = std::move(name);
  ioSettings.config.Reset();
}

}  // namespace

void ApplyEnvironment(LoggerSettings& ioSettings, const KORUnicodeString& iAppName) {
  if (!ApplyConfigFile(ioSettings)) {
    ApplyOutput(ioSettings, iAppName);
  }
  if (ioSettings.config.IsEmpty()) {
    ioSettings.level = VYXInfLog::LevelFromString(Variable("VYX_LOG_LEVEL"), ioSettings.level);
  }
}

}  // namespace VYX::Internal
