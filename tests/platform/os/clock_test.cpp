#include "platform/os/clock.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <limits>
#include <string>

#include "support/settled_clock.h"

namespace VYX::Os {
namespace {

TEST(Clock, CounterTicksInHundredsOfNanoseconds) {
  VYX::Test::SettledClock clock({12, 345'678'999});
  EXPECT_EQ(MonotonicFrequency(), 10'000'000);
  EXPECT_EQ(MonotonicCounter(), 123'456'789);
  const WallTime now = CurrentWallTime();
  EXPECT_EQ(now.seconds, 12);
  EXPECT_EQ(now.nanoseconds, 345'678'999);
}

TEST(Clock, CounterNeverGoesBack) {
  std::int64_t former = MonotonicCounter();
  for (int i = 0; i < 1000; ++i) {
    const std::int64_t counter = MonotonicCounter();
    ASSERT_GE(counter, former);
    former = counter;
  }
}

TEST(Clock, UtcCalendarAgreesWithTheHostsOwn) {
  const std::int64_t kMoments[] = {0,
                                   -1,
                                   951'782'400,
                                   951'868'800,
                                   1'709'164'800,
                                   1'735'689'599,
                                   1'735'689'600,
                                   -2'203'891'200,
                                   4'107'542'400,
                                   253'402'300'799,
                                   -62'135'596'800,
                                   -62'167'219'200,
                                   -62'198'755'200,
                                   67'767'976'233'532'799};
  for (const std::int64_t moment : kMoments) {
    SCOPED_TRACE(moment);
    CalendarTime calendar;
    ToUtcCalendar(moment, calendar);
    const std::time_t seconds = moment;
    std::tm expected{};
    ASSERT_NE(gmtime_r(&seconds, &expected), nullptr);
    EXPECT_EQ(calendar.year, std::int64_t{expected.tm_year} + 1900);
    EXPECT_EQ(calendar.month, expected.tm_mon + 1);
    EXPECT_EQ(calendar.day, expected.tm_mday);
    EXPECT_EQ(calendar.hour, expected.tm_hour);
    EXPECT_EQ(calendar.minute, expected.tm_min);
    EXPECT_EQ(calendar.second, expected.tm_sec);
    EXPECT_EQ(calendar.weekday, expected.tm_wday);
    EXPECT_EQ(calendar.dayOfYear, expected.tm_yday + 1);
    EXPECT_EQ(calendar.utcOffset, 0);
    EXPECT_STREQ(calendar.zone, "UTC");
  }
}

TEST(Clock, UtcCalendarReachesTheEndsOfTheRange) {
  CalendarTime calendar;
  ToUtcCalendar(std::numeric_limits<std::int64_t>::max(), calendar);
  EXPECT_EQ(calendar.year, 292'277'026'596);
  EXPECT_EQ(calendar.month, 12);
  EXPECT_EQ(calendar.day, 4);
  EXPECT_EQ(calendar.hour, 15);
  ToUtcCalendar(std::numeric_limits<std::int64_t>::min(), calendar);
  EXPECT_EQ(calendar.year, -292'277'022'657);
  EXPECT_EQ(calendar.month, 1);
  EXPECT_EQ(calendar.day, 27);
}

TEST(Clock, LocalCalendarFollowsTheTimeZone) {
  const char* const former = std::getenv("TZ");
  const std::string kept = former == nullptr ? "" : former;
  ::setenv("TZ", "XYZ-05:30", 1);
  ::tzset();
  CalendarTime calendar;
  EXPECT_TRUE(ToLocalCalendar(0, calendar));
  EXPECT_EQ(calendar.hour, 5);
  EXPECT_EQ(calendar.minute, 30);
  EXPECT_EQ(calendar.utcOffset, 19'800);
  EXPECT_STREQ(calendar.zone, "XYZ");
  if (former == nullptr) {
    ::unsetenv("TZ");
  } else {
    ::setenv("TZ", kept.c_str(), 1);
  }
  ::tzset();
}

TEST(Clock, LocalCalendarRefusesWhatTheHostCannotShow) {
  CalendarTime calendar;
  EXPECT_FALSE(ToLocalCalendar(std::numeric_limits<std::int64_t>::max(), calendar));
}

}  // namespace
}  // namespace VYX::Os
