#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "zip_file_io.h"
#include "zip_problem.h"

namespace VYX::Platform {

/// One entry as the directory of an archive describes it.
struct ZipEntry {
  static constexpr std::uint16_t kEncryptedFlags = 1U << 0U | 1U << 6U | 1U << 13U;
  static constexpr std::uint16_t kDescriptorFlag = 1U << 3U;
  static constexpr std::uint16_t kUtf8Flag = 1U << 11U;
  static constexpr std::uint16_t kStored = 0;
  static constexpr std::uint16_t kDeflated = 8;

  std::string_view rawName;  ///< bytes of the directory
  std::string_view extra;    ///< the extra fields in the directory
  std::uint64_t index = 0;   ///< position in the directory
  std::uint64_t offset = 0;  ///< of the local header
  std::uint64_t size = 0;
  std::uint64_t compressedSize = 0;
  std::uint32_t crc = 0;
  std::uint32_t unixMode = 0;  ///< type and permissions; 0 where the archive does not tell
  std::uint16_t flags = 0;
  std::uint16_t method = 0;

  bool IsEncrypted() const noexcept { return (flags & kEncryptedFlags) != 0; }
};

/**
 * Where everything lies in an archive, found and verified without trust in any number that the archive gives.
 *
 * Refused is what leaves room for two readings: an end record that is not the last thing in the file, numbers that are
 * stored twice and differ, data that lies outside or overlaps.
 */
class ZipLayout {
 public:
  /// Finds the directory and reads it. More than iMaxEntries entries are refused before any memory is taken for them.
  ZipProblem Read(ZipFileSource& ioSource, std::uint64_t iMaxEntries);

  /// The entries in the order of the directory.
  const std::vector<ZipEntry>& Entries() const noexcept { return _entries; }

  /// Compares an entry's local header with the directory; oDataEnd is where its data ends.
  ZipProblem CheckLocal(ZipFileSource& ioSource, const ZipEntry& iEntry, std::uint64_t& oDataEnd) const;

  /// Checks every local header, and that no two entries share a byte.
  ZipProblem CheckAllLocal(ZipFileSource& ioSource) const;

 private:
  struct EndRecord {
    std::uint64_t count = 0;
    std::uint64_t size = 0;
    std::uint64_t offset = 0;
  };

  static ZipProblem FindEnd(ZipFileSource& ioSource, EndRecord& oEnd);
  static ZipProblem ReadLargeEnd(ZipFileSource& ioSource, std::uint64_t iEndPosition, EndRecord& ioEnd,
                                 std::uint64_t& ioLimit);
  ZipProblem ReadEntries(std::uint64_t iCount);

  std::string _directory;
  std::uint64_t _directoryOffset = 0;
  std::vector<ZipEntry> _entries;
};

/// The field of an id among extra fields, without its header; a null view where there is none. False where the fields
/// run out of their space.
bool FindExtra(std::string_view iExtra, std::uint16_t iId, std::string_view& oField) noexcept;

/// The name for messages: as it stands, with what is no printable ASCII masked.
std::string ShownName(std::string_view iRawName);

}  // namespace VYX::Platform
