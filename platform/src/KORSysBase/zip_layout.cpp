#include "zip_layout.h"

#include <algorithm>

#include "KORSysBase/KORSysZipFile.h"
#include "zip_bytes.h"

namespace VYX::Platform {
namespace {

constexpr std::size_t kEndSize = 22;
constexpr std::size_t kMaxCommentSize = 0xFFFF;
constexpr std::size_t kLocatorSize = 20;
constexpr std::size_t kLargeEndSize = 56;
constexpr std::string_view kEndSignature("PK\5\6", 4);
constexpr std::string_view kLocatorSignature("PK\6\7", 4);
constexpr std::string_view kLargeEndSignature("PK\6\6", 4);
constexpr std::uint32_t kMarker16 = 0xFFFF;
constexpr std::uint32_t kMarker32 = 0xFFFFFFFF;

ZipProblem NoArchive(std::string_view iCause) {
  return {KORSysZipFile::kNotAnArchive, {}, std::string(iCause)};
}

ZipProblem Damaged(std::string_view iCause) {
  return {KORSysZipFile::kDamaged, {}, std::string(iCause)};
}

// A field of the old end record: the marker that sends to the large one, or the same number.
bool Agrees(std::uint64_t iSmall, std::uint64_t iMarker, std::uint64_t iLarge) noexcept {
  return iSmall == iMarker || iSmall == iLarge;
}

// Places where an end record fits exactly to the end of the file.
std::vector<std::size_t> FindCandidates(std::string_view iTail) {
  std::vector<std::size_t> found;
  for (std::size_t at = iTail.find(kEndSignature); at != std::string_view::npos && iTail.size() - at >= kEndSize;
       at = iTail.find(kEndSignature, at + 1)) {
    if (at + kEndSize + ZipBytes(iTail).Get16(at + 20) == iTail.size()) {
      found.push_back(at);
    }
  }
  return found;
}

}  // namespace

ZipProblem ZipLayout::FindEnd(ZipFileSource& ioSource, EndRecord& oEnd) {
  const std::uint64_t fileSize = ioSource.GetSize();
  std::string tail(static_cast<std::size_t>(std::min<std::uint64_t>(fileSize, kEndSize + kMaxCommentSize)), '\0');
  const std::uint64_t tailOffset = fileSize - tail.size();
  if (!ioSource.ReadAt(tailOffset, tail.data(), tail.size())) {
    return ioSource.GetProblem();
  }
  const std::vector<std::size_t> candidates = FindCandidates(tail);
  if (candidates.size() != 1) {
    return NoArchive(candidates.empty() ? "it is no zip archive, or its end is missing" : "it has two ends");
  }
  const ZipBytes end(std::string_view(tail).substr(candidates.front()));
  if (end.Get16(4) != end.Get16(6) || end.Get16(8) != end.Get16(10)) {
    return Damaged("it is one of several volumes");
  }
  oEnd = {end.Get16(10), end.Get32(12), end.Get32(16)};
  const std::uint64_t endPosition = tailOffset + candidates.front();
  std::uint64_t limit = endPosition;
  const std::uint16_t disk = end.Get16(4);
  if (ZipProblem problem = ReadLargeEnd(ioSource, endPosition, oEnd, limit); !problem.IsNone()) {
    return problem;
  }
  if (disk != 0 && (disk != kMarker16 || limit == endPosition)) {
    return Damaged("it is one of several volumes");
  }
  if (oEnd.offset > limit || oEnd.size > limit - oEnd.offset) {
    return Damaged("its directory lies outside the file");
  }
  return {};
}

ZipProblem ZipLayout::ReadLargeEnd(ZipFileSource& ioSource, std::uint64_t iEndPosition, EndRecord& ioEnd,
                                   std::uint64_t& ioLimit) {
  if (iEndPosition < kLocatorSize) {
    return {};
  }
  char bytes[kLargeEndSize];
  const std::uint64_t locatorPosition = iEndPosition - kLocatorSize;
  if (!ioSource.ReadAt(locatorPosition, bytes, kLocatorSize)) {
    return ioSource.GetProblem();
  }
  if (std::string_view(bytes, 4) != kLocatorSignature) {
    return {};
  }
  const std::uint64_t position = ZipBytes({bytes, kLocatorSize}).Get64(8);
  if (position > locatorPosition || locatorPosition - position < kLargeEndSize) {
    return Damaged("its zip64 end lies outside the file");
  }
  if (!ioSource.ReadAt(position, bytes, kLargeEndSize)) {
    return ioSource.GetProblem();
  }
  const ZipBytes end({bytes, kLargeEndSize});
  if (std::string_view(bytes, 4) != kLargeEndSignature) {
    return Damaged("its zip64 end is missing");
  }
  const EndRecord large{end.Get64(32), end.Get64(40), end.Get64(48)};
  const bool isOneVolume = end.Get32(16) == 0 && end.Get32(20) == 0 && end.Get64(24) == large.count;
  const bool agrees = Agrees(ioEnd.count, kMarker16, large.count) && Agrees(ioEnd.size, kMarker32, large.size) &&
                      Agrees(ioEnd.offset, kMarker32, large.offset);
  if (!isOneVolume || !agrees) {
    return Damaged("its two ends contradict each other");
  }
  ioEnd = large;
  ioLimit = position;
  return {};
}

ZipProblem ZipLayout::Read(ZipFileSource& ioSource, std::uint64_t iMaxEntries) {
  EndRecord end;
  if (ZipProblem problem = FindEnd(ioSource, end); !problem.IsNone()) {
    return problem;
  }
  if (end.count > iMaxEntries) {
    return {KORSysZipFile::kLimitExceeded,
            {},
            "it has " + std::to_string(end.count) + " entries, more than " + std::to_string(iMaxEntries)};
  }
  _directory.resize(static_cast<std::size_t>(end.size));
  _directoryOffset = end.offset;
  if (!ioSource.ReadAt(end.offset, _directory.data(), _directory.size())) {
    return ioSource.GetProblem();
  }
  return ReadEntries(end.count);
}

ZipProblem ZipLayout::CheckAllLocal(ZipFileSource& ioSource) const {
  struct Range {
    std::uint64_t begin;
    std::uint64_t end;
    const ZipEntry* entry;
  };
  std::vector<Range> ranges;
  ranges.reserve(_entries.size());
  for (const ZipEntry& entry : _entries) {
    std::uint64_t end = 0;
    if (ZipProblem problem = CheckLocal(ioSource, entry, end); !problem.IsNone()) {
      return problem;
    }
    ranges.push_back({entry.offset, end, &entry});
  }
  std::sort(ranges.begin(), ranges.end(),
            [](const Range& iLeft, const Range& iRight) { return iLeft.begin < iRight.begin; });
  for (std::size_t next = 1; next < ranges.size(); ++next) {
    if (ranges[next].begin < ranges[next - 1].end) {
      return {KORSysZipFile::kDamaged, ShownName(ranges[next].entry->rawName),
              "it overlaps the entry '" + ShownName(ranges[next - 1].entry->rawName) + "'"};
    }
  }
  return {};
}

}  // namespace VYX::Platform
