#include "summary.h"

#include <algorithm>
#include <ostream>
#include <utility>
#include <vector>

#include "messages.h"

namespace MediaCatalogue {

namespace {

constexpr std::chrono::seconds kBetweenLines(2);
constexpr std::size_t kMostRows = 12;

// The stream's own width counts bytes, not characters.
KORUnicodeString Padding(const KORUnicodeString& iText, int iWidth) {
  return KORUnicodeString(KORUnicodeChar(' '), static_cast<std::size_t>(std::max(iWidth - iText.GetLengthInChar(), 0)));
}

void PrintRow(std::ostream& ioStream, const KORUnicodeString& iName, const KORUnicodeString& iFiles,
              const KORUnicodeString& iBytes) {
  ioStream << "  " << iName << Padding(iName, 28) << Padding(iFiles, 10) << iFiles << Padding(iBytes, 16) << iBytes
           << '\n';
}

void PrintRow(std::ostream& ioStream, const KORUnicodeString& iName, const Total& iTotal) {
  PrintRow(ioStream, iName, Number(iTotal.files), Number(iTotal.bytes));
}

}  // namespace

Progress::Progress(std::ostream& ioStream, std::size_t iFileCount)
    : _stream(ioStream), _fileCount(iFileCount), _nextLine(std::chrono::steady_clock::now() + kBetweenLines) {}

void Progress::Step() {
  ++_done;
  const auto now = std::chrono::steady_clock::now();
  if (now >= _nextLine && _done < _fileCount) {
    _stream << "  "
            << Say(kProgress, {Number(static_cast<std::int64_t>(_done)), Number(static_cast<std::int64_t>(_fileCount))})
            << std::endl;
    _nextLine = now + kBetweenLines;
  }
}

void PrintSummary(std::ostream& ioStream, const Catalogue& iCatalogue) {
  std::vector<std::pair<KORUnicodeString, Total>> types(iCatalogue.ByMediaType().begin(),
                                                        iCatalogue.ByMediaType().end());
  std::ranges::stable_sort(
      types, [](const auto& iLeft, const auto& iRight) { return iLeft.second.bytes > iRight.second.bytes; });
  const std::size_t rowCount = std::min(types.size(), kMostRows);
  Total others;
  for (std::size_t index = rowCount; index < types.size(); ++index) {
    others.files += types[index].second.files;
    others.bytes += types[index].second.bytes;
  }

  ioStream << '\n';
  PrintRow(ioStream, Say(kMediaType), Say(kFiles), Say(kBytes));
  for (std::size_t index = 0; index < rowCount; ++index) {
    PrintRow(ioStream, types[index].first, types[index].second);
  }
  if (others.files > 0) {
    PrintRow(ioStream, Say(kOthers), others);
  }
  PrintRow(ioStream, Say(kAll), iCatalogue.All());
  ioStream << '\n';
  if (iCatalogue.FailureCount() > 0) {
    ioStream << Say(kFailures, {Number(iCatalogue.FailureCount())}) << '\n';
  }
}

}  // namespace MediaCatalogue
