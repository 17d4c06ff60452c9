#pragma once

#include <cstdint>
#include <memory>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

namespace VYX::Os {
class FolderReader;
}

/**
 * @file
 * Folders: listing, creating, removing.
 *
 * ```cpp
 * KORCreateDirectory("inbox");
 * KORDirectoryHandle handle;
 * KORDirectoryEntry entry;
 * int isAtEnd = 1;
 * if (KOROpenDirectory("inbox", &handle) >= 0) {
 *   while (KORReadDirectory(&handle, &entry, &isAtEnd) >= 0 && isAtEnd == 0) {
 *     std::cout << (entry.name[0] == '.' ? "" : entry.name);
 *   }
 *   KORCloseDirectory(&handle);
 * }
 * isAtEnd;  // 1
 * ```
 *
 * Paths take both separators, on every host. Functions that fail leave a pending error that names folder and cause, and
 * touch their outputs on success only. All may be called from any thread; one handle belongs to one thread at a time.
 */

/// An open folder. A handle that goes away closes its folder.
class VYX_EXPORT KORDirectoryHandle {
 public:
  /// A handle without a folder.
  KORDirectoryHandle() noexcept;
  /// Closes the folder.
  ~KORDirectoryHandle();
  KORDirectoryHandle(const KORDirectoryHandle&) = delete;
  KORDirectoryHandle& operator=(const KORDirectoryHandle&) = delete;

 private:
  friend VYX_EXPORT long KOROpenDirectory(const char* iPath, KORDirectoryHandle* oHandle);
  friend VYX_EXPORT long KORReadDirectory(KORDirectoryHandle* ioHandle, struct KORDirectoryEntry* oEntry,
                                          int* oEndOfDir);
  friend VYX_EXPORT long KORCloseDirectory(KORDirectoryHandle* ioHandle);

  std::unique_ptr<VYX::Os::FolderReader> _reader;
  KORUnicodeString _path;
};

/// One name of a folder.
struct KORDirectoryEntry {
  const char* name = "";     ///< narrow text, valid until the next read or the close of the folder
  unsigned int mode = 0;     ///< type bits as in KORFileInfo, where isModeKnown
  bool isModeKnown = false;  ///< whether the folder itself told the type; a link always has to be asked
};

/// What a path stands for.
struct KORFileInfo {
  static constexpr unsigned int kFolder = 0x4000;       ///< mode of a folder
  static constexpr unsigned int kRegularFile = 0x8000;  ///< mode of a regular file

  unsigned int mode = 0;              ///< kFolder, kRegularFile, or neither for everything else
  std::uint64_t size = 0;             ///< bytes
  std::uint64_t device = 0;           ///< device and file name the file itself, by whatever path it was reached
  std::uint64_t file = 0;             ///< see device
  std::int64_t lastWriteSeconds = 0;  ///< last write, seconds since 1970-01-01 UTC
};

/**
 * Opens a folder for listing, links followed.
 *
 * @param iPath the folder.
 * @param oHandle the open folder; one that was open in it before is closed.
 * @return 0 on success, else a negative code with a pending error.
 */
VYX_EXPORT long KOROpenDirectory(const char* iPath, KORDirectoryHandle* oHandle);

/**
 * Reads the next name, in the host's order, "." and ".." among them.
 *
 * @param ioHandle an open folder.
 * @param oEntry the name and what is known about it.
 * @param oEndOfDir 0 for an entry; 1 at the end of the folder, and then the entry is untouched.
 * @return 0 while entries come and at the end, else a negative code.
 */
VYX_EXPORT long KORReadDirectory(KORDirectoryHandle* ioHandle, KORDirectoryEntry* oEntry, int* oEndOfDir);

/// Closes a folder. 0 on success, else a negative code.
VYX_EXPORT long KORCloseDirectory(KORDirectoryHandle* ioHandle);

/// What a path stands for, links followed. 0 on success, else a negative code with a pending error.
VYX_EXPORT long KORGetFileInfo(const char* iPath, KORFileInfo* oInfo);

/// Creates one folder. 0 on success, also where the folder exists; the positive Windows error number on failure.
VYX_EXPORT int KORCreateDirectory(const char* iPath);

/// Creates a folder with every missing folder on the way. 0 on success, also where the folder exists; else a negative
/// code.
VYX_EXPORT long KORCreateDirectoryR(const char* iPath);

/**
 * Creates a folder that only its owner may enter, with every missing folder on the way (those are private as well).
 *
 * A folder that exists is accepted only where it is private to the same owner and no link, as an earlier call left it:
 * a folder that somebody else has put there is refused (0x800700B7, already exists).
 *
 * @return 0 on success, else a negative code.
 */
VYX_EXPORT long KORCreatePrivateDirectoryR(const char* iPath);

/**
 * Removes a folder with everything inside, at any depth.
 *
 * Links inside are removed, never followed; a path that is itself a link is refused, as are an empty path, a root
 * folder and one that ends in "." or "..". What cannot be removed is left and the rest removed all the same: the
 * pending error names the first failure and counts the others.
 *
 * @return 0 on success, else a negative code, that of the first failure.
 */
VYX_EXPORT long KORRemoveDirectoryR(const char* iPath);
