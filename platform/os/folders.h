#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/os/status.h"

/// Folders: listing, creating, removing. Paths are as in files.h.
namespace VYX::Os {

/// What a folder's listing says about an entry by itself.
enum class EntryKind : std::uint8_t {
  Unknown,  ///< nothing, or a link: the entry has to be asked
  Folder,
  Regular,
  Other,  ///< a pipe, a socket, a device
};

/// One name of a folder; the view is valid until the next Read or Close.
struct FolderEntry {
  std::string_view name;
  EntryKind kind = EntryKind::Unknown;
};

/// Reads the names of one folder, "." and ".." among them, in the host's order. Used by one thread at a time.
class FolderReader {
 public:
  FolderReader() noexcept = default;
  ~FolderReader() { static_cast<void>(Close()); }
  FolderReader(const FolderReader&) = delete;
  FolderReader& operator=(const FolderReader&) = delete;

  /// Opens a folder, links followed; closes the one that was open before.
  Status Open(const std::string& iPath);

  /// The next name, or oIsAtEnd.
  Status Read(FolderEntry& oEntry, bool& oIsAtEnd);

  /// Closes the folder; one that is not open is fine.
  Status Close() noexcept;

 private:
  void* _folder = nullptr;
};

/// Creates one folder. A folder that exists is a success, anything else of that name a failure.
Status CreateFolder(const std::string& iPath);

/// Creates one folder that only its owner may enter. A folder that exists is a success only where it is such a folder,
/// of the same owner and no link; nobody else can have put it there.
Status CreatePrivateFolder(const std::string& iPath);

/// What a removal came to.
struct RemovalReport {
  std::uint64_t removed = 0;  ///< files, links and folders that are gone
  std::uint64_t failed = 0;   ///< those that could not be removed or read
  Status firstFailure;
  std::string firstPath;  ///< of the first failure
};

/**
 * Removes a folder with everything inside, and goes on where something cannot be removed.
 *
 * No link is ever followed: a link is removed, a path that is itself a link is refused. Works at any depth with few
 * descriptors and without recursion. Refused are an empty path, the root folder and paths that end in "." or "..".
 */
Status RemoveTree(const std::string& iPath, RemovalReport& oReport);

/// The folder that relative paths start from.
Status CurrentFolder(std::string& oPath);

}  // namespace VYX::Os
