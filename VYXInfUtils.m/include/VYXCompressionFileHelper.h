#pragma once

#include <cstdint>

#include "KORSysBase/KORListValKORUnicodeString.h"
#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

/**
 * Owns temporary folders that hold freshly built zip archives, and removes them with everything inside when it dies.
 *
 * ```cpp
 * VYXInfSystemUtil::SaveToFile("notes.txt", "one line", 0);
 * KORListValKORUnicodeString files;
 * files.Append("notes.txt");
 *
 * VYXCompressionFileHelper helper;
 * KORUnicodeString archive;
 * KORListValKORUnicodeString entries;
 * if (helper.ZipTmpArchive(files, "report.zip", archive) >= 0) {
 *   VYXInfSystemUtil::BrowseZipArchive(archive, entries);
 * }
 * entries;  // "notes.txt"
 * ```
 *
 * The folders are for their owner's eyes only, and are removed without following a link. A process that is killed
 * leaves them; a forked child leaves its parent's alone. One helper belongs to one thread at a time.
 */
class VYX_EXPORT VYXCompressionFileHelper {
 public:
  /// Owns no folder yet.
  VYXCompressionFileHelper();

  /// Removes the folders, each told at TRACE; one that cannot be removed leaves a "FAILURE LOG" trace, one that is gone
  /// is skipped silently.
  virtual ~VYXCompressionFileHelper();

  VYXCompressionFileHelper(const VYXCompressionFileHelper&) = delete;
  VYXCompressionFileHelper& operator=(const VYXCompressionFileHelper&) = delete;

  /**
   * Builds an archive of files in a folder of its own in the temporary folder (VYXInfSystemUtil::GetTempFolderPath).
   *
   * @param iFiles what to store, each under its bare file name; an empty list gives an empty archive. Two files of the
   * same bare name are refused.
   * @param iArchiveName the archive's file name.
   * @param oArchivePath the archive; untouched on failure, and then there is none.
   * @return S_OK, or the platform's code (KORSysZipFile) with a failure trace.
   */
  long ZipTmpArchive(const KORListValKORUnicodeString& iFiles, const KORUnicodeString& iArchiveName,
                     KORUnicodeString& oArchivePath);

 private:
  KORListValKORUnicodeString _folders;
  std::int32_t _ownerProcess;
};
