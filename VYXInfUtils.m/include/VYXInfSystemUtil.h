#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "KORSysBase/KORListValKORUnicodeString.h"
#include "KORSysBase/KORProcess.h"
#include "KORSysTS/KORUnicodeString.h"
#include "Quillbase/Binary.h"
#include "VYXExport.h"

/**
 * Files, paths, clocks and the running process: static functions only, never instantiated.
 *
 * Results of path operations are spelled with backslashes, and every function that takes a path understands both
 * separators, on every host. Codes follow the HRESULT convention: negative is a failure, reported in the log of
 * VYXInfLog as told at each function ("failure trace" is the line "FAILURE RETURN (path:line)" at ERROR). Outputs are
 * written on success only, unless told otherwise. Every function may be called from any thread.
 *
 * ```cpp
 * VYXInfSystemUtil::ConcatenateAsPath({"notes", "today.txt"});  // "notes\\today.txt"
 * KORUnicodeString text;
 * if (VYXInfSystemUtil::SaveToFile("today.txt", "one line", VYXInfSystemUtil::ATOMIC) >= 0) {
 *   VYXInfSystemUtil::ReadFile("today.txt", text);
 * }
 * text;  // "one line"
 * ```
 */
class VYX_EXPORT VYXInfSystemUtil {
 public:
  VYXInfSystemUtil() = delete;

  // Paths and file names, by their text alone: nothing here touches the disk but GetAbsoluteResourcePath.

  /**
   * Splits a path into folder, name and extension: `C:/a/b.tar.gz` gives `C:\a`, `b.tar` and `gz`.
   *
   * @return S_OK; or the platform's code, with a failure trace, for a path that cannot be split (an empty one).
   */
  static long SplitFilePath(const KORUnicodeString& iPath, KORUnicodeString& oDirectory, KORUnicodeString& oName,
                            KORUnicodeString& oExtension);

  /// Splits a path into folder and file name; null for a part that is not wanted. Answers the platform's code,
  /// silently.
  static long SplitFilePath(const KORUnicodeString& iPath, KORUnicodeString* oDirectory, KORUnicodeString* oFileName);

  /// Splits a file name at its last dot, which belongs to neither part; without a dot all of it is the name. ".profile"
  /// has an empty name. Always S_OK.
  static long SplitFileNameExt(const KORUnicodeString& iFileName, KORUnicodeString& oName,
                               KORUnicodeString& oExtension);

  /// What follows the last separator; empty for a path that ends in one or cannot be split.
  static KORUnicodeString GetFileNameFromPath(const KORUnicodeString& iPath);

  /// The last component that is not empty: "dir/sub/" gives "sub", a path of separators only gives the empty text.
  /// Tells what it does at TRACE.
  static KORUnicodeString GetLastNameFromPath(const KORUnicodeString& iPath);

  /// What stands before the last separator, spelled with backslashes; empty for a path without one.
  static KORUnicodeString GetParentDir(const KORUnicodeString& iPath);

  /// The parts with one backslash between neighbours; separators that the parts bring along stay.
  static KORUnicodeString ConcatenateAsPath(const std::vector<KORUnicodeString>& iParts);

  /// The path with backslashes for slashes; nothing is collapsed.
  static KORUnicodeString FixFilePath(const KORUnicodeString& iPath);

  /// The path with backslashes, each run of them collapsed to one, and with or without one at its end as asked. "." and
  /// ".." stay. The empty path stays empty.
  static KORUnicodeString ResolvePath(const KORUnicodeString& iPath, bool iWithTrailingSeparator);

  /// A folder name under iParentFolder that ends with local time, process id, thread id and a backslash:
  /// `C:\Temp\Export_2025-03-03_14-05-09_4120_8812\`. Creates nothing; two calls of one thread in one second agree.
  static KORUnicodeString CreateUniquePath(KORUnicodeString iName, const KORUnicodeString& iParentFolder);

  /// True when the name holds one of the nine characters `\ / : * ? " < > |` that no file name may hold.
  static bool DoesFileNameContainIllegalChars(const KORUnicodeString& iFileName);

  /// The name without the nine characters.
  static KORUnicodeString RemoveFileNameIllegalChars(const KORUnicodeString& iFileName);

  /// The name with "_" for each of the nine characters.
  static KORUnicodeString ReplaceFileNameIllegalChars(const KORUnicodeString& iFileName);

  /// The name with the whole of iReplacement for each of the nine characters.
  static KORUnicodeString ReplaceFileNameIllegalCharsWith(const KORUnicodeString& iFileName,
                                                          const KORUnicodeString& iReplacement);

  /// The static text `\`.
  static const char* GetPathSeparator();

  /// The text ".exe".
  static KORUnicodeString GetExecutableSuffix();

  /// The absolute path, in the host's own spelling, of a file under the folders that the environment variable
  /// KORInstallPath lists; empty when none of them has it.
  static KORUnicodeString GetAbsoluteResourcePath(const KORUnicodeString& iRelativePath);

  // Files.

  // How SaveToFile treats the file; flags are joined with |.
  static constexpr int OVERWRITE = 1;      ///< empties the file first instead of appending
  static constexpr int ONLY_EXISTENT = 2;  ///< fails unless the file exists
  static constexpr int ONLY_NEW = 4;       ///< fails if the file exists
  /// Whatever happens, the file holds its old content or its new one, never a mix: the new content goes to a file
  /// beside it, is flushed to the disk and takes the file's name. Permissions are kept, and owner and group where the
  /// host allows; of a link, the file behind it is replaced. Only regular files can be saved so.
  static constexpr int ATOMIC = 8;

  /**
   * Reads a whole file.
   *
   * A file that shrinks meanwhile yields what was read, one that grows its former size. Files of 4 GiB and more, pipes
   * and devices are refused, folders cannot be opened.
   *
   * @param iPath the file.
   * @param oContent the content; empty for an empty file.
   * @param iBinary false for the host's text mode, where it has one.
   * @return S_OK; -1 for a file that does not exist (a line at DEBUG); the platform's code when it cannot be opened,
   * E_FAIL when it cannot be read (a line at ERROR each).
   */
  static long ReadFile(const KORUnicodeString& iPath, QB::Binary& oContent, bool iBinary);

  /**
   * Reads a whole file as UTF-8 text.
   *
   * @param iPath the file.
   * @param oText the text; empty after a failure and, with S_OK and a line at DEBUG, for bytes that are no UTF-8.
   * @return the codes of the binary form.
   */
  static long ReadFile(const KORUnicodeString& iPath, KORUnicodeString& oText);

  /**
   * Writes bytes to a file; appends, and creates the file as needed, unless the flags say otherwise.
   *
   * @param iFilePath the file.
   * @param iContent the bytes.
   * @param iSaveFlag OVERWRITE, ONLY_EXISTENT, ONLY_NEW, ATOMIC or 0.
   * @param iBinary false for text: a zero byte at the end is not written, and a text of no other bytes leaves the
   * single byte zero.
   * @return S_OK; E_INVALIDARG for an empty path and for ONLY_EXISTENT with ONLY_NEW; E_FAIL when the file should or
   * should not have existed (these write a line at DEBUG); the platform's code when it cannot be opened; E_FAIL when
   * not all could be written (these write a line at ERROR).
   */
  static long SaveToFile(const KORUnicodeString& iFilePath, const QB::Binary& iContent, int iSaveFlag, bool iBinary);

  /// Writes a text as UTF-8, with the flags and codes of the binary form in text mode.
  static long SaveToFile(const KORUnicodeString& iFilePath, const KORUnicodeString& iText, int iSaveFlag);

  /// The size of a regular file in bytes. S_OK; or the platform's code, with its message and a failure trace, also for
  /// a size of 4 GiB and more.
  static long GetFileSize(const KORUnicodeString& iPath, unsigned int& oSize);

  /// When the file (links followed) was last written, in whole seconds since 1970-01-01 UTC, negative before. S_OK; or
  /// E_FAIL with a failure trace and the host's text for the error.
  static long GetFileLastWriteTimeInSecondsSinceUnixEpoch(const KORUnicodeString& iPath, std::int64_t& oSeconds);

  /// True for a file or folder that exists, links followed.
  static bool DoesFileExist(const KORUnicodeString& iPath);

// A system header may define the name as a macro for one of the other two, before or after this header.
#pragma push_macro("DeleteFile")
#undef DeleteFile
  /// Deletes a file or a link, never a folder. Answers the platform's code, silently.
  static long DeleteFile(const KORUnicodeString& iPath);

  /// DeleteFile under a name that callers of windows.h arrive at.
  static long DeleteFileA(const KORUnicodeString& iPath) {
    return DeleteFile(iPath);
  }
  /// The same.
  static long DeleteFileW(const KORUnicodeString& iPath) {
    return DeleteFile(iPath);
  }
#pragma pop_macro("DeleteFile")

  // Folders.

  // What EnumDirectories reports; flags are joined with |.
  static constexpr unsigned int ENUM_FILES = 1;      ///< report files
  static constexpr unsigned int ENUM_FOLDERS = 2;    ///< report folders, ended by a backslash
  static constexpr unsigned int ENUM_RECURSIVE = 4;  ///< descend into folders
  static constexpr unsigned int ENUM_RELATIVE = 8;   ///< report paths relative to the search root

  /**
   * Creates a folder with every missing folder on the way.
   *
   * @return S_OK, also for a path that exists; E_FAIL with a failure trace for every level on the way when one cannot
   * be created, or when none of the levels named in the path exists.
   */
  static long CreateDirectoryRecursively(const KORUnicodeString& iPath);

  /**
   * Lists the names in a folder, in the host's order. Everything found is told at TRACE.
   *
   * @param iDirectory the folder.
   * @param iExtensions endings, letter case aside, of the files wanted (".json"); an empty list wants them all.
   * @param oFolders the sub-folders, links to folders among them; null when not wanted.
   * @return the regular files, links to such among them; empty with a "FAILURE LOG" trace for a folder that cannot be
   * opened, and then oFolders is untouched. A folder that cannot be read to its end leaves such a trace and what was
   * read.
   */
  static KORListValKORUnicodeString ListFileNamesFromDirectory(const KORUnicodeString& iDirectory,
                                                               const KORListValKORUnicodeString& iExtensions,
                                                               KORListValKORUnicodeString* oFolders);

  /**
   * Finds files and folders under a sub-folder of several search folders.
   *
   * The order is that of discovery: of each folder its files, then its sub-folders, each followed by its own content.
   * Links to folders are followed, but never into a folder that they are in themselves.
   *
   * @param iSearchPaths a list as QB::Paths reads it. A file found under two of its folders is reported for the first
   * only, a folder for both.
   * @param iSubFolder relative to each search folder; may be empty.
   * @param iFlags ENUM_FILES, ENUM_FOLDERS or both, ENUM_RECURSIVE, ENUM_RELATIVE.
   * @param iFilter asked with the bare name of each file whether it is wanted; an empty function wants them all.
   * @return the paths, folders ended by a backslash.
   */
  static std::vector<KORUnicodeString> EnumDirectories(const KORUnicodeString& iSearchPaths,
                                                       const KORUnicodeString& iSubFolder, unsigned int iFlags,
                                                       std::function<bool(const KORUnicodeString&)> iFilter);

  // Temporary folders and zip archives.

  /**
   * The folder for temporary files, without a separator at its end: the platform's, else what the first of the
   * environment variables TMP, TEMP, TMPDIR, TEMPDIR and USERPROFILE says that is not empty.
   *
   * It is found once per process. A candidate that cannot be opened is answered all the same, with a "FAILURE LOG"
   * trace and a line at WARN, and the next call searches again.
   */
  static KORUnicodeString GetTempFolderPath();

  /**
   * Lists the entries of a zip archive.
   *
   * @param iZipPath the archive.
   * @param oEntries the names in the order of the archive.
   * @return S_OK; E_FAIL with a failure trace that names the archive when it cannot be opened; the platform's code
   * (KORSysZipFile) with a failure trace when it cannot be listed.
   */
  static long BrowseZipArchive(const KORUnicodeString& iZipPath, KORListValKORUnicodeString& oEntries);

  /**
   * Extracts a zip archive below a folder, which is created where it is missing; KORSysZipFile::ExtractAll tells how,
   * and what is refused.
   *
   * @param iZipPath the archive.
   * @param iTargetFolder where the entries go.
   * @param oEntries the names in the archive, folders included.
   * @return S_OK, or the platform's code with a failure trace.
   */
  static long UnzipArchive(const KORUnicodeString& iZipPath, const KORUnicodeString& iTargetFolder,
                           KORListValKORUnicodeString& oEntries);

  /**
   * Reads one entry of a zip archive, in one piece, into memory of its size. Told at DEBUG and TRACE.
   *
   * @param iZipPath the archive.
   * @param iEntryName the name as BrowseZipArchive lists it.
   * @param oContent the content; an empty entry leaves it as it was.
   * @param iOption true where names that the archive does not mark are UTF-8, not code page 437.
   * @return S_OK, or the platform's code with a failure trace.
   */
  static long ReadFileFromZipArchive(const KORUnicodeString& iZipPath, const KORUnicodeString& iEntryName,
                                     QB::Binary& oContent, bool iOption);

  // Clocks and process identity. They write no log line and may be called from any thread.

  /// The performance counter in microseconds, counted from an unspecified moment; it never goes back.
  static std::uint64_t GetTimeInMicroseconds();

  /// Seconds since the first call in the process, minus iOffset: a caller that passes the value of an earlier call gets
  /// the time since that call. The first call answers -iOffset.
  static double GetElapsedSeconds(double iOffset);

  /// The current local time as text, in the format of strftime (KORTime::ConvertToString).
  static KORUnicodeString GetCurrentDateTimeString(const KORUnicodeString& iFormat);

  /// The local time of the first call in the process as text; later calls show the same moment.
  static KORUnicodeString GetStartDateTimeString(const KORUnicodeString& iFormat);

  /// The current process id.
  static int GetPID();

  /// The platform's id of the calling thread.
  static unsigned int GetCurrentThreadId();

  // Processes and threads. Every failure writes a failure trace.

  /// A process.
  struct ProcessInfo {
    std::int32_t id = 0;    ///< the host's number of the process
    KORUnicodeString name;  ///< the program's file name without folder: "app.exe"
  };

  /// How urgent a process is to the host. POSIX hosts take it as a niceness of -10, -5, 0, 10 and 19.
  enum class ProcessPriority : std::int32_t { High = 0, AboveNormal = 1, Normal = 2, BelowNormal = 3, Idle = 4 };

  /**
   * Starts a program as a child process; KORStartProcess tells how. Told at DEBUG.
   *
   * @param iExecutable the program's path; also what the program gets as the first of its arguments.
   * @param iArguments the arguments behind that, handed over byte for byte.
   * @param iWait true to return after the child has ended.
   * @param oPid receives the process id; never null.
   * @param oExitCode receives, when waiting, the exit code, or on POSIX hosts the signal that ended the child as a
   * negative number; never null.
   * @return KORLibSuccess, or the platform's status with its message and a failure trace. KORLibNotStarted is also the
   * answer for a text with a zero byte, which no program could be handed.
   */
  static KORLibStatus StartProcess(const KORUnicodeString& iExecutable, const KORListValKORUnicodeString& iArguments,
                                   bool iWait, int* oPid, int* oExitCode);

  /// The parent of a running process. S_OK, or E_FAIL where one of the two is gone, there is no parent, or the calling
  /// process may not look into the parent. Told at TRACE.
  static long GetParentProcess(int iPid, ProcessInfo& oParent);

  /**
   * Appends the running children of a process, in the host's order, to those that oChildren holds. Told at TRACE.
   *
   * @param oChildren receives the children.
   * @param iParentPid the process.
   * @param iNamePattern of the program's file name: "*" matches any run of characters, a backslash makes the next one
   * literal.
   * @return S_OK, also where there are none; E_FAIL where the host's processes cannot be listed.
   */
  static long GetSubProcesses(std::vector<ProcessInfo>& oChildren, int iParentPid,
                              const KORUnicodeString& iNamePattern);

  /// Ends a process at once, the calling one too; its exit code is 1, on POSIX hosts the signal SIGKILL. S_OK, or
  /// E_FAIL where it has ended already, may not be ended, or has a number below 2.
  static long KillProcess(int iPid);

  /**
   * Has a process ended by the helper program VYXInfParentProcessKiller.exe, which stands in the folder of the running
   * program and outlives it, so that a process can have itself or its parent ended. Does not wait for it.
   *
   * @return S_OK once the helper was started; E_FAIL where it could not be.
   */
  static long KillProcessFromChild(int iPid);

  /// Makes the calling process more or less urgent. S_OK; E_INVALIDARG for a value that is none of the enumeration;
  /// E_FAIL, with a detail line, for what the process is not allowed (on POSIX hosts, becoming more urgent again).
  static long SetCurrentProcessPriority(ProcessPriority iPriority);

  /// True in the thread that runs main. Where the platform cannot tell, false with a line at WARN.
  static bool IsInMainThread();

  // The machine and the surroundings of the process.

  /// The memory of the process that is in use, in bytes; 0 where the host cannot tell.
  static std::int64_t GetCurrentMemoryUsage();

  /// The most memory that the process ever had in use, in bytes; 0 where the host cannot tell.
  static std::int64_t GetPeakMemoryUsage();

  /// The machine's memory in bytes.
  static std::uint64_t GetPhysicalMemory();

  /// The number of threads that the machine runs at once; never 0.
  static std::uint64_t GetCPUCount();

  /// Counts per second of the performance counter, which is not the processor's clock rate.
  static std::uint64_t GetCpuSpeed();

  /// A new UUID in the 36 characters of KORUuid. Empty, with a failure trace, where the host has no random numbers.
  static KORUnicodeString GetUUIDString();

  /// The entries of the environment, "NAME=value", in their order; with a filter those that it accepts. No other thread
  /// may change the environment meanwhile.
  static std::vector<KORUnicodeString> EnumEnvVars(std::function<bool(const KORUnicodeString&)> iFilter);

  /// The list of installation folders in the environment variable KORInstallPath; empty where it is not set.
  static KORUnicodeString GetInstallPaths();

  /// The folder, not the full path, of the running program. S_OK; or E_FAIL with a failure trace.
  static long GetExecutablePath(KORUnicodeString& oFolder);

  /// Always "Windows".
  static KORUnicodeString GetPlatform();

  /// True where the process runs as a cloud client (KORSysTS/QRMSysTenant.h tells when).
  static bool IsCloudClient();

  /// The address of the data-preparation authoring service of the current tenant, empty where it has none. S_OK; or
  /// E_FAIL, silently, where there is no current tenant, and then oUrl is untouched.
  static long GetDweldAuthoringUrl(KORUnicodeString& oUrl);
};
