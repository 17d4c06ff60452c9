#include "performance.h"

#include <algorithm>

#include "VYXInfSystemUtil.h"
#include "results.h"

namespace MediaCatalogue {

namespace {

using Measure = PerformanceReport::Measure;
using Unit = PerformanceReport::MeasureUnit;

std::uint64_t PerSecond(std::int64_t iCount, std::uint64_t iMicroseconds) {
  constexpr double kMicrosecondsPerSecond = 1e6;
  return static_cast<std::uint64_t>(static_cast<double>(iCount) * kMicrosecondsPerSecond /
                                    static_cast<double>(iMicroseconds));
}

}  // namespace

Performance::Performance() : _start(VYXInfSystemUtil::GetTimeInMicroseconds()) {}

std::uint64_t Performance::Write(const KORUnicodeString& iPath, std::int64_t iFiles, std::int64_t iBytes) {
  const std::uint64_t elapsed = std::max<std::uint64_t>(VYXInfSystemUtil::GetTimeInMicroseconds() - _start, 1);
  const std::uint64_t filesPerSecond = PerSecond(iFiles, elapsed);
  _durations.AddMeasurement("Run", Measure{elapsed, Unit::Microseconds, false});

  PerformanceReport memory;
  memory.AddCurrentMemoryMeasurement("Current");
  memory.AddPeakMemoryMeasurement("Peak");
  PerformanceReport throughput;
  throughput.AddMeasurement("FilesPerSecond", Measure{filesPerSecond, Unit::Number, true});
  throughput.AddMeasurement("BytesPerSecond", Measure{PerSecond(iBytes, elapsed), Unit::Bytes, true});

  PerformanceReport report;
  report.NestPerformanceReport("Durations", _durations);
  report.NestPerformanceReport("Memory", memory);
  report.NestPerformanceReport("Throughput", throughput);
  WriteText(report.DumpToJson(), iPath);
  return filesPerSecond;
}

}  // namespace MediaCatalogue
