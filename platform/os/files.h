#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/os/status.h"

/**
 * Files by path and by descriptor. Paths are UTF-8 (or whatever bytes the host keeps) in the host's own spelling and
 * hold no zero byte. Interrupted calls are repeated, short reads and writes completed. Descriptors are never inherited
 * by other programs. Everything may be called from any thread; one descriptor belongs to one thread at a time.
 */
namespace VYX::Os {

/// An open file; 0 is none.
using FileDescriptor = unsigned int;

/// How a file is opened. Writing creates the file where it is missing.
enum class OpenMode {
  Read,        ///< an existing file, from its start
  Write,       ///< emptied
  Append,      ///< every write goes to the end
  WriteNew,    ///< fails where the name is taken, be it by a link
  AppendNew,   ///< the same, every write going to the end
  WriteOwner,  ///< like WriteNew, readable and writable for its owner only
  AppendLog,   ///< like Append, for log files: the group may read what is created and others may not, and a link in a
               ///< folder that everybody may write to is refused, because anybody could have put it there
  WriteLog,    ///< the same, emptied; every write goes to the end
};

/// What a path or a descriptor stands for.
struct FileInfo {
  static constexpr std::uint32_t kFolder = 0x4000;
  static constexpr std::uint32_t kRegular = 0x8000;

  std::uint32_t type = 0;         ///< kFolder, kRegular or 0 for everything else
  std::uint32_t permissions = 0;  ///< the host's permission bits
  std::uint32_t owner = 0;        ///< the host's numbers of owner and group
  std::uint32_t group = 0;
  std::uint64_t size = 0;    ///< bytes
  std::uint64_t device = 0;  ///< device and file together name the file itself, whatever its path
  std::uint64_t file = 0;
  std::int64_t writeSeconds = 0;  ///< last write: seconds since 1970-01-01 UTC
  std::int32_t writeNanoseconds = 0;

  bool IsFolder() const noexcept { return type == kFolder; }
  bool IsRegular() const noexcept { return type == kRegular; }
};

/// Opens a file. Folders are refused, and nothing waits for a pipe's other end. In text mode ReadFully and WriteFully
/// convert line ends where the host has its own; elsewhere the bytes are the same. On failure oFile is untouched.
Status OpenFile(const std::string& iPath, OpenMode iMode, FileDescriptor& oFile, bool iIsText = false);

/// Closes a file. The descriptor is gone also where the host reports a failure (of an earlier, delayed write).
Status CloseFile(FileDescriptor iFile);

/// Reads iSize bytes, fewer only at the end of the file or on failure; oRead says how many arrived.
Status ReadFully(FileDescriptor iFile, void* oBuffer, std::size_t iSize, std::size_t& oRead);

/// Writes all bytes, fewer only on failure; oWritten says how many went out.
Status WriteFully(FileDescriptor iFile, const void* iData, std::size_t iSize, std::size_t& oWritten);

/// Waits until what was written is on the disk.
Status FlushFile(FileDescriptor iFile);

/// Waits until names created, removed or renamed in a folder are on the disk.
Status FlushFolder(const std::string& iPath);

/// What an open file is.
Status DescribeFile(FileDescriptor iFile, FileInfo& oInfo);

/// What a path stands for, links followed.
Status DescribePath(const std::string& iPath, FileInfo& oInfo);

/// Gives an open file the permissions of another, and its owner and group as far as the host allows.
Status TakeOverPermissions(FileDescriptor iFile, const FileInfo& iFrom);

/// Succeeds when the path exists, links followed.
Status TestExistence(const std::string& iPath);

/// Succeeds when the path exists and the process may write it.
Status TestWritability(const std::string& iPath);

/// Removes a file or a link, never a folder.
Status RemoveFile(const std::string& iPath);

/// Renames a file within its file system, in one step, over a file of the new name.
Status RenameOver(const std::string& iFrom, const std::string& iTo);

/// Renames a file within its file system; fails where the new name is taken.
Status RenameNew(const std::string& iFrom, const std::string& iTo);

/// The path that an open file has by now, for messages; empty where the host cannot tell.
std::string PathOf(FileDescriptor iFile);

/// The path of an existing file with every link resolved.
Status ResolveLinks(const std::string& iPath, std::string& oPath);

}  // namespace VYX::Os
