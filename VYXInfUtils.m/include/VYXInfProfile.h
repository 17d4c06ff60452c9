#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"
#include "VYXInfLog.h"

/**
 * @file
 * Durations and figures of a run.
 */

/**
 * Measures the time of a scope: the counter that it was given holds the microseconds between its construction and its
 * destruction. Used by one thread at a time.
 *
 * ```cpp
 * std::uint64_t microseconds = 0;
 * {
 *   const VYXInfScopedMeasurement measurement(microseconds);
 *   std::this_thread::sleep_for(std::chrono::milliseconds(2));
 * }
 * microseconds >= 2000;  // true
 * ```
 */
class VYX_EXPORT VYXInfScopedMeasurement {
 public:
  /// Starts measuring into a counter, which must outlive the object and is written when it dies.
  explicit VYXInfScopedMeasurement(std::uint64_t& oTarget);
  ~VYXInfScopedMeasurement();
  VYXInfScopedMeasurement(const VYXInfScopedMeasurement&) = delete;
  VYXInfScopedMeasurement& operator=(const VYXInfScopedMeasurement&) = delete;

 private:
  std::uint64_t& _target;
  std::uint64_t _start;
};

/**
 * Measures the time of a scope and writes it as one line through the default logger when the scope ends:
 *
 * ```text
 * [PROFILE]  PROFILE:  @ReadFile:<tab><tab>took 0.012345s
 * ```
 *
 * (with a space at the end). The line is composed only when its level is not filtered. Used by one thread at a time.
 */
class VYX_EXPORT VYXInfProfileTrigger {
 public:
  /**
   * Starts measuring.
   *
   * @param iName what is measured; copied, null is the empty name.
   * @param iLogOnEnd whether the line is written.
   * @param iLevel the line's level.
   */
  VYXInfProfileTrigger(const char* iName, bool iLogOnEnd, const VYXInfLogLevel& iLevel);

  /// Takes the name over and copies the settings, but not the running measurement: the source goes on measuring, under
  /// an empty name, and the new trigger shows the time that the source had reached when it was moved, which is 0.
  VYXInfProfileTrigger(VYXInfProfileTrigger&& ioOther) noexcept;

  ~VYXInfProfileTrigger();
  VYXInfProfileTrigger(const VYXInfProfileTrigger&) = delete;
  VYXInfProfileTrigger& operator=(const VYXInfProfileTrigger&) = delete;

 private:
  std::string _name;
  bool _logOnEnd;
  VYXInfLogLevel _level;
  std::uint64_t _elapsed = 0;
  std::optional<VYXInfScopedMeasurement> _measurement;
};

namespace JSON {
class JOStream;
}

/**
 * Named measurements of a benchmark, rendered as JSON: durations, memory figures, free values and nested reports.
 *
 * ```cpp
 * PerformanceReport report;
 * report.AddMeasurement("Files", {12, PerformanceReport::MeasureUnit::Number, true});
 * std::cout << report.DumpToJson() << "\n";  // {"Files":{"Value":12,"Unit":"number","HigherIsBetter":true}}
 * {
 *   const VYXInfScopedMeasurement duration = report.AddScopeDurationMeasurement("Load");
 * }
 * report.AddPeakMemoryMeasurement("Peak");
 * ```
 *
 * A name is given once: what is added under a name that the report holds already is dropped. Entries are never removed.
 * Used by one thread at a time.
 */
class VYX_EXPORT PerformanceReport {
 public:
  /// What a value counts; any other value renders as the empty unit.
  enum class MeasureUnit : std::int32_t { Number = 0, Microseconds = 1, Bytes = 2 };

  /// One figure.
  struct Measure {
    std::uint64_t value;  ///< the count
    MeasureUnit unit;     ///< what is counted
    bool higherIsBetter;  ///< how the reader of the report judges a change
  };

  /// An empty report.
  PerformanceReport();
  /// @{
  /// Copies are deep, nested reports included. Assignment drops the former entries, so none may be measuring then.
  PerformanceReport(const PerformanceReport& iOther);
  PerformanceReport& operator=(const PerformanceReport& iOther);
  /// @}
  ~PerformanceReport();

  /// Adds a figure.
  void AddMeasurement(const KORUnicodeString& iName, const Measure& iMeasure);

  /**
   * Adds a duration, 0 for the time being, and measures it: the entry's value becomes the microseconds that the
   * returned object lived. The report has to outlive it.
   *
   * @return a measurement into the entry of that name. A figure that was there before keeps its unit and flag and gets
   * the new value; a nested report that was there before stays as it is.
   */
  VYXInfScopedMeasurement AddScopeDurationMeasurement(const KORUnicodeString& iName);

  /// Adds the memory in use now (VYXInfSystemUtil::GetCurrentMemoryUsage), in bytes.
  void AddCurrentMemoryMeasurement(const KORUnicodeString& iName);

  /// Adds the most memory that was ever in use (VYXInfSystemUtil::GetPeakMemoryUsage), in bytes.
  void AddPeakMemoryMeasurement(const KORUnicodeString& iName);

  /// Adds a deep copy of a report, which may be this one.
  void NestPerformanceReport(const KORUnicodeString& iName, const PerformanceReport& iReport);

  /// The report as a JSON object without white space, entries in the order of their names: a figure as
  /// {"Value":1,"Unit":"number","HigherIsBetter":true} with the units "number", "microseconds" and "bytes", a nested
  /// report as the object of its entries.
  KORUnicodeString DumpToJson();

 private:
  struct Entry {
    explicit Entry(const Measure& iMeasure);
    explicit Entry(const PerformanceReport& iReport);
    Entry(const Entry& iOther);
    Entry(Entry&& ioOther) noexcept;
    ~Entry();

    Measure measure;                            // unused beside a nested report, but there to be measured into
    std::unique_ptr<PerformanceReport> report;  // null for a measure
  };
  Entry& FindOrAdd(const KORUnicodeString& iName, const Measure& iMeasure);
  JSON::JOStream ToJson() const;

  std::map<KORUnicodeString, Entry> _entries;
};
