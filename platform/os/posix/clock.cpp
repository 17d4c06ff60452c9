#include "platform/os/clock.h"

#include <time.h>

#include <cstring>
#include <mutex>

#include "platform/os/fork_hooks.h"
#include "platform/os/posix/system_calls.h"

#if !defined(__unix__)
#error "this source is for POSIX hosts"
#endif

namespace VYX::Os {
namespace {

constexpr std::int64_t kTicksPerSecond = 10'000'000;
constexpr std::int64_t kNanosecondsPerTick = 100;
constexpr std::int64_t kSecondsPerDay = 86'400;
constexpr std::int64_t kDaysPerEra = 146'097;              // 400 Gregorian years
constexpr std::int64_t kDaysFromEraToUnixEpoch = 719'468;  // from 0000-03-01

std::int64_t FloorDivide(std::int64_t iNumber, std::int64_t iDivisor) noexcept {
  return iNumber / iDivisor - (iNumber % iDivisor < 0 ? 1 : 0);
}

bool IsLeapYear(std::int64_t iYear) noexcept {
  return iYear % 4 == 0 && (iYear % 100 != 0 || iYear % 400 == 0);
}

// Counts years from the first of March, so that the leap day is a year's last.
void SetDate(std::int64_t iUnixDay, CalendarTime& oCalendar) noexcept {
  const std::int64_t day = iUnixDay + kDaysFromEraToUnixEpoch;
  const std::int64_t era = FloorDivide(day, kDaysPerEra);
  const int dayOfEra = static_cast<int>(day - era * kDaysPerEra);
  const int yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
  const int dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const int monthFromMarch = (5 * dayOfYear + 2) / 153;
  const bool isNextYear = monthFromMarch >= 10;
  oCalendar.day = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
  oCalendar.month = isNextYear ? monthFromMarch - 9 : monthFromMarch + 3;
  oCalendar.year = era * 400 + yearOfEra + (isNextYear ? 1 : 0);
  const int daysToMarch = IsLeapYear(oCalendar.year) ? 60 : 59;
  oCalendar.dayOfYear = isNextYear ? dayOfYear - 305 : dayOfYear + daysToMarch + 1;
}

void SetZone(const char* iZone, CalendarTime& oCalendar) noexcept {
  std::strncpy(oCalendar.zone, iZone == nullptr ? "" : iZone, sizeof(oCalendar.zone) - 1);
  oCalendar.zone[sizeof(oCalendar.zone) - 1] = '\0';
}

// The run-time's calendar has a lock of its own, which a forked child would find taken when another thread was inside;
// this one is free in the child.
constinit std::mutex gCalendarLock;

[[maybe_unused]] const bool gIsForkNoticed =
    (RegisterForkHooks(
         ForkRank::Inner, [] { gCalendarLock.lock(); }, [] { gCalendarLock.unlock(); }),
     true);

}  // namespace

std::int64_t MonotonicCounter() noexcept {
  timespec now{};
  if (Posix::Calls().ClockGetTime(CLOCK_MONOTONIC, &now) != 0) {
    return 0;
  }
  return static_cast<std::int64_t>(now.tv_sec) * kTicksPerSecond + now.tv_nsec / kNanosecondsPerTick;
}

std::int64_t MonotonicFrequency() noexcept {
  return kTicksPerSecond;
}

WallTime CurrentWallTime() noexcept {
  timespec now{};
  if (Posix::Calls().ClockGetTime(CLOCK_REALTIME, &now) != 0) {
    return {};
  }
  return {now.tv_sec, static_cast<std::int32_t>(now.tv_nsec)};
}

bool ToLocalCalendar(std::int64_t iUnixSeconds, CalendarTime& oCalendar) noexcept {
  const time_t seconds = iUnixSeconds;
  tm broken{};
  const std::lock_guard guard(gCalendarLock);
  if (localtime_r(&seconds, &broken) == nullptr) {
    return false;
  }
  oCalendar.year = std::int64_t{broken.tm_year} + 1900;
  oCalendar.month = broken.tm_mon + 1;
  oCalendar.day = broken.tm_mday;
  oCalendar.hour = broken.tm_hour;
  oCalendar.minute = broken.tm_min;
  oCalendar.second = broken.tm_sec;
  oCalendar.weekday = broken.tm_wday;
  oCalendar.dayOfYear = broken.tm_yday + 1;
  oCalendar.utcOffset = static_cast<int>(broken.tm_gmtoff);
  oCalendar.isSummerTime = broken.tm_isdst > 0;
  SetZone(broken.tm_zone, oCalendar);
  return true;
}

void ToUtcCalendar(std::int64_t iUnixSeconds, CalendarTime& oCalendar) noexcept {
  oCalendar = CalendarTime{};
  const std::int64_t unixDay = FloorDivide(iUnixSeconds, kSecondsPerDay);
  const int secondOfDay = static_cast<int>((iUnixSeconds % kSecondsPerDay + kSecondsPerDay) % kSecondsPerDay);
  oCalendar.hour = secondOfDay / 3600;
  oCalendar.minute = secondOfDay / 60 % 60;
  oCalendar.second = secondOfDay % 60;
  oCalendar.weekday = static_cast<int>(((unixDay + 4) % 7 + 7) % 7);
  SetDate(unixDay, oCalendar);
}

}  // namespace VYX::Os
