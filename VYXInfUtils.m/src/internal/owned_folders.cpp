#include "internal/owned_folders.h"

#include <exception>
#include <utility>

#include "KORSysBase/KORDirectory.h"
#include "VYXInfSystemUtil.h"

namespace VYX::Internal {

namespace {

void RemoveFolder(const KORUnicodeString& iPath, const char* iWords, const SourceSite& iSite) {
  if (!VYXInfSystemUtil::DoesFileExist(iPath)) {
    return;
  }
  LogUnlessFiltered(TRACE, iWords, iPath);
  if (const long code = KORRemoveDirectoryR(iPath); code < 0) {
    LogPendingError(code);
    FailureLog(iSite);
  }
}

}  // namespace

long CreateTemporaryFolder(const KORUnicodeString& iName, KORUnicodeString& oPath) {
  KORUnicodeString path = VYXInfSystemUtil::CreateUniquePath(iName, VYXInfSystemUtil::GetTempFolderPath());
  const long code = KORCreatePrivateDirectoryR(path);
  if (code >= 0) {
    oPath = std::move(path);
  }
  return code;
}

void RemoveFolders(KORListValKORUnicodeString& ioFolders, std::int32_t iOwnerProcess, const char* iWords,
                   const SourceSite& iSite) noexcept {
  if (iOwnerProcess == VYXInfSystemUtil::GetPID()) {
    for (const KORUnicodeString& folder : ioFolders) {
      try {
        RemoveFolder(folder, iWords, iSite);
      } catch (const std::exception&) {
        // Without memory to remove a folder there is none to tell of it either; the next one may need less.
        continue;
      }
    }
  }
  ioFolders.RemoveAll();
}

}  // namespace VYX::Internal
