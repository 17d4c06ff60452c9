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

}  // namespace VYX::Os
