// The Gregorian calendar by arithmetic, the same on every host.

#include "platform/os/clock.h"

namespace VYX::Os {
namespace {

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

}  // namespace

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
