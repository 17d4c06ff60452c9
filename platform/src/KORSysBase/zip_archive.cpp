#include <algorithm>

#include "platform/adapters/crc32.h"
#include "zip_session.h"

namespace VYX::Platform {
namespace {

ZipProblem Refused(long iCode, const ZipEntry& iEntry, std::string_view iCause) {
  return {iCode, ShownName(iEntry.rawName), std::string(iCause)};
}

ZipProblem Damaged(const ZipEntry& iEntry, std::string_view iCause) {
  return Refused(KORSysZipFile::kDamaged, iEntry, iCause);
}

// Deflate codes at most 258 bytes in two bits, behind a block's header.
bool IsPossible(const ZipEntry& iEntry) noexcept {
  constexpr std::uint64_t kBestRatio = 1032;
  if (iEntry.method == ZipEntry::kStored) {
    return iEntry.size == iEntry.compressedSize;
  }
  return iEntry.size / kBestRatio <= iEntry.compressedSize;
}

}  // namespace

bool IsBomb(std::uint64_t iSize, std::uint64_t iCompressedSize, const KORSysZipLimits& iLimits) noexcept {
  // More than the ratio allows, without a product that overflows.
  return iSize > iLimits.freeSize && (iSize - 1) / std::max<std::uint64_t>(iLimits.maxRatio, 1) >= iCompressedSize;
}

ZipProblem ZipArchive::Open(const std::string& iNativePath) {
  if (const Os::Status status = _source.Open(iNativePath); !status.IsOk()) {
    return ToProblem(status);
  }
  return _layout.Read(_source, _limits.maxEntries);
}

// The reader has a parser of its own; what it reads must be what was verified here.
ZipProblem ZipArchive::PrepareReader() {
  std::string reason;
  if (_isPrepared || Entries().empty()) {
    return {};
  }
  if (!_reader.Open(_source, reason)) {
    return {KORSysZipFile::kDamaged, {}, reason};
  }
  if (_reader.GetCount() != Entries().size()) {
    return {KORSysZipFile::kDamaged, {}, "its directory can be read in two ways"};
  }
  for (const ZipEntry& entry : Entries()) {
    Adapters::ZipFigures figures;
    const Adapters::ZipFigures expected{entry.size, entry.compressedSize, entry.crc, entry.method};
    if (!entry.IsEncrypted() && (!_reader.Describe(entry.index, figures) || !(figures == expected))) {
      return Damaged(entry, "its place in the directory can be read in two ways");
    }
  }
  _isPrepared = true;
  return {};
}

ZipProblem ZipArchive::CheckReadable(const ZipEntry& iEntry) const {
  if (iEntry.IsEncrypted()) {
    return Refused(KORSysZipFile::kEncrypted, iEntry, "it is encrypted");
  }
  if (iEntry.method != ZipEntry::kStored && iEntry.method != ZipEntry::kDeflated) {
    return Refused(KORSysZipFile::kUnknownMethod, iEntry,
                   "it is compressed by the unknown method " + std::to_string(iEntry.method));
  }
  if (!IsPossible(iEntry)) {
    return Damaged(iEntry, "its sizes contradict each other");
  }
  if (iEntry.size > _limits.maxTotalSize) {
    return Refused(
        KORSysZipFile::kLimitExceeded, iEntry,
        "it has " + std::to_string(iEntry.size) + " bytes, more than " + std::to_string(_limits.maxTotalSize));
  }
  return IsBomb(iEntry.size, iEntry.compressedSize, _limits)
             ? Refused(KORSysZipFile::kLimitExceeded, iEntry,
                       "it grows more than " + std::to_string(_limits.maxRatio) + " times")
             : ZipProblem();
}

bool ZipArchive::IsInMemory(const ZipEntry& iEntry) const noexcept {
  return std::max(iEntry.size, iEntry.compressedSize) <= _limits.maxInMemory;
}

ZipProblem ZipArchive::ReaderProblem(const ZipEntry& iEntry, Adapters::ZipFailure iFailure) const {
  if (ZipProblem problem = _source.GetProblem(); !problem.IsNone()) {
    problem.entry = ShownName(iEntry.rawName);
    return problem;
  }
  return iFailure == Adapters::ZipFailure::WrongChecksum
             ? Refused(KORSysZipFile::kWrongChecksum, iEntry, "its checksum is wrong")
             : Damaged(iEntry, "its compressed data is damaged");
}

ZipProblem ZipArchive::ReadRaw(const ZipEntry& iEntry, char* oBuffer, std::size_t iSize) {
  if (!_reader.OpenEntry(iEntry.index, true)) {
    return ReaderProblem(iEntry, Adapters::ZipFailure::Corrupt);
  }
  std::size_t position = 0;
  std::size_t count = 1;
  while (position < iSize && count != 0) {
    const Adapters::ZipFailure failure = _reader.ReadEntry(oBuffer + position, iSize - position, count);
    if (failure != Adapters::ZipFailure::None) {
      return ReaderProblem(iEntry, failure);
    }
    position += count;
  }
  _reader.CloseEntry();
  return position == iSize ? ZipProblem() : Damaged(iEntry, "its data is cut short");
}

ZipProblem ZipArchive::ReadWhole(const ZipEntry& iEntry, char* oContent) {
  const auto size = static_cast<std::size_t>(iEntry.size);
  const auto compressedSize = static_cast<std::size_t>(iEntry.compressedSize);
  if (iEntry.method == ZipEntry::kStored) {
    if (ZipProblem problem = ReadRaw(iEntry, oContent, size); !problem.IsNone()) {
      return problem;
    }
  } else {
    const auto packed = std::make_unique_for_overwrite<char[]>(compressedSize);
    if (ZipProblem problem = ReadRaw(iEntry, packed.get(), compressedSize); !problem.IsNone()) {
      return problem;
    }
    if (_inflater == nullptr) {
      _inflater = std::make_unique<Adapters::Inflater>();
    }
    if (!_inflater->Inflate(packed.get(), compressedSize, oContent, size)) {
      return Damaged(iEntry, "its compressed data is damaged, or has another size than it says");
    }
  }
  return Adapters::Crc32(0, oContent, size) == iEntry.crc ? ZipProblem()
                                                          : ReaderProblem(iEntry, Adapters::ZipFailure::WrongChecksum);
}

ZipProblem ZipArchive::Begin(const ZipEntry& iEntry) {
  _position = 0;
  return _reader.OpenEntry(iEntry.index, false) ? ZipProblem() : ReaderProblem(iEntry, Adapters::ZipFailure::Corrupt);
}

ZipProblem ZipArchive::Next(const ZipEntry& iEntry, char* oBuffer, std::size_t iSize, std::size_t& oRead) {
  const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(iSize, iEntry.size - _position));
  std::size_t position = 0;
  std::size_t count = 1;
  while (position < wanted && count != 0) {
    const Adapters::ZipFailure failure = _reader.ReadEntry(oBuffer + position, wanted - position, count);
    if (failure != Adapters::ZipFailure::None) {
      return ReaderProblem(iEntry, failure);
    }
    position += count;
  }
  if (position < wanted) {
    return Damaged(iEntry, "it is shorter than it says");
  }
  _position += position;
  if (_position == iEntry.size) {
    // Only a read beyond the end makes the reader compare the checksum.
    char beyond = 0;
    const Adapters::ZipFailure failure = _reader.ReadEntry(&beyond, 1, count);
    if (failure != Adapters::ZipFailure::None) {
      return ReaderProblem(iEntry, failure);
    }
    if (count != 0) {
      return Damaged(iEntry, "it is longer than it says");
    }
  }
  oRead = position;
  return {};
}

}  // namespace VYX::Platform
