#pragma once

#include <cstdint>

#include "KORSysBase/KORListValKORUnicodeString.h"
#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

/**
 * Owns temporary work folders: it creates them, and removes them with everything inside when it dies.
 *
 * ```cpp
 * KORUnicodeString folder;
 * {
 *   VYXInfFileHelper helper;
 *   if (helper.CreateTmpDir("Export", folder) >= 0) {
 *     VYXInfSystemUtil::SaveToFile(folder + "list.txt", "one line", 0);
 *   }
 *   VYXInfSystemUtil::DoesFileExist(folder + "list.txt");  // true
 * }
 * VYXInfSystemUtil::DoesFileExist(folder);  // false
 * ```
 *
 * The folders are for their owner's eyes only, and are removed without following a link. A process that is killed
 * leaves them; a forked child leaves its parent's alone. One helper belongs to one thread at a time.
 */
class VYX_EXPORT VYXInfFileHelper {
 public:
  /// Owns no folder yet.
  VYXInfFileHelper();

  /// Removes the folders, each told at TRACE; one that cannot be removed leaves a "FAILURE LOG" trace, one that is gone
  /// is skipped silently.
  virtual ~VYXInfFileHelper();

  VYXInfFileHelper(const VYXInfFileHelper&) = delete;
  VYXInfFileHelper& operator=(const VYXInfFileHelper&) = delete;

  /**
   * Creates a folder in the temporary folder (VYXInfSystemUtil::GetTempFolderPath), named after iName, the local time,
   * the process and the thread. Two calls of one thread and name in one second give the same folder. A folder that
   * somebody else has put there is refused.
   *
   * @param iName how the folder's name begins.
   * @param oPath the folder, with a backslash at its end; untouched on failure.
   * @return S_OK, or E_FAIL with a failure trace.
   */
  long CreateTmpDir(const KORUnicodeString& iName, KORUnicodeString& oPath);

 private:
  KORListValKORUnicodeString _folders;
  std::int32_t _ownerProcess;
};
