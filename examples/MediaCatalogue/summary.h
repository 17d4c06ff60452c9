#pragma once

#include <chrono>
#include <cstddef>
#include <iosfwd>

#include "catalogue.h"

namespace MediaCatalogue {

/// Tells on long runs how far the work has come: whole lines, seconds apart, so that a log file stays readable.
class Progress {
 public:
  Progress(std::ostream& ioStream, std::size_t iFileCount);

  /// To be called after each file.
  void Step();

 private:
  std::ostream& _stream;
  std::size_t _fileCount;
  std::size_t _done = 0;
  std::chrono::steady_clock::time_point _nextLine;
};

/// Writes the totals, the largest media types first.
void PrintSummary(std::ostream& ioStream, const Catalogue& iCatalogue);

}  // namespace MediaCatalogue
