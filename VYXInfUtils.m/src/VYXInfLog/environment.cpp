#include <algorithm>
#include <string_view>

#include "VYXInfLog/settings.h"
#include "VYXInfStringUtil.h"
#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"
#include "platform/os/environment.h"

namespace VYX::Internal {

namespace {

// Unset and empty are the same. Who starts a program of raised privileges must not choose what it writes to.
KORUnicodeString Variable(const char* iName) {
  return KORUnicodeString(Os::TrustedEnvironmentValue(iName));
}

// A name with control characters is nobody's folder, but an attempt to write lines of its own to terminal and log.
bool DoesPathExist(const KORUnicodeString& iPath) {
  const std::string_view path = iPath.ToStringView();
  const bool hasControls = std::any_of(path.begin(), path.end(), [](char iChar) {
    const auto byte = static_cast<unsigned char>(iChar);
    return byte < 0x20 || byte == 0x7F;
  });
  return !hasControls && VYXInfSystemUtil::DoesFileExist(iPath);
}

// True when the settings now follow the settings file that the environment names.
bool ApplyConfigFile(LoggerSettings& ioSettings) {
  KORUnicodeString config = Variable("VYX_LOG_CONFIG_FILE");
  if (config.IsEmpty()) {
    return false;
  }
  if (!DoesPathExist(config)) {
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
  if (!DoesPathExist(output)) {
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
