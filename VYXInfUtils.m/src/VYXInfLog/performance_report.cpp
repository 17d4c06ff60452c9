#include <memory>
#include <utility>

#include "Quillbase/JSON/JOStream.h"
#include "VYXInfProfile.h"
#include "VYXInfSystemUtil.h"

namespace {

const char* ToText(PerformanceReport::MeasureUnit iUnit) noexcept {
  switch (iUnit) {
    case PerformanceReport::MeasureUnit::Number:
      return "number";
    case PerformanceReport::MeasureUnit::Microseconds:
      return "microseconds";
    case PerformanceReport::MeasureUnit::Bytes:
      return "bytes";
  }
  return "";
}

JSON::JOStream MeasureToJson(const PerformanceReport::Measure& iMeasure) {
  JSON::JOStream object;
  object.Add("Value", iMeasure.value);
  object.Add("Unit", ToText(iMeasure.unit));
  object.Add("HigherIsBetter", iMeasure.higherIsBetter);
  return object;
}

}  // namespace

PerformanceReport::Entry::Entry(const Measure& iMeasure) : measure(iMeasure) {}
PerformanceReport::Entry::Entry(const PerformanceReport& iReport)
    : measure{}, report(std::make_unique<PerformanceReport>(iReport)) {}
PerformanceReport::Entry::Entry(const Entry& iOther)
    : measure(iOther.measure),
      report(iOther.report == nullptr ? nullptr : std::make_unique<PerformanceReport>(*iOther.report)) {}
PerformanceReport::Entry::Entry(Entry&&) noexcept = default;
PerformanceReport::Entry::~Entry() = default;

PerformanceReport::PerformanceReport() = default;
PerformanceReport::PerformanceReport(const PerformanceReport& iOther) = default;
PerformanceReport::~PerformanceReport() = default;

PerformanceReport& PerformanceReport::operator=(const PerformanceReport& iOther) {
  if (this != &iOther) {
    auto entries = iOther._entries;
    _entries.swap(entries);
  }
  return *this;
}

PerformanceReport::Entry& PerformanceReport::FindOrAdd(const KORUnicodeString& iName, const Measure& iMeasure) {
  return _entries.try_emplace(iName, iMeasure).first->second;
}

void PerformanceReport::AddMeasurement(const KORUnicodeString& iName, const Measure& iMeasure) {
  FindOrAdd(iName, iMeasure);
}

VYXInfScopedMeasurement PerformanceReport::AddScopeDurationMeasurement(const KORUnicodeString& iName) {
  return VYXInfScopedMeasurement(FindOrAdd(iName, {0, MeasureUnit::Microseconds, false}).measure.value);
}

void PerformanceReport::AddCurrentMemoryMeasurement(const KORUnicodeString& iName) {
  const auto bytes = static_cast<std::uint64_t>(VYXInfSystemUtil::GetCurrentMemoryUsage());
  FindOrAdd(iName, {bytes, MeasureUnit::Bytes, false});
}

void PerformanceReport::AddPeakMemoryMeasurement(const KORUnicodeString& iName) {
  const auto bytes = static_cast<std::uint64_t>(VYXInfSystemUtil::GetPeakMemoryUsage());
  FindOrAdd(iName, {bytes, MeasureUnit::Bytes, false});
}

void PerformanceReport::NestPerformanceReport(const KORUnicodeString& iName, const PerformanceReport& iReport) {
  if (_entries.find(iName) == _entries.end()) {
    // Copied before it is inserted: the report may be this one.
    Entry entry(iReport);
    _entries.emplace(iName, std::move(entry));
  }
}

JSON::JOStream PerformanceReport::ToJson() const {
  JSON::JOStream object;
  for (const auto& [name, entry] : _entries) {
    object.Add(name, entry.report == nullptr ? MeasureToJson(entry.measure) : entry.report->ToJson());
  }
  return object;
}

KORUnicodeString PerformanceReport::DumpToJson() {
  return ToJson().Stringify();
}
