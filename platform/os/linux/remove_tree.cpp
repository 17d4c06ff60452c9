#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <utility>
#include <vector>

#include "platform/os/folders.h"
#include "platform/os/posix/system_calls.h"

#if !defined(__linux__)
#error "this source is for Linux"
#endif

namespace VYX::Os {
namespace {

using Posix::Calls;
using Posix::Uninterrupted;

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK;

class Descriptor {
 public:
  explicit Descriptor(int iFile) noexcept : _file(iFile) {}
  ~Descriptor() { Reset(-1); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int Get() const noexcept { return _file; }
  bool IsOpen() const noexcept { return _file != -1; }
  int Release() noexcept { return std::exchange(_file, -1); }
  void Reset(int iFile) noexcept {
    if (_file != -1) {
      Calls().Close(_file);
    }
    _file = iFile;
  }

 private:
  int _file;
};

// Closes a folder that is read, also where memory for its names runs out.
class FolderStream {
 public:
  explicit FolderStream(DIR* iFolder) noexcept : _folder(iFolder) {}
  ~FolderStream() { Calls().CloseFolder(_folder); }
  FolderStream(const FolderStream&) = delete;
  FolderStream& operator=(const FolderStream&) = delete;

 private:
  DIR* _folder;
};

int OpenFolderAt(int iFolder, const char* iName) noexcept {
  return Uninterrupted([&] { return Calls().OpenAt(iFolder, iName, kFolderFlags); });
}

bool IsSelfOrParent(std::string_view iName) noexcept {
  return iName == "." || iName == "..";
}

// One folder on the way down: its identity, so that the way back up is certain, and the sub-folders still to be
// visited.
struct Level {
  std::string name;
  dev_t device = 0;
  ino_t file = 0;
  std::vector<std::string> subFolders;
};

// A name that somebody else removes meanwhile is no failure.
class TreeRemoval {
 public:
  TreeRemoval(std::string iPath, RemovalReport& oReport) : _path(std::move(iPath)), _report(oReport) {}

  // Empties the folder iName of iParent, level by level, and removes it. Only the deepest folder is held open.
  void Run(int iParent, std::string iName) {
    if (!Enter(iParent, std::move(iName))) {
      return;
    }
    while (_levels.size() > 1 || !_levels.back().subFolders.empty()) {
      Level& level = _levels.back();
      if (!level.subFolders.empty()) {
        std::string next = std::move(level.subFolders.back());
        level.subFolders.pop_back();
        Enter(_current.Get(), std::move(next));
      } else if (!Leave()) {
        return;
      }
    }
    if (RemoveFolder(iParent, _levels.back().name, {})) {
      // Nothing can be left inside, whatever went wrong on the way.
      _report = {_report.removed, 0, {}, {}};
    }
  }

 private:
  bool Enter(int iParent, std::string iName) {
    Descriptor folder(OpenFolderAt(iParent, iName.c_str()));
    struct stat info {};
    if (!folder.IsOpen() || Calls().StatFile(folder.Get(), &info) != 0) {
      if (errno != ENOENT || _levels.empty()) {
        Note(Status::OfLastCall(), iName);
      }
      return false;
    }
    _levels.push_back({std::move(iName), info.st_dev, info.st_ino, {}});
    _current.Reset(folder.Release());
    EmptyCurrent();
    return true;
  }

  // Goes back to the parent and removes the folder that was left. Stops where the parent is no longer the one that the
  // way down led through: somebody has moved the folder.
  bool Leave() {
    const std::string name = std::move(_levels.back().name);
    _levels.pop_back();
    const Level& parent = _levels.back();
    Descriptor folder(OpenFolderAt(_current.Get(), ".."));
    struct stat info {};
    if (!folder.IsOpen() || Calls().StatFile(folder.Get(), &info) != 0) {
      Note(Status::OfLastCall(), name);
      return false;
    }
    if (info.st_dev != parent.device || info.st_ino != parent.file) {
      Note(Status(EBUSY), name);
      return false;
    }
    _current.Reset(folder.Release());
    RemoveFolder(_current.Get(), name, name);
    return true;
  }

  bool RemoveFolder(int iParent, const std::string& iName, const std::string& iReportedName) {
    if (Uninterrupted([&] { return Calls().UnlinkAt(iParent, iName.c_str(), AT_REMOVEDIR); }) == 0) {
      ++_report.removed;
      return true;
    }
    if (errno != ENOENT && (_report.failed == 0 || errno != ENOTEMPTY)) {
      // What is left inside was reported where it could not be removed.
      Note(Status::OfLastCall(), iReportedName);
    }
    return false;
  }

  // Removes everything but folders from the current folder, and remembers those.
  void EmptyCurrent() {
    const int copy = Calls().MoveDescriptor(_current.Get(), 3);
    DIR* const folder = copy == -1 ? nullptr : Calls().AdoptFolder(copy);
    if (folder == nullptr) {
      const Status status = Status::OfLastCall();
      if (copy != -1) {
        Calls().Close(copy);
      }
      Note(status, {});
      return;
    }
    const FolderStream closing(folder);
    errno = 0;
    for (const dirent* entry = Calls().ReadFolder(folder); entry != nullptr; entry = Calls().ReadFolder(folder)) {
      if (!IsSelfOrParent(entry->d_name)) {
        RemoveEntry(*entry);
      }
      errno = 0;
    }
    if (errno != 0) {
      Note(Status::OfLastCall(), {});
    }
  }

  void RemoveEntry(const dirent& iEntry) {
    if (IsFolder(iEntry)) {
      _levels.back().subFolders.emplace_back(iEntry.d_name);
    } else if (Uninterrupted([&] { return Calls().UnlinkAt(_current.Get(), iEntry.d_name, 0); }) == 0) {
      ++_report.removed;
    } else if (errno != ENOENT) {
      Note(Status::OfLastCall(), iEntry.d_name);
    }
  }

  bool IsFolder(const dirent& iEntry) const noexcept {
    if (iEntry.d_type != DT_UNKNOWN) {
      return iEntry.d_type == DT_DIR;
    }
    struct stat info {};
    return Calls().StatAt(_current.Get(), iEntry.d_name, &info, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(info.st_mode);
  }

  void Note(Status iStatus, const std::string& iName) {
    if (_report.failed++ != 0) {
      return;
    }
    _report.firstFailure = iStatus;
    _report.firstPath = _path;
    for (std::size_t level = 1; level < _levels.size(); ++level) {
      _report.firstPath += "/" + _levels[level].name;
    }
    if (!iName.empty() && !_levels.empty()) {
      _report.firstPath += "/" + iName;
    }
  }

  std::string _path;
  RemovalReport& _report;
  std::vector<Level> _levels;
  Descriptor _current{-1};
};

}  // namespace

Status RemoveTree(const std::string& iPath, RemovalReport& oReport) {
  oReport = {};
  // A separator at the end would make the host look through a link.
  const std::string path = iPath.substr(0, iPath.find_last_not_of('/') + 1);
  const std::size_t separator = path.rfind('/');
  const std::string name = separator == std::string::npos ? path : path.substr(separator + 1);
  const std::string parentPath = separator == std::string::npos ? "." : path.substr(0, separator + 1);
  if (name.empty() || IsSelfOrParent(name)) {
    oReport.firstFailure = Failure::InvalidParameter();
    oReport.firstPath = iPath;
    oReport.failed = 1;
    return oReport.firstFailure;
  }
  // The way to the folder itself may lead over links; only what is removed must not.
  const Descriptor parent(
      Uninterrupted([&] { return Calls().Open(parentPath.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC, mode_t{0}); }));
  if (!parent.IsOpen()) {
    oReport = {0, 1, Status::OfLastCall(), path};
    return oReport.firstFailure;
  }
  TreeRemoval(path, oReport).Run(parent.Get(), name);
  return oReport.firstFailure;
}

}  // namespace VYX::Os
