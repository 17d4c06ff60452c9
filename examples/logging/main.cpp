// Logging into a file of one's own besides the console, and measuring what a piece of work takes.

#include <iostream>

#include "VYXInfLog.h"
#include "VYXInfProfile.h"
#include "VYXInfStringUtil.h"
#include "VYXInfSystemUtil.h"

static std::uint64_t SumUp(std::uint64_t iCount, PerformanceReport& ioReport) {
  const VYXInfScopedMeasurement duration = ioReport.AddScopeDurationMeasurement("SumUp");
  std::uint64_t sum = 0;
  for (std::uint64_t number = 1; number <= iCount; ++number) {
    sum += number;
  }
  ioReport.AddMeasurement("Numbers", {iCount, PerformanceReport::MeasureUnit::Number, true});
  return sum;
}

int main() {
  if (!VYXInfLog::Init(WARN, "", "example")) {
    return 1;
  }
  // The console shows warnings, the file details as well, as long as the sink is referenced.
  const auto details = VYXInfLog::CreateFileLogger("details.log", DEBUG);
  const auto logger = VYXInfLog::GetDefaultLogger();

  PerformanceReport report;
  const std::uint64_t sum = SumUp(1000, report);
  const KORUnicodeString text = "the sum is " + KORUnicodeString(std::to_string(sum));
  if (!logger->IsFiltered(DEBUG)) {
    logger->Log(DEBUG, text);
  }
  logger->Log(WARN, "nothing is left to sum up");
  VYXInfLog::Close();

  KORUnicodeString lines;
  VYXInfSystemUtil::ReadFile("details.log", lines);
  const bool hasDetails = lines.SearchSubString("][DEBUG] " + text) > 0;
  std::cout << (hasDetails ? "the file has the details" : "the file lacks the details") << "\n";

  const bool hasDuration = report.DumpToJson().SearchSubString("\"Unit\":\"microseconds\"") > 0;
  std::cout << (hasDuration ? "the report has the duration" : "the report lacks the duration") << "\n";
  return 0;
}
