#include <string>
#include <string_view>

#include "KORSysBase/KORDirectory.h"
#include "KORSysBase/KORError.h"
#include "VYXInfProfile.h"
#include "VYXInfStringUtil.h"
#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"
#include "path_text.h"

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::FailureLog;
using VYX::Internal::kPathSeparator;
using VYX::Internal::LogPendingError;
using VYX::Internal::LogUnlessFiltered;

namespace {

bool IsWanted(const KORUnicodeString& iName, const KORListValKORUnicodeString& iExtensions) {
  return iExtensions.Size() == 0 || VYXInfStringUtil::EndsWith(iName, iExtensions, false);
}

class Listing {
 public:
  Listing(const KORUnicodeString& iDirectory, const KORListValKORUnicodeString& iExtensions)
      : _directory(iDirectory), _extensions(iExtensions), _isLogged(!VYX::Internal::IsFiltered(TRACE)) {}

  // Reads every entry of an open folder; a negative code when the folder cannot be read to its end.
  long ReadAll(KORDirectoryHandle& ioHandle) {
    KORDirectoryEntry entry;
    int isAtEnd = 0;
    long code = KORReadDirectory(&ioHandle, &entry, &isAtEnd);
    while (code == 0 && isAtEnd == 0) {
      Add(entry);
      code = KORReadDirectory(&ioHandle, &entry, &isAtEnd);
    }
    return code;
  }

  KORListValKORUnicodeString& Files() noexcept { return _files; }
  KORListValKORUnicodeString& Folders() noexcept { return _folders; }

 private:
  void Add(const KORDirectoryEntry& iEntry) {
    ++_number;
    _status = 0;
    KORUnicodeString name(iEntry.name);
    if (name.ToStringView().find(kPathSeparator) != std::string_view::npos) {
      Report("--> IGNORING file #", " [NAME CANNOT BE PART OF A PATH] (endOfDir ", name);
      return;
    }
    const unsigned int mode = ModeOf(iEntry, name);
    if ((mode & KORFileInfo::kFolder) != 0) {
      Report("--> found folder #", " (endOfDir ", name);
      _folders.Append(std::move(name));
    } else if ((mode & KORFileInfo::kRegularFile) == 0) {
      Report("--> IGNORING file #", " [NOT A REGULAR FILE] (endOfDir ", name);
    } else if (IsWanted(name, _extensions)) {
      Report("--> found file #", " (endOfDir ", name);
      _files.Append(std::move(name));
    } else {
      Report("--> IGNORING file #", " [EXTENSION NOT SUPPORTED]  (endOfDir ", name);
    }
  }

  // The folder often tells what an entry is; the entry itself is asked otherwise.
  unsigned int ModeOf(const KORDirectoryEntry& iEntry, const KORUnicodeString& iName) {
    if (iEntry.isModeKnown) {
      return iEntry.mode;
    }
    KORFileInfo info;
    _status = KORGetFileInfo(_directory + "\\" + iName, &info);
    if (_status != 0) {
      KORError::KORCleanLastError();
    }
    return info.mode;
  }

  void Report(std::string_view iVerdict, std::string_view iReason, const KORUnicodeString& iName) const {
    if (_isLogged) {
      constexpr int kEndOfDir = 0;  // what is reported is an entry, so the end is still to come
      LogUnlessFiltered(TRACE, "                     ", iVerdict, _number, iReason, kEndOfDir, ", file info status ",
                        _status, "):  \"", iName, "\" ");
    }
  }

  const KORUnicodeString& _directory;
  const KORListValKORUnicodeString& _extensions;
  const bool _isLogged;
  int _number = 0;
  long _status = 0;
  KORListValKORUnicodeString _files;
  KORListValKORUnicodeString _folders;
};

}  // namespace

KORListValKORUnicodeString VYXInfSystemUtil::ListFileNamesFromDirectory(const KORUnicodeString& iDirectory,
                                                                        const KORListValKORUnicodeString& iExtensions,
                                                                        KORListValKORUnicodeString* oFolders) {
  return CatchAtBoundary(VYX_HERE, KORListValKORUnicodeString(), [&]() -> KORListValKORUnicodeString {
    const VYXInfProfileTrigger trigger("VYXInfSystemUtil::ListFileNamesFromDirectory", true, TRACE);
    LogUnlessFiltered(TRACE, "READING DIRECTORY: '", iDirectory, "' ");
    KORDirectoryHandle handle;
    if (const long code = KOROpenDirectory(iDirectory, &handle); code != 0) {
      LogPendingError(code);
      FailureLog(VYX_HERE);
      return {};
    }
    Listing listing(iDirectory, iExtensions);
    if (const long code = listing.ReadAll(handle); code != 0) {
      LogPendingError(code);
      FailureLog(VYX_HERE);
    }
    if (const long code = KORCloseDirectory(&handle); code != 0) {
      LogPendingError(code);
      FailureLog(VYX_HERE);
    }
    LogUnlessFiltered(TRACE, "Found ", listing.Files().Size(), " FILES from \"", iDirectory, "\" ");
    if (oFolders != nullptr) {
      listing.Folders().RemoveValue(".");
      listing.Folders().RemoveValue("..");
      *oFolders = std::move(listing.Folders());
    }
    return std::move(listing.Files());
  });
}
