#pragma once

#include <cstdint>

namespace VYX::Os {

/// A counter that only grows, in ticks of MonotonicFrequency() a second; 0 stands for a clock that cannot be read.
std::int64_t MonotonicCounter() noexcept;

/// Ticks of the monotonic counter in one second.
std::int64_t MonotonicFrequency() noexcept;

/// A moment: whole seconds since 1970-01-01 00:00:00 UTC (negative before it) and the nanoseconds 0..999,999,999 after.
struct WallTime {
  std::int64_t seconds = 0;
  std::int32_t nanoseconds = 0;
};

/// The present moment by the host's wall clock.
WallTime CurrentWallTime() noexcept;

/// A moment as a calendar and a clock show it in one time zone.
struct CalendarTime {
  std::int64_t year = 1970;
  int month = 1;      ///< 1..12
  int day = 1;        ///< 1..31
  int hour = 0;       ///< 0..23
  int minute = 0;     ///< 0..59
  int second = 0;     ///< 0..60
  int weekday = 4;    ///< 0 Sunday .. 6 Saturday
  int dayOfYear = 1;  ///< 1..366
  int utcOffset = 0;  ///< seconds east of UTC
  bool isSummerTime = false;
  char zone[16] = "UTC";  ///< abbreviation of the time zone, cut where it is longer
};

/// Breaks the moment down by the host's time zone. False when the host's calendar does not reach that far.
bool ToLocalCalendar(std::int64_t iUnixSeconds, CalendarTime& oCalendar) noexcept;

/// Breaks the moment down by UTC in the Gregorian calendar, for every 64-bit number of seconds.
void ToUtcCalendar(std::int64_t iUnixSeconds, CalendarTime& oCalendar) noexcept;

}  // namespace VYX::Os
