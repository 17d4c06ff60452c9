#include "VYXInfLog.h"
#include "VYXInfLog/settings.h"
#include "internal/FailureTrace.h"

namespace {

using VYX::Internal::LoggerSettings;
using VYX::Internal::LogUnlessFiltered;

bool ConfigureAndReport(const char* iOperation, const LoggerSettings& iInput, const KORUnicodeString& iAppName) {
  LoggerSettings used = iInput;
  VYX::Internal::ApplyEnvironment(used, iAppName);
  const bool isInstalled = VYX::Internal::Configure(used);
  LogUnlessFiltered(INFO, iOperation, isInstalled ? "SUCCEEDED" : "FAILED");
  LogUnlessFiltered(INFO, "    Input: ", VYX::Internal::Describe(iInput));
  LogUnlessFiltered(INFO, "    Used : ", VYX::Internal::Describe(used));
  return isInstalled;
}

}  // namespace

bool VYXInfLog::Init(VYXInfLogLevel iLevel, const KORUnicodeString& iFile, const KORUnicodeString& iAppName) {
  return ConfigureAndReport("VYXInfLog::Init ", LoggerSettings{iLevel, iFile, {}}, iAppName);
}

bool VYXInfLog::InitFromFile(const KORUnicodeString& iConfigFile) {
  return ConfigureAndReport("VYXInfLog::InitFromFile ", LoggerSettings{INFO, {}, iConfigFile}, _defaultAppName);
}
