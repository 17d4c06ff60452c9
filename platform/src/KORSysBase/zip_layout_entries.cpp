#include <algorithm>
#include <utility>

#include "KORSysBase/KORSysZipFile.h"
#include "zip_bytes.h"
#include "zip_layout.h"

namespace VYX::Platform {
namespace {

constexpr std::size_t kRecordSize = 46;
constexpr std::size_t kLocalSize = 30;
constexpr std::string_view kRecordSignature("PK\1\2", 4);
constexpr std::string_view kLocalSignature("PK\3\4", 4);
constexpr std::uint16_t kMarker16 = 0xFFFF;
constexpr std::uint32_t kMarker32 = 0xFFFFFFFF;
constexpr std::uint16_t kLargeSizesId = 1;

ZipProblem Damaged(const ZipEntry& iEntry, std::string_view iCause) {
  return {KORSysZipFile::kDamaged, ShownName(iEntry.rawName), std::string(iCause)};
}

// Takes the 64-bit numbers of the zip64 field, in their order, for those numbers that carry the marker.
class LargeNumbers {
 public:
  explicit LargeNumbers(std::string_view iField) noexcept : _rest(iField) {}

  bool Replace(std::uint64_t& ioNumber) noexcept {
    if (ioNumber != kMarker32) {
      return true;
    }
    if (_rest.size() < 8) {
      return false;
    }
    ioNumber = ZipBytes(_rest).Get64(0);
    _rest.remove_prefix(8);
    return true;
  }

 private:
  std::string_view _rest;
};

// The local header, read with what is usually behind it in one go.
class LocalHeader {
 public:
  ZipProblem Read(ZipFileSource& ioSource, const ZipEntry& iEntry, std::uint64_t iLimit) {
    constexpr std::size_t kUsualExtraSize = 64;
    if (iEntry.offset > iLimit || iLimit - iEntry.offset < kLocalSize) {
      return Damaged(iEntry, "it lies outside the archive");
    }
    const std::uint64_t room = iLimit - iEntry.offset;
    if (ZipProblem problem = Fill(ioSource, iEntry.offset,
                                  std::min<std::uint64_t>(room, kLocalSize + iEntry.rawName.size() + kUsualExtraSize));
        !problem.IsNone()) {
      return problem;
    }
    if (!_bytes.starts_with(kLocalSignature)) {
      return Damaged(iEntry, "its local header is missing");
    }
    const ZipBytes header(_bytes);
    _nameSize = header.Get16(26);
    const std::size_t size = kLocalSize + _nameSize + header.Get16(28);
    if (size > room) {
      return Damaged(iEntry, "its local header lies outside the archive");
    }
    if (size > _bytes.size()) {
      return Fill(ioSource, iEntry.offset, size).IsNone() ? ZipProblem() : ioSource.GetProblem();
    }
    _bytes.resize(size);
    return {};
  }

  ZipBytes Header() const noexcept { return ZipBytes(_bytes); }
  std::string_view Name() const noexcept { return std::string_view(_bytes).substr(kLocalSize, _nameSize); }
  std::string_view Extra() const noexcept { return std::string_view(_bytes).substr(kLocalSize + _nameSize); }
  std::size_t Size() const noexcept { return _bytes.size(); }

 private:
  ZipProblem Fill(ZipFileSource& ioSource, std::uint64_t iOffset, std::uint64_t iSize) {
    _bytes.resize(static_cast<std::size_t>(iSize));
    return ioSource.ReadAt(iOffset, _bytes.data(), _bytes.size()) ? ZipProblem() : ioSource.GetProblem();
  }

  std::string _bytes;
  std::size_t _nameSize = 0;
};

// With a data descriptor behind the data the local numbers may be left out.
bool SizesAgree(const LocalHeader& iLocal, const ZipEntry& iEntry) noexcept {
  const ZipBytes header = iLocal.Header();
  const bool hasDescriptor = (iEntry.flags & ZipEntry::kDescriptorFlag) != 0;
  std::uint64_t compressedSize = header.Get32(18);
  std::uint64_t size = header.Get32(22);
  const std::uint32_t crc = header.Get32(14);
  std::string_view field;
  if (!FindExtra(iLocal.Extra(), kLargeSizesId, field)) {
    return false;
  }
  if (field.data() != nullptr) {
    LargeNumbers numbers(field);
    if (!numbers.Replace(size) || !numbers.Replace(compressedSize)) {
      return false;
    }
  }
  const auto agrees = [hasDescriptor](std::uint64_t iLeft, std::uint64_t iRight) {
    return iLeft == iRight || (hasDescriptor && (iLeft == 0 || iLeft == kMarker32));
  };
  return agrees(size, iEntry.size) && agrees(compressedSize, iEntry.compressedSize) && agrees(crc, iEntry.crc);
}

// The field of a record's fixed part, and how much of the directory the record takes.
ZipEntry ParseRecord(std::string_view iRecord, std::size_t& oSize) noexcept {
  const ZipBytes record(iRecord);
  const std::size_t nameSize = record.Get16(28);
  const std::size_t extraSize = record.Get16(30);
  oSize = kRecordSize + nameSize + extraSize + record.Get16(32);
  ZipEntry entry;
  entry.flags = record.Get16(8);
  entry.method = record.Get16(10);
  entry.crc = record.Get32(16);
  entry.compressedSize = record.Get32(20);
  entry.size = record.Get32(24);
  entry.unixMode = record.Get16(40);
  entry.offset = record.Get32(42);
  if (oSize <= iRecord.size()) {
    entry.rawName = iRecord.substr(kRecordSize, nameSize);
    entry.extra = iRecord.substr(kRecordSize + nameSize, extraSize);
  }
  return entry;
}

ZipProblem TakeLargeNumbers(ZipEntry& ioEntry) {
  std::string_view field;
  if (!FindExtra(ioEntry.extra, kLargeSizesId, field)) {
    return Damaged(ioEntry, "its extra fields are damaged");
  }
  LargeNumbers numbers(field);
  if (!numbers.Replace(ioEntry.size) || !numbers.Replace(ioEntry.compressedSize) || !numbers.Replace(ioEntry.offset)) {
    return Damaged(ioEntry, "its zip64 sizes are missing");
  }
  return {};
}

}  // namespace

bool FindExtra(std::string_view iExtra, std::uint16_t iId, std::string_view& oField) noexcept {
  oField = {};
  // Fewer bytes than a field's header are padding.
  while (iExtra.size() >= 4) {
    const ZipBytes header(iExtra);
    const std::size_t size = header.Get16(2);
    if (size > iExtra.size() - 4) {
      return false;
    }
    if (header.Get16(0) == iId) {
      oField = iExtra.substr(4, size);
      return true;
    }
    iExtra.remove_prefix(4 + size);
  }
  return true;
}

std::string ShownName(std::string_view iRawName) {
  std::string shown(iRawName);
  std::replace_if(
      shown.begin(), shown.end(), [](char iChar) { return iChar < ' ' || iChar > '~'; }, '?');
  return shown;
}

ZipProblem ZipLayout::ReadEntries(std::uint64_t iCount) {
  ZipProblem damaged{KORSysZipFile::kDamaged, {}, "its directory is damaged"};
  std::string_view rest = _directory;
  if (iCount > rest.size() / kRecordSize) {
    return damaged;
  }
  _entries.reserve(static_cast<std::size_t>(iCount));
  for (std::uint64_t index = 0; index < iCount; ++index) {
    if (rest.size() < kRecordSize || !rest.starts_with(kRecordSignature)) {
      return damaged;
    }
    std::size_t size = 0;
    ZipEntry entry = ParseRecord(rest, size);
    if (size > rest.size()) {
      return damaged;
    }
    entry.index = index;
    const std::uint16_t disk = ZipBytes(rest).Get16(34);
    if (disk != 0 && disk != kMarker16) {
      return Damaged(entry, "it is on another volume");
    }
    if (ZipProblem problem = TakeLargeNumbers(entry); !problem.IsNone()) {
      return problem;
    }
    _entries.push_back(entry);
    rest.remove_prefix(size);
  }
  return rest.empty() ? ZipProblem() : damaged;
}

ZipProblem ZipLayout::CheckLocal(ZipFileSource& ioSource, const ZipEntry& iEntry, std::uint64_t& oDataEnd) const {
  LocalHeader local;
  if (ZipProblem problem = local.Read(ioSource, iEntry, _directoryOffset); !problem.IsNone()) {
    return problem;
  }
  const ZipBytes header = local.Header();
  const auto flags = static_cast<std::uint16_t>(header.Get16(6) ^ iEntry.flags);
  if (local.Name() != iEntry.rawName) {
    return Damaged(iEntry, "its two names differ");
  }
  if (header.Get16(8) != iEntry.method || (flags & (ZipEntry::kEncryptedFlags | ZipEntry::kDescriptorFlag)) != 0) {
    return Damaged(iEntry, "its local header contradicts the directory");
  }
  if (!iEntry.IsEncrypted() && !SizesAgree(local, iEntry)) {
    return Damaged(iEntry, "its sizes or checksums in local header and directory differ");
  }
  const std::uint64_t data = iEntry.offset + local.Size();
  if (iEntry.compressedSize > _directoryOffset - data) {
    return Damaged(iEntry, "its data lies outside the archive");
  }
  oDataEnd = data + iEntry.compressedSize;
  return {};
}

}  // namespace VYX::Platform
