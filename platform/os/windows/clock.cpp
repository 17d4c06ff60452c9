#include "platform/os/clock.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <string>

#include "platform/os/windows/process_calls.h"
#include "platform/os/windows/wide_text.h"
#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os {
namespace {

using Windows::gProcessCalls;

constexpr std::int64_t kUnitsPerSecond = 10'000'000;     // the host's clock counts in 100 ns
constexpr std::int64_t kSecondsTo1970 = 11'644'473'600;  // from the host's epoch, 1601
constexpr std::int64_t kLatest = 910'670'515'199;        // seconds to the end of the host's calendar, 30827-12-31
constexpr ULONGLONG kZoneIsGoodFor = 1000;               // milliseconds until a change of the zone is noticed

// The rules of the host's time zone in one year. Asking the host takes it many times what a line of a log may cost.
struct ZoneOfYear {
  WORD year = 0;
  ULONGLONG asked = 0;
  TIME_ZONE_INFORMATION rules = {};
};

SRWLOCK gZoneLock = SRWLOCK_INIT;
constinit ZoneOfYear gZone;

bool ReadZone(WORD iYear, TIME_ZONE_INFORMATION& oRules) noexcept {
  const ULONGLONG now = ::GetTickCount64();
  ::AcquireSRWLockExclusive(&gZoneLock);
  bool isKnown = gZone.year == iYear && now - gZone.asked < kZoneIsGoodFor;
  if (!isKnown && ::GetTimeZoneInformationForYear(iYear, nullptr, &gZone.rules) != 0) {
    gZone.year = iYear;
    gZone.asked = now;
    isKnown = true;
  }
  oRules = gZone.rules;
  ::ReleaseSRWLockExclusive(&gZoneLock);
  return isKnown;
}

std::int64_t UnitsOf(const SYSTEMTIME& iTime) noexcept {
  FILETIME units = {};
  ::SystemTimeToFileTime(&iTime, &units);
  return static_cast<std::int64_t>(std::uint64_t{units.dwHighDateTime} << 32 | units.dwLowDateTime);
}

bool ToSystemTime(std::int64_t iUnixSeconds, SYSTEMTIME& oTime) noexcept {
  const std::uint64_t units = static_cast<std::uint64_t>(iUnixSeconds + kSecondsTo1970) * kUnitsPerSecond;
  const FILETIME time = {static_cast<DWORD>(units), static_cast<DWORD>(units >> 32)};
  return ::FileTimeToSystemTime(&time, &oTime) != 0;
}

// The zone's name, cut between two characters.
void SetZone(const wchar_t* iName, CalendarTime& oCalendar) noexcept {
  std::string name;
  try {
    name = Windows::ToUtf8(iName);
  } catch (const std::exception&) {
    name.clear();
  }
  std::size_t size = std::min(name.size(), sizeof oCalendar.zone - 1);
  while (size > 0 && size < name.size() && (static_cast<unsigned char>(name[size]) & 0xC0) == 0x80) {
    --size;
  }
  std::memcpy(oCalendar.zone, name.data(), size);
  oCalendar.zone[size] = '\0';
}

}  // namespace

std::int64_t MonotonicCounter() noexcept {
  std::int64_t ticks = 0;
  return gProcessCalls.PerformanceCounter(&ticks) ? ticks : 0;
}

std::int64_t MonotonicFrequency() noexcept {
  std::int64_t ticks = 0;
  // One that cannot be read must not be divided by.
  return gProcessCalls.PerformanceFrequency(&ticks) && ticks > 0 ? ticks : 1;
}

WallTime CurrentWallTime() noexcept {
  const std::int64_t units = gProcessCalls.WallTime() - kSecondsTo1970 * kUnitsPerSecond;
  const std::int64_t seconds = units / kUnitsPerSecond - (units % kUnitsPerSecond < 0 ? 1 : 0);
  return {seconds, static_cast<std::int32_t>((units - seconds * kUnitsPerSecond) * 100)};
}

bool ToLocalCalendar(std::int64_t iUnixSeconds, CalendarTime& oCalendar) noexcept {
  SYSTEMTIME utc = {};
  SYSTEMTIME local = {};
  TIME_ZONE_INFORMATION rules = {};
  if (iUnixSeconds < -kSecondsTo1970 || iUnixSeconds > kLatest || !ToSystemTime(iUnixSeconds, utc) ||
      !ReadZone(utc.wYear, rules) || ::SystemTimeToTzSpecificLocalTime(&rules, &utc, &local) == 0) {
    return false;
  }
  const std::int64_t offset = (UnitsOf(local) - UnitsOf(utc)) / kUnitsPerSecond;
  ToUtcCalendar(iUnixSeconds + offset, oCalendar);
  oCalendar.utcOffset = static_cast<int>(offset);
  oCalendar.isSummerTime = offset != -60 * std::int64_t{rules.Bias + rules.StandardBias};
  SetZone(oCalendar.isSummerTime ? rules.DaylightName : rules.StandardName, oCalendar);
  return true;
}

}  // namespace VYX::Os
