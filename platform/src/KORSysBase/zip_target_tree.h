#pragma once

#include <algorithm>
#include <atomic>
#include <string>
#include <utility>
#include <vector>

#include "platform/os/clock.h"
#include "platform/os/files.h"
#include "platform/os/folder_handle.h"
#include "platform/os/native_path.h"
#include "platform/os/process_identity.h"
#include "zip_problem.h"

namespace VYX::Platform {

/// The path in front of the last separator, and what follows it.
inline std::pair<std::string, std::string> SplitLast(const std::string& iPath, char iSeparator) {
  const std::size_t separator = iPath.rfind(iSeparator);
  return separator == std::string::npos ? std::pair(std::string(), iPath)
                                        : std::pair(iPath.substr(0, separator), iPath.substr(separator + 1));
}

/// Folders that exist since an operation began, deepest first, so that a failure can take them back.
class NewFolders {
 public:
  explicit NewFolders(std::string iPath) {
    const char separator = Os::NativeSeparator();
    iPath.resize(iPath.find_last_not_of(separator) + 1);
    while (!iPath.empty() && IsMissing(iPath)) {
      _paths.push_back(iPath);
      iPath = SplitLast(iPath, separator).first;
      iPath.resize(iPath.find_last_not_of(separator) + 1);
    }
  }

  void Remove() const {
    for (const std::string& path : _paths) {
      const auto [parent, name] = SplitLast(path, Os::NativeSeparator());
      const bool isAtRoot = parent.empty() && path.size() != name.size();
      Os::FolderHandle folder;
      if (folder.Open(isAtRoot ? std::string(1, Os::NativeSeparator()) : parent.empty() ? "." : parent).IsOk()) {
        static_cast<void>(folder.RemoveFolder(name));
      }
    }
  }

 private:
  static bool IsMissing(const std::string& iPath) {
    constexpr int kFileNotFound = 2;
    return Os::TestExistence(iPath).ToErrorNumber() == kFileNotFound;
  }

  std::vector<std::string> _paths;
};

/// The tree below the target folder. Its paths are joined with "/", whatever the host; each component is opened by
/// itself.
class TargetTree {
 public:
  ZipProblem Open(const std::string& iPath) { return ToProblem(_root.Open(iPath)); }
  const Os::FolderHandle& Root() const noexcept { return _root; }

  // Opens the folder of a path, and creates what is missing where asked; null where it is missing.
  Os::Status Enter(const std::string& iPath, bool iIsCreating, const Os::FolderHandle*& oFolder) {
    if (iPath.empty() || (iPath == _currentPath && _current.IsOpen())) {
      oFolder = iPath.empty() ? &_root : &_current;
      return {};
    }
    _currentPath.clear();
    const Os::FolderHandle* at = &_root;
    oFolder = nullptr;
    for (std::size_t begin = 0; begin < iPath.size();) {
      const std::size_t end = std::min(iPath.find('/', begin), iPath.size());
      Os::FolderHandle next;
      bool isThere = false;
      const Os::Status status =
          Step(*at, iPath.substr(begin, end - begin), iPath.substr(0, end), iIsCreating, next, isThere);
      if (!status.IsOk() || !isThere) {
        return status;
      }
      _current = std::move(next);
      at = &_current;
      begin = end + 1;
    }
    _currentPath = iPath;
    oFolder = &_current;
    return {};
  }

  // Notes what is about to be created, before it is there; forgets it again where that failed.
  void NoteNew(const std::string& iPath, bool iIsFolder) { _created.emplace_back(iPath, iIsFolder); }
  void ForgetNewest() noexcept { _created.pop_back(); }

  // Removes what was created, the newest first.
  void TakeBack() {
    for (auto created = _created.rbegin(); created != _created.rend(); ++created) {
      const auto [parent, name] = SplitLast(created->first, '/');
      const Os::FolderHandle* folder = nullptr;
      if (Enter(parent, false, folder).IsOk() && folder != nullptr) {
        static_cast<void>(created->second ? folder->RemoveFolder(name) : folder->RemoveFile(name));
      }
    }
  }

 private:
  Os::Status Step(const Os::FolderHandle& iAt, const std::string& iName, const std::string& iPath, bool iIsCreating,
                  Os::FolderHandle& oNext, bool& oIsThere) {
    Os::FolderHandle::Kind kind = Os::FolderHandle::Kind::Missing;
    const Os::Status status = iAt.Query(iName, kind);
    if (!status.IsOk()) {
      return status;
    }
    if (kind == Os::FolderHandle::Kind::Other) {
      return Os::Failure::NotAFolder();
    }
    oIsThere = kind == Os::FolderHandle::Kind::Folder || iIsCreating;
    if (kind == Os::FolderHandle::Kind::Missing && iIsCreating) {
      NoteNew(iPath, true);
      const Os::Status created = iAt.CreateFolder(iName, false);
      if (!created.IsOk()) {
        ForgetNewest();
        return created;
      }
    }
    return oIsThere ? iAt.OpenFolder(iName, oNext) : Os::Status();
  }

  Os::FolderHandle _root;
  Os::FolderHandle _current;
  std::string _currentPath;
  std::vector<std::pair<std::string, bool>> _created;
};

/// The private folder inside the target in which files are unpacked, named by their positions.
class Staging {
 public:
  ~Staging() {
    for (std::size_t position : _files) {
      static_cast<void>(_folder.RemoveFile(std::to_string(position)));
    }
    if (_isCreated) {
      static_cast<void>(_parent->RemoveFolder(_name));
    }
  }

  Os::Status Open(const Os::FolderHandle& iParent) {
    static std::atomic<unsigned int> counter{0};
    _parent = &iParent;
    _name = ".unzip-" + std::to_string(Os::CurrentProcessId()) + "-" + std::to_string(Os::MonotonicCounter()) + "-" +
            std::to_string(++counter);
    const Os::Status status = iParent.CreateFolder(_name, true);
    _isCreated = status.IsOk();
    return _isCreated ? iParent.OpenFolder(_name, _folder) : status;
  }

  Os::Status Create(std::size_t iPosition, bool iIsProgram, Os::FileDescriptor& oFile) {
    _files.push_back(iPosition);
    const Os::Status status = _folder.CreateFile(std::to_string(iPosition), iIsProgram, oFile);
    if (!status.IsOk()) {
      _files.pop_back();
    }
    return status;
  }

  // Says that every file was moved.
  void Forget() noexcept { _files.clear(); }

  Os::Status MoveTo(std::size_t iPosition, const Os::FolderHandle& iFolder, const std::string& iName) const {
    return _folder.MoveFile(std::to_string(iPosition), iFolder, iName);
  }

 private:
  const Os::FolderHandle* _parent = nullptr;
  std::string _name;
  bool _isCreated = false;
  Os::FolderHandle _folder;
  std::vector<std::size_t> _files;
};

}  // namespace VYX::Platform
