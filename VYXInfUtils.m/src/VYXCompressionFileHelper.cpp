#include "VYXCompressionFileHelper.h"

#include <utility>

#include "KORSysBase/KORSysZipFile.h"
#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"
#include "internal/owned_folders.h"

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::CreateTemporaryFolder;
using VYX::Internal::FailureReturn;
using VYX::Internal::LogPendingError;
using VYX::Internal::RemoveFolders;

namespace {

// Stores a file under its bare name.
long AddFlat(KORSysZipFile& ioZip, const KORUnicodeString& iFile) {
  KORUnicodeString folder;
  const long code = VYXInfSystemUtil::SplitFilePath(iFile, &folder, nullptr);
  return code < 0 ? code : ioZip.AddFile(&iFile, 1, 0, &folder, 0);
}

}  // namespace

VYXCompressionFileHelper::VYXCompressionFileHelper() : _ownerProcess(VYXInfSystemUtil::GetPID()) {}

VYXCompressionFileHelper::~VYXCompressionFileHelper() {
  RemoveFolders(_folders, _ownerProcess, "Deleting repo: ", VYX_HERE);
}

long VYXCompressionFileHelper::ZipTmpArchive(const KORListValKORUnicodeString& iFiles,
                                             const KORUnicodeString& iArchiveName, KORUnicodeString& oArchivePath) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    KORUnicodeString folder;
    if (const long code = CreateTemporaryFolder("TmpArchiveFolder", _folders, folder); code < 0) {
      return FailureReturn(VYX_HERE, LogPendingError(code));
    }
    KORUnicodeString archivePath = folder + iArchiveName;
    KORSysZipFile zip(0);
    if (const long code = zip.OpenZip(archivePath, KORSysZipOpenMode::Create, 0); code < 0) {
      return FailureReturn(VYX_HERE, LogPendingError(code));
    }
    for (const KORUnicodeString& file : iFiles) {
      if (const long code = AddFlat(zip, file); code < 0) {
        return FailureReturn(VYX_HERE, LogPendingError(code));
      }
    }
    if (const long code = zip.Close(0); code < 0) {
      return FailureReturn(VYX_HERE, LogPendingError(code));
    }
    oArchivePath = std::move(archivePath);
    return S_OK;
  });
}
