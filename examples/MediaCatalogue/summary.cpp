#include "summary.h"

#include <algorithm>
#include <iomanip>
#include <ostream>
#include <utility>
#include <vector>

namespace MediaCatalogue {

namespace {

constexpr std::chrono::seconds kBetweenLines(2);
constexpr std::size_t kMostRows = 12;

void PrintRow(std::ostream& ioStream, const char* iName, const Total& iTotal) {
  ioStream << "  " << std::left << std::setw(28) << iName << std::right << std::setw(10) << iTotal.files
           << std::setw(16) << iTotal.bytes << '\n';
}

}  // namespace

Progress::Progress(std::ostream& ioStream, std::size_t iFileCount)
    : _stream(ioStream), _fileCount(iFileCount), _nextLine(std::chrono::steady_clock::now() + kBetweenLines) {}

void Progress::Step() {
  ++_done;
  const auto now = std::chrono::steady_clock::now();
  if (now >= _nextLine && _done < _fileCount) {
    _stream << "  " << _done << " of " << _fileCount << " files" << std::endl;
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

  ioStream << '\n'
           << "  " << std::left << std::setw(28) << "media type" << std::right << std::setw(10) << "files"
           << std::setw(16) << "bytes" << '\n';
  for (std::size_t index = 0; index < rowCount; ++index) {
    PrintRow(ioStream, types[index].first, types[index].second);
  }
  if (others.files > 0) {
    PrintRow(ioStream, "others", others);
  }
  PrintRow(ioStream, "all", iCatalogue.All());
  ioStream << '\n';
  if (iCatalogue.FailureCount() > 0) {
    ioStream << "Not catalogued: " << iCatalogue.FailureCount() << " files; the catalogue lists them with the reason\n";
  }
}

}  // namespace MediaCatalogue
