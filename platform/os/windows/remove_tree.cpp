#include <string>
#include <utility>
#include <vector>

#include "platform/os/folders.h"
#include "platform/os/windows/file_info.h"
#include "platform/os/windows/path_text.h"
#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os {
namespace {

using Windows::FileHandle;
using Windows::gFileCalls;

// A folder that is open without the right to be renamed or removed keeps its path, and so do all those above it.
constexpr DWORD kStays = FILE_SHARE_READ | FILE_SHARE_WRITE;

bool IsSelfOrParent(std::wstring_view iName) noexcept {
  return iName == L"." || iName == L"..";
}

// One folder on the way down: its identity, so that the way back up is certain, and the sub-folders still to be
// visited.
struct Level {
  std::wstring name;
  DWORD device = 0;
  std::uint64_t file = 0;
  std::vector<std::wstring> subFolders;
};

// Opens a folder that is no link, and says which one it is.
Status OpenLevel(const std::wstring& iPath, FileHandle& oFolder, Level& oLevel) {
  FileHandle folder(gFileCalls.OpenFile(iPath.c_str(), FILE_LIST_DIRECTORY | FILE_READ_ATTRIBUTES, kStays, nullptr,
                                        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT));
  BY_HANDLE_FILE_INFORMATION info = {};
  if (!folder.IsOpen() || !gFileCalls.DescribeFile(folder.Get(), &info)) {
    return Status::OfLastCall();
  }
  // Some hosts open the target of a link all the same; the name itself tells.
  if (!Windows::IsRealFolder(info.dwFileAttributes) || !Windows::IsRealFolder(gFileCalls.Attributes(iPath.c_str()))) {
    return Failure::NotAFolder();
  }
  oLevel.device = info.dwVolumeSerialNumber;
  oLevel.file = static_cast<std::uint64_t>(info.nFileIndexHigh) << 32 | info.nFileIndexLow;
  oFolder = std::move(folder);
  return {};
}

// A name that somebody else removes meanwhile is no failure.
class TreeRemoval {
 public:
  TreeRemoval(std::wstring iPath, std::string iReportedPath, RemovalReport& oReport)
      : _root(std::move(iPath)), _reportedRoot(std::move(iReportedPath)), _report(oReport), _path(_root) {}

  // Empties the folder level by level, and removes it. Only the deepest folder is held open.
  void Run() {
    if (!Enter({})) {
      return;
    }
    while (_levels.size() > 1 || !_levels.back().subFolders.empty()) {
      Level& level = _levels.back();
      if (!level.subFolders.empty()) {
        std::wstring next = std::move(level.subFolders.back());
        level.subFolders.pop_back();
        Enter(std::move(next));
      } else if (!Leave()) {
        return;
      }
    }
    _current.Reset(nullptr);
    if (RemoveFolder(_root, {})) {
      // Nothing can be left inside, whatever went wrong on the way.
      _report = {_report.removed, 0, {}, {}};
    }
  }

 private:
  bool Enter(std::wstring iName) {
    const std::wstring path = iName.empty() ? _root : Windows::Join(_path, iName);
    Level level;
    FileHandle folder;
    if (const Status status = OpenLevel(path, folder, level); !status.IsOk()) {
      if (!status.IsNotThere() || _levels.empty()) {
        Note(status, iName);
      }
      return false;
    }
    level.name = std::move(iName);
    _levels.push_back(std::move(level));
    _current = std::move(folder);
    _path = path;
    EmptyCurrent();
    return true;
  }

  // Goes back to the parent and removes the folder that was left. Stops where the parent is no longer the one that the
  // way down led through: somebody has moved the folder.
  bool Leave() {
    const std::wstring name = std::move(_levels.back().name);
    const std::wstring left = _path;
    _levels.pop_back();
    _path.resize(_path.size() - name.size() - 1);
    Level found;
    FileHandle folder;
    Status status = OpenLevel(_path, folder, found);
    if (status.IsOk() && (found.device != _levels.back().device || found.file != _levels.back().file)) {
      status = Status(ERROR_SHARING_VIOLATION);
    }
    if (!status.IsOk()) {
      Note(status, name);
      return false;
    }
    _current = std::move(folder);
    RemoveFolder(left, name);
    return true;
  }

  bool RemoveFolder(const std::wstring& iPath, const std::wstring& iReportedName) {
    if (gFileCalls.RemoveFolder(iPath.c_str()) || RemoveReadOnly(iPath, gFileCalls.RemoveFolder)) {
      ++_report.removed;
      return true;
    }
    const Status status = Status::OfLastCall();
    if (!status.IsNotThere() && (_report.failed == 0 || status.GetNative() != ERROR_DIR_NOT_EMPTY)) {
      // What is left inside was reported where it could not be removed.
      Note(status, iReportedName);
    }
    return false;
  }

  // Removes everything but folders from the current folder, and remembers those.
  void EmptyCurrent() {
    WIN32_FIND_DATAW entry = {};
    void* const search = gFileCalls.FindFirst(Windows::Join(_path, L"*").c_str(), &entry);
    if (search == nullptr) {
      Note(Status::OfLastCall(), {});
      return;
    }
    do {
      if (!IsSelfOrParent(entry.cFileName)) {
        RemoveEntry(entry);
      }
    } while (gFileCalls.FindNext(search, &entry));
    if (GetLastError() != ERROR_NO_MORE_FILES) {
      Note(Status::OfLastCall(), {});
    }
    gFileCalls.EndSearch(search);
  }

  void RemoveEntry(const WIN32_FIND_DATAW& iEntry) {
    if (Windows::IsRealFolder(iEntry.dwFileAttributes)) {
      _levels.back().subFolders.emplace_back(iEntry.cFileName);
      return;
    }
    const std::wstring path = Windows::Join(_path, iEntry.cFileName);
    // A link to a folder is removed like a folder, which leaves its target alone.
    const bool isFolder = (iEntry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    const auto remove = isFolder ? gFileCalls.RemoveFolder : gFileCalls.RemoveFile;
    if (remove(path.c_str()) || RemoveReadOnly(path, remove)) {
      ++_report.removed;
    } else if (const Status status = Status::OfLastCall(); !status.IsNotThere()) {
      Note(status, iEntry.cFileName);
    }
  }

  // What is read-only is removed with its folder. On failure the cause is left behind.
  static bool RemoveReadOnly(const std::wstring& iPath, bool (*iRemove)(const wchar_t*)) {
    const DWORD cause = GetLastError();
    if (cause == ERROR_ACCESS_DENIED) {
      const std::uint32_t attributes = gFileCalls.Attributes(iPath.c_str());
      const bool isReadOnly = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
      if (isReadOnly && gFileCalls.ChangeAttributes(iPath.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY})) {
        return iRemove(iPath.c_str());
      }
    }
    SetLastError(cause);
    return false;
  }

  void Note(Status iStatus, const std::wstring& iName) {
    if (_report.failed++ != 0) {
      return;
    }
    _report.firstFailure = iStatus;
    _report.firstPath = _reportedRoot;
    for (std::size_t level = 1; level < _levels.size(); ++level) {
      _report.firstPath += "\\" + Windows::ToNameText(_levels[level].name);
    }
    if (!iName.empty() && !_levels.empty()) {
      _report.firstPath += "\\" + Windows::ToNameText(iName);
    }
  }

  std::wstring _root;
  std::string _reportedRoot;
  RemovalReport& _report;
  std::vector<Level> _levels;
  std::wstring _path;
  FileHandle _current;
};

// The last component must be a name: neither a root, nor the folder itself or its parent.
bool IsNameAtEnd(const std::string& iPath) {
  const std::size_t separator = iPath.rfind('\\');
  const std::string name = separator == std::string::npos ? iPath : iPath.substr(separator + 1);
  return !name.empty() && name != "." && name != ".." && name.find(':') == std::string::npos;
}

}  // namespace

Status RemoveTree(const std::string& iPath, RemovalReport& oReport) {
  oReport = {};
  const std::string path = iPath.substr(0, iPath.find_last_not_of('\\') + 1);
  std::wstring wide;
  const Status status = IsNameAtEnd(path) ? Windows::ToWidePath(path, wide) : Failure::InvalidParameter();
  if (!status.IsOk()) {
    oReport = {0, 1, status, iPath};
    return status;
  }
  TreeRemoval(wide, path, oReport).Run();
  return oReport.firstFailure;
}

}  // namespace VYX::Os
