#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>

#include "Quillbase/JSON/JIStream.h"
#include "VYXInfProfile.h"
#include "VYXInfSystemUtil.h"
#include "support/settled_clock.h"

namespace VYX::Test {
namespace {

using Unit = PerformanceReport::MeasureUnit;

TEST(PerformanceReport, RendersExactJson) {
  PerformanceReport sub;
  sub.AddMeasurement("Peak", {4096, Unit::Bytes, false});
  PerformanceReport report;
  report.NestPerformanceReport("Sub", sub);
  report.AddMeasurement("Load", {1500, Unit::Microseconds, false});
  EXPECT_EQ(report.DumpToJson(),
            "{\"Load\":{\"Value\":1500,\"Unit\":\"microseconds\",\"HigherIsBetter\":false},"
            "\"Sub\":{\"Peak\":{\"Value\":4096,\"Unit\":\"bytes\",\"HigherIsBetter\":false}}}");
}

TEST(PerformanceReport, EmptyReportsAreEmptyObjects) {
  PerformanceReport report;
  EXPECT_EQ(report.DumpToJson(), "{}");
  report.NestPerformanceReport("none", PerformanceReport());
  EXPECT_EQ(report.DumpToJson(), "{\"none\":{}}");
}

TEST(PerformanceReport, UnitsHaveTheirWords) {
  struct Row {
    std::int32_t unit;
    const char* word;
  };
  const Row kRows[] = {{0, "number"}, {1, "microseconds"}, {2, "bytes"}, {3, ""}, {-1, ""}};
  for (const Row& row : kRows) {
    PerformanceReport report;
    report.AddMeasurement("a", {UINT64_MAX, static_cast<Unit>(row.unit), true});
    const KORUnicodeString expected = KORUnicodeString("{\"a\":{\"Value\":18446744073709551615,\"Unit\":\"") +
                                      row.word + "\",\"HigherIsBetter\":true}}";
    EXPECT_EQ(report.DumpToJson(), expected) << "unit " << row.unit;
  }
}

TEST(PerformanceReport, NamesAreOrderedAndEscaped) {
  PerformanceReport report;
  report.AddMeasurement("b\"", {2, Unit::Number, false});
  report.AddMeasurement("B", {1, Unit::Number, false});
  report.AddMeasurement("\xC3\xA9", {3, Unit::Number, false});
  EXPECT_EQ(report.DumpToJson(),
            "{\"B\":{\"Value\":1,\"Unit\":\"number\",\"HigherIsBetter\":false},"
            "\"b\\\"\":{\"Value\":2,\"Unit\":\"number\",\"HigherIsBetter\":false},"
            "\"\xC3\xA9\":{\"Value\":3,\"Unit\":\"number\",\"HigherIsBetter\":false}}");
}

TEST(PerformanceReport, TheFirstEntryOfANameStays) {
  PerformanceReport nested;
  nested.AddMeasurement("x", {9, Unit::Number, false});
  PerformanceReport report;
  report.AddMeasurement("a", {1, Unit::Number, true});
  report.AddMeasurement("a", {2, Unit::Bytes, false});
  report.AddCurrentMemoryMeasurement("a");
  report.AddPeakMemoryMeasurement("a");
  report.NestPerformanceReport("a", nested);
  EXPECT_EQ(report.DumpToJson(), "{\"a\":{\"Value\":1,\"Unit\":\"number\",\"HigherIsBetter\":true}}");

  report.NestPerformanceReport("n", nested);
  report.AddMeasurement("n", {3, Unit::Number, false});
  report.NestPerformanceReport("n", PerformanceReport());
  EXPECT_EQ(report.DumpToJson(),
            "{\"a\":{\"Value\":1,\"Unit\":\"number\",\"HigherIsBetter\":true},"
            "\"n\":{\"x\":{\"Value\":9,\"Unit\":\"number\",\"HigherIsBetter\":false}}}");
}

TEST(PerformanceReport, ScopesAreMeasuredIntoTheirEntry) {
  SettledClock clock({10, 0});
  PerformanceReport report;
  {
    const VYXInfScopedMeasurement duration = report.AddScopeDurationMeasurement("Load");
    // Later entries do not move the one that is being measured.
    for (int number = 0; number < 100; ++number) {
      report.AddMeasurement(KORUnicodeString(std::to_string(number)), {0, Unit::Number, false});
    }
    clock.Set({10, 1'500'000});
  }
  EXPECT_GE(report.DumpToJson().SearchSubString(
                "\"Load\":{\"Value\":1500,\"Unit\":\"microseconds\",\"HigherIsBetter\":false}"),
            0);
}

TEST(PerformanceReport, AnExistingMeasureGetsTheTimeAndKeepsTheRest) {
  SettledClock clock({10, 0});
  PerformanceReport report;
  report.AddMeasurement("a", {1, Unit::Bytes, true});
  {
    const VYXInfScopedMeasurement duration = report.AddScopeDurationMeasurement("a");
    clock.Set({12, 0});
  }
  EXPECT_EQ(report.DumpToJson(), "{\"a\":{\"Value\":2000000,\"Unit\":\"bytes\",\"HigherIsBetter\":true}}");
}

TEST(PerformanceReport, AScopeNamedLikeANestedReportMeasuresIntoNothing) {
  PerformanceReport nested;
  nested.AddMeasurement("x", {9, Unit::Number, false});
  PerformanceReport report;
  report.NestPerformanceReport("a", nested);
  const KORUnicodeString before = report.DumpToJson();
  { const VYXInfScopedMeasurement duration = report.AddScopeDurationMeasurement("a"); }
  EXPECT_EQ(report.DumpToJson(), before);
}

TEST(PerformanceReport, CopiesAreDeep) {
  PerformanceReport nested;
  nested.AddMeasurement("x", {9, Unit::Number, false});
  auto source = std::make_optional<PerformanceReport>();
  source->NestPerformanceReport("n", nested);
  nested.AddMeasurement("y", {1, Unit::Number, false});
  PerformanceReport copy(*source);
  PerformanceReport assigned;
  assigned.AddMeasurement("gone", {1, Unit::Number, false});
  assigned = *source;
  const KORUnicodeString expected = source->DumpToJson();
  source->AddMeasurement("later", {1, Unit::Number, false});
  source.reset();
  EXPECT_EQ(expected, "{\"n\":{\"x\":{\"Value\":9,\"Unit\":\"number\",\"HigherIsBetter\":false}}}");
  EXPECT_EQ(copy.DumpToJson(), expected);
  EXPECT_EQ(assigned.DumpToJson(), expected);
}

TEST(PerformanceReport, MayBeNestedIntoItselfAndAssignedToItself) {
  PerformanceReport report;
  report.AddMeasurement("a", {1, Unit::Number, false});
  report.NestPerformanceReport("b", report);
  const PerformanceReport& same = report;
  report = same;
  EXPECT_EQ(report.DumpToJson(),
            "{\"a\":{\"Value\":1,\"Unit\":\"number\",\"HigherIsBetter\":false},"
            "\"b\":{\"a\":{\"Value\":1,\"Unit\":\"number\",\"HigherIsBetter\":false}}}");
}

TEST(PerformanceReport, MemoryFiguresAreBytesOfTheProcess) {
  PerformanceReport report;
  report.AddCurrentMemoryMeasurement("current");
  report.AddPeakMemoryMeasurement("peak");
  const KORUnicodeString text = report.DumpToJson();
  EXPECT_EQ(text.WildMatch("{\"current\":{\"Value\":*,\"Unit\":\"bytes\",\"HigherIsBetter\":false},"
                           "\"peak\":{\"Value\":*,\"Unit\":\"bytes\",\"HigherIsBetter\":false}}",
                           '*', '\\'),
            1)
      << text;
  EXPECT_LT(text.SearchSubString("\"Value\":0,"), 0) << text;
}

TEST(PerformanceReport, WhatItRendersCanBeReadBack) {
  PerformanceReport report;
  for (int depth = 0; depth < 200; ++depth) {
    PerformanceReport outer;
    outer.AddMeasurement("v", {static_cast<std::uint64_t>(depth), Unit::Number, false});
    outer.NestPerformanceReport("inner", report);
    report = outer;
  }
  JSON::JIStream stream;
  EXPECT_TRUE(stream.Parse(report.DumpToJson(), true));
  EXPECT_EQ(stream.Size(), 2U);
}

}  // namespace
}  // namespace VYX::Test
