#include "platform/os/environment.h"

#include <string>
#include <string_view>
#include <utility>

#include "KORSysBase/KOREnvironment.h"
#include "KORSysTS/QRMSysTenant.h"
#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"
#include "platform/os/system_information.h"

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::FailureReturn;
using VYX::Internal::LogPendingError;

std::vector<KORUnicodeString> VYXInfSystemUtil::EnumEnvVars(std::function<bool(const KORUnicodeString&)> iFilter) {
  return CatchAtBoundary(VYX_HERE, std::vector<KORUnicodeString>(), [&]() -> std::vector<KORUnicodeString> {
    std::vector<KORUnicodeString> wanted;
    for (const std::string& entry : VYX::Os::EnvironmentEntries()) {
      KORUnicodeString text{std::string_view(entry)};
      if (!iFilter || iFilter(text)) {
        wanted.push_back(std::move(text));
      }
    }
    return wanted;
  });
}

KORUnicodeString VYXInfSystemUtil::GetInstallPaths() {
  return KORGetEnv("KORInstallPath");
}

long VYXInfSystemUtil::GetExecutablePath(KORUnicodeString& oFolder) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    std::string path;
    if (!VYX::Os::ExecutablePath(path).IsOk()) {
      return FailureReturn(VYX_HERE, E_FAIL);
    }
    KORUnicodeString folder;
    KORUnicodeString name;
    KORUnicodeString extension;
    const long code = SplitFilePath(KORUnicodeString(std::string_view(path)), folder, name, extension);
    if (code < 0) {
      return FailureReturn(VYX_HERE, LogPendingError(code));
    }
    oFolder = std::move(folder);
    return S_OK;
  });
}

bool VYXInfSystemUtil::IsCloudClient() {
  return QRMSysIsCloud();
}

long VYXInfSystemUtil::GetDweldAuthoringUrl(KORUnicodeString& oUrl) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    QRMSysTenantData tenant;
    const long code = QRMSysGetCurrentTenantData(tenant);
    if (code < 0) {
      return E_FAIL;
    }
    oUrl = tenant.GetMappedService(MappedServices::DweldAuthoring);
    return code;
  });
}
