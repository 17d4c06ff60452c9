#include "internal/owned_folders.h"

#include <exception>
#include <utility>

#include "KORSysBase/KORDirectory.h"
#include "VYXInfSystemUtil.h"
#include "internal/missing_path.h"

namespace VYX::Internal {

namespace {

void RemoveFolder(const KORUnicodeString& iPath, const char* iWords, const SourceSite& iSite) {
  if (IsSurelyMissing(iPath)) {
    return;
  }
  LogUnlessFiltered(TRACE, iWords, iPath);
  if (const long code = KORRemoveDirectoryR(iPath); code < 0) {
    LogPendingError(code);
    FailureLog(iSite);
  }
}

// False where memory ran out.
bool TryToRemove(const KORUnicodeString& iPath, const char* iWords, const SourceSite& iSite) noexcept {
  try {
    RemoveFolder(iPath, iWords, iSite);
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace

long CreateTemporaryFolder(const KORUnicodeString& iName, KORListValKORUnicodeString& ioFolders,
                           KORUnicodeString& oPath) {
  KORUnicodeString path = VYXInfSystemUtil::CreateUniquePath(iName, VYXInfSystemUtil::GetTempFolderPath());
  // All memory is taken before the folder is there: nothing may come between that and its having an owner.
  KORUnicodeString owned = path;
  ioFolders.Append(KORUnicodeString());
  const long code = KORCreatePrivateDirectoryR(path);
  if (code < 0) {
    ioFolders.RemovePosition(ioFolders.Size());
    return code;
  }
  ioFolders[ioFolders.Size()] = std::move(owned);
  oPath = std::move(path);
  return code;
}

void RemoveFolders(KORListValKORUnicodeString& ioFolders, std::int32_t iOwnerProcess, const char* iWords,
                   const SourceSite& iSite) noexcept {
  if (iOwnerProcess == VYXInfSystemUtil::GetPID()) {
    for (const KORUnicodeString& folder : ioFolders) {
      // Without memory to remove a folder there is none to tell of it either. What the first attempt had taken may
      // serve the second one.
      if (!TryToRemove(folder, iWords, iSite)) {
        static_cast<void>(TryToRemove(folder, iWords, iSite));
      }
    }
  }
  ioFolders.RemoveAll();
}

}  // namespace VYX::Internal
