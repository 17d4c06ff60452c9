#pragma once

#include <cstdint>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXInfProfile.h"

namespace MediaCatalogue {

/**
 * What a run costs, as a report:
 *
 *     {"Durations": {"ListFiles": ..., "PackFiles": ..., "ReadFiles": ..., "Run": ..., "WriteCatalogue": ...},
 *      "Memory": {"Current": ..., "Peak": ...},
 *      "Throughput": {"BytesPerSecond": ..., "FilesPerSecond": ...}}
 *
 * The throughput counts what was catalogued over the whole run, all steps together.
 */
class Performance {
 public:
  /// A step of the run: its duration goes into the report, and at INFO into the log. The Performance must outlive it.
  class Step {
   public:
    Step(Performance& ioPerformance, const char* iName)
        : _trigger(iName, true, INFO), _measurement(ioPerformance._durations.AddScopeDurationMeasurement(iName)) {}

   private:
    VYXInfProfileTrigger _trigger;
    VYXInfScopedMeasurement _measurement;
  };

  /// The run begins.
  Performance();

  /**
   * Ends the run and writes the report, replacing an earlier one as a whole.
   *
   * @return files per second.
   * @throws std::runtime_error with the reason, when the file cannot be written.
   */
  std::uint64_t Write(const KORUnicodeString& iPath, std::int64_t iFiles, std::int64_t iBytes);

 private:
  std::uint64_t _start;
  PerformanceReport _durations;
};

}  // namespace MediaCatalogue
