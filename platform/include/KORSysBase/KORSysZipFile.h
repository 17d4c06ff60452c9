#pragma once

#include <cstdint>
#include <memory>

#include "KORSysBase/KORResult.h"
#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

namespace VYX::Platform {
struct ZipSession;
}

/**
 * @file
 * Zip archives.
 */

/// What an archive is opened for.
enum class KORSysZipOpenMode : std::int32_t {
  Create = 1,  ///< writing a new archive
  Browse = 3,  ///< listing and extracting
  Read = 4     ///< reading single entries
};

/// What an archive says about one entry.
struct KORSysZipEntryInfo {
  std::uint64_t uncompressedSize = 0;  ///< bytes
  std::uint64_t compressedSize = 0;    ///< bytes inside the archive
  std::uint32_t crc32 = 0;             ///< checksum of the content
  std::uint32_t method = 0;            ///< 0 stored, 8 deflated, else one that cannot be read
};

/// What is read of an archive at most. What an archive says and what really comes out of it are both held against this,
/// so that a small archive cannot fill memory or disk.
struct KORSysZipLimits {
  std::uint64_t maxEntries = 1'000'000;                  ///< entries of one archive
  std::uint64_t maxTotalSize = std::uint64_t{4} << 30U;  ///< bytes that come out of one archive
  std::uint64_t maxRatio = 200;                          ///< bytes that come out per byte that goes in
  std::uint64_t freeSize = std::uint64_t{16} << 20U;     ///< bytes that may come out before the ratio counts
  std::uint64_t maxInMemory = std::uint64_t{64} << 20U;  ///< larger entries are coded piece by piece, more slowly

  /// Refuses names that not every host can store: device names ("con", "nul.txt"), colons, control characters, and
  /// blanks or full stops at the end of a name.
  bool arePortableNamesRequired = true;

  /// Refuses two entries whose names differ in letter case only; they are one file where the host ignores case.
  bool isCaseIgnored = false;
};

/**
 * A zip archive: listing, extracting, reading single entries, creating.
 *
 * ```cpp
 * VYXInfSystemUtil::SaveToFile("list.txt", "one line", 0);
 * const KORUnicodeString file("list.txt");
 *
 * KORSysZipFile writer;
 * if (writer.OpenZip("results.zip", KORSysZipOpenMode::Create, 0) >= 0) {
 *   writer.AddFile(&file, 1, 0, nullptr, 0);
 *   writer.Close(0) >= 0;  // true
 * }
 *
 * KORSysZipFile reader;
 * unsigned int count = 0;
 * if (reader.OpenZip("results.zip", KORSysZipOpenMode::Browse, 0) >= 0) {
 *   reader.ExtractAll("results", KORSysZipFile::kUtf8Names, &count);
 * }
 * count;                                                // 1
 * VYXInfSystemUtil::DoesFileExist("results/list.txt");  // true
 * ```
 *
 * Read are stored and deflated entries, zip64, data descriptors, and names in UTF-8 or code page 437; an archive has to
 * begin with its first byte and end with its last (PKWARE's APPNOTE.TXT describes the format). Written are deflated
 * entries with UTF-8 names.
 *
 * An archive is not trusted. Sizes and checksums are verified before an operation succeeds, and ExtractAll writes
 * nothing where an entry is unsafe: its name is absolute, has a drive or "..", or is no possible name (a backslash
 * separates like a slash); it is a link or another special file; two entries land on one file; entries overlap; or the
 * archive goes past the limits.
 *
 * Every function answers S_OK or a negative code, and leaves a pending error that names entry, archive and cause.
 * Outputs are touched on success only. One object belongs to one thread at a time.
 */
class VYX_EXPORT KORSysZipFile {
 public:
  // Result codes of archives; failures of files keep the platform's codes (0x8007xxxx).
  static constexpr long kNotAnArchive = VYX::ResultCode(0x80040301U);    ///< no zip archive, or one cut short
  static constexpr long kDamaged = VYX::ResultCode(0x80040302U);         ///< the archive contradicts itself
  static constexpr long kUnsafeEntry = VYX::ResultCode(0x80040303U);     ///< a name that must not be used, or a link
  static constexpr long kDuplicateEntry = VYX::ResultCode(0x80040304U);  ///< two entries of one name
  static constexpr long kLimitExceeded = VYX::ResultCode(0x80040305U);   ///< see KORSysZipLimits
  static constexpr long kEncrypted = VYX::ResultCode(0x80040306U);       ///< the entry needs a password
  static constexpr long kUnknownMethod = VYX::ResultCode(0x80040307U);   ///< the entry is compressed in an unknown way
  static constexpr long kEntryNotFound = VYX::ResultCode(0x80040308U);   ///< the archive has no such entry
  static constexpr long kWrongChecksum = VYX::ResultCode(0x80040309U);   ///< the content is not what was stored
  static constexpr long kWrongState = VYX::ResultCode(0x8004030AU);      ///< no archive or entry is open for that

  /// Option of OpenZip and ExtractAll: names that are not marked as UTF-8 are UTF-8 where they are well-formed UTF-8.
  /// Without it, and for other names, they are in code page 437.
  static constexpr unsigned long kUtf8Names = 16;

  /// An object without an archive.
  explicit KORSysZipFile(int iReserved = 0);

  /// Closes the archive. One that is being created and was not closed leaves nothing behind.
  ~KORSysZipFile();

  KORSysZipFile(const KORSysZipFile&) = delete;
  KORSysZipFile& operator=(const KORSysZipFile&) = delete;

  /// The limits that new objects start with. Not locked: to be set before other threads read archives.
  static void SetDefaultLimits(const KORSysZipLimits& iLimits);

  /// The limits that new objects start with, unless changed those of KORSysZipLimits.
  static KORSysZipLimits GetDefaultLimits();

  /// Changes the limits of this object, for archives that are opened from now on.
  void SetLimits(const KORSysZipLimits& iLimits);

  /**
   * Opens an archive; one that was open before is closed.
   *
   * A new archive is written beside its final name and gets that name in Close; an archive that has the name already
   * stays untouched until then.
   *
   * @param iPath the archive.
   * @param iMode what it is opened for.
   * @param iOptions 0 or kUtf8Names.
   * @return S_OK, or a negative code with a pending error.
   */
  long OpenZip(const KORUnicodeString& iPath, KORSysZipOpenMode iMode, int iOptions);

  /**
   * Lists the entries in the order of the archive, names as they stand there.
   *
   * @param oNames a new array, to be released with `delete[]`; so are the optional ones.
   * @param oCount number of entries.
   * @param oSizes, oCompressedSizes, oChecksums sizes in bytes before and after compression, and CRC-32.
   * @return S_OK, or a negative code with a pending error.
   */
  long BrowseZip(KORUnicodeString** oNames, unsigned int* oCount, std::uint64_t** oSizes = nullptr,
                 std::uint64_t** oCompressedSizes = nullptr, std::uint32_t** oChecksums = nullptr);

  /**
   * Extracts every entry below a folder, which is created where it is missing.
   *
   * Everything is unpacked and verified in a private folder inside the target first, and moved into place afterwards,
   * file by file, over files and links of the same name; no link inside the target is followed. A failure before the
   * moving leaves the target as it was; a failure while moving removes what is new, but a file that was replaced stays
   * the new, whole one.
   *
   * @param iTargetFolder where the entries go.
   * @param iOptions 0 or kUtf8Names, which holds for BrowseZip and OpenFileInZip from then on.
   * @param oCount number of entries extracted; may be null.
   * @return S_OK, or a negative code with a pending error that names the entry.
   */
  long ExtractAll(const KORUnicodeString& iTargetFolder, unsigned long iOptions, unsigned int* oCount);

  /// Selects the entry of a name (a backslash equals a slash) for the next three. Both reserved arguments are 0.
  long OpenFileInZip(const KORUnicodeString& iName, int iReserved, unsigned long iOptions);

  /// What the archive says about the selected entry.
  long GetCurrentInfo(KORSysZipEntryInfo* oInfo);

  /**
   * Reads the next bytes of the selected entry.
   *
   * The content is verified before the read that reaches its end succeeds; on failure the buffer may have been written.
   *
   * @param oBuffer room for iSize bytes.
   * @param iSize number of bytes wanted.
   * @param oRead number of bytes, less than iSize at the end of the entry only.
   * @return S_OK, or a negative code with a pending error: kWrongChecksum or kDamaged for content that is not what the
   * archive promised.
   */
  long ReadBufferInZip(char* oBuffer, std::uint64_t iSize, std::uint64_t* oRead);

  /// Ends the reading of the selected entry.
  long CloseFileInZip();

  /**
   * Adds a file to a new archive. It is read in Close, so it must stay until then.
   *
   * @param iFile the file.
   * @param iBaseFolder the folder to whose content the stored name is relative; null or empty to store the bare file
   * name.
   * @param iMethod 1, compressed.
   * @param iOptions, iReserved 0.
   * @return S_OK; kDuplicateEntry for a second file of the same stored name, E_INVALIDARG for a file outside the base
   * folder.
   */
  long AddFile(const KORUnicodeString* iFile, int iMethod, int iOptions, const KORUnicodeString* iBaseFolder,
               int iReserved);

  /// Closes the archive; a new one is written, and appears under its name only when it is complete.
  long Close(int iReserved);

 private:
  std::unique_ptr<VYX::Platform::ZipSession> _session;
};
