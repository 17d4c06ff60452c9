#include "platform/src/VYXLoggingAdapter/file_name_pattern.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace {

using VYX::Logging::FileNamePattern;

TEST(FileNamePattern, FillsNumberAndTime) {
  ::setenv("TZ", "UTC", 1);
  ::tzset();
  const struct {
    const char* pattern;
    bool hasNumber;
    const char* name;
  } rows[] = {
      {"app.log", false, "app.log"},
      {"app_%N.log", true, "app_7.log"},
      {"app_%3N.log", true, "app_007.log"},
      {"%Y-%m-%d_%N.log", true, "2019-03-05_7.log"},
      {"app_%H%M%S.log", false, "app_140709.log"},
      {"100%%.log", false, "100%.log"},
      {"100%%N.log", false, "100%N.log"},
      {"end%", false, "end%"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(FileNamePattern(row.pattern).HasNumber(), row.hasNumber) << row.pattern;
    EXPECT_EQ(FileNamePattern(row.pattern).Expand(7, {1551794829, 0}), row.name) << row.pattern;
  }
}

TEST(FileNamePattern, TakesALiteralAsItStands) {
  EXPECT_EQ(FileNamePattern::Literal("50% %N %Y.log").Expand(1, {}), "50% %N %Y.log");
  EXPECT_FALSE(FileNamePattern::Literal("%N").HasNumber());
}

}  // namespace
