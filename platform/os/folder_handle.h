#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "platform/os/files.h"

namespace VYX::Os {

/**
 * An open folder, and what is done to the names directly inside it.
 *
 * Names are single components in the host's spelling, without separators. No operation follows a link of that name, and
 * nobody who moves the folder or puts a link in its place can lead an operation elsewhere. Used by one thread at a
 * time.
 */
class FolderHandle {
 public:
  /// What stands under a name.
  enum class Kind : std::uint8_t { Missing, Folder, Other };

  FolderHandle() noexcept = default;
  ~FolderHandle() { Close(); }
  FolderHandle(FolderHandle&& ioOther) noexcept
      : _folder(std::exchange(ioOther._folder, kNone)), _path(std::move(ioOther._path)) {}
  FolderHandle& operator=(FolderHandle&& ioOther) noexcept {
    std::swap(_folder, ioOther._folder);
    std::swap(_path, ioOther._path);
    return *this;
  }

  bool IsOpen() const noexcept { return _folder != kNone; }

  /// Opens a folder by its path, links on the way followed.
  Status Open(const std::string& iPath);

  /// Opens a folder of this one; a link is refused.
  Status OpenFolder(const std::string& iName, FolderHandle& oFolder) const;

  /// Creates a folder, for its owner only where asked; fails where the name is taken.
  Status CreateFolder(const std::string& iName, bool iIsPrivate) const;

  /// Creates a file and opens it for writing; fails where the name is taken, be it by a link. Everybody may run the
  /// file where iIsProgram, as far as the process's mask allows.
  Status CreateFile(const std::string& iName, bool iIsProgram, FileDescriptor& oFile) const;

  /// Moves a file into another folder of the same file system, in one step, over a file or link of the new name.
  Status MoveFile(const std::string& iName, const FolderHandle& iFolder, const std::string& iNewName) const;

  /// Removes a file or a link.
  Status RemoveFile(const std::string& iName) const;

  /// Removes an empty folder.
  Status RemoveFolder(const std::string& iName) const;

  /// Says what stands under a name.
  Status Query(const std::string& iName, Kind& oKind) const;

 private:
  static constexpr int kNone = -1;
  void Close() noexcept;

  int _folder = kNone;
  std::string _path;  // where the host has no calls relative to an open folder
};

}  // namespace VYX::Os
