#include "VYXInfFileHelper.h"

#include <utility>

#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"
#include "internal/owned_folders.h"

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::CreateTemporaryFolder;
using VYX::Internal::FailureReturn;
using VYX::Internal::LogPendingError;
using VYX::Internal::RemoveFolders;

VYXInfFileHelper::VYXInfFileHelper() : _ownerProcess(VYXInfSystemUtil::GetPID()) {}

VYXInfFileHelper::~VYXInfFileHelper() {
  RemoveFolders(_folders, _ownerProcess, "Deleting folder: ", VYX_HERE);
}

long VYXInfFileHelper::CreateTmpDir(const KORUnicodeString& iName, KORUnicodeString& oPath) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    KORUnicodeString path;
    if (const long code = CreateTemporaryFolder(iName, _folders, path); code < 0) {
      LogPendingError(code);
      return FailureReturn(VYX_HERE, E_FAIL);
    }
    oPath = std::move(path);
    return S_OK;
  });
}
