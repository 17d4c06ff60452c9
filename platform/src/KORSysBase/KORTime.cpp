#include "KORSysBase/KORTime.h"

#include <charconv>
#include <ostream>
#include <string>
#include <string_view>

#include "platform/os/clock.h"

namespace {

using VYX::Os::CalendarTime;

constexpr std::string_view kWeekdays[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
constexpr std::string_view kMonths[] = {"January", "February", "March",     "April",   "May",      "June",
                                        "July",    "August",   "September", "October", "November", "December"};

// A calendar week of ISO 8601: it belongs to the year that holds its Thursday.
struct IsoWeek {
  std::int64_t year;
  int week;
};

bool IsLeapYear(std::int64_t iYear) {
  return (iYear % 4 == 0 && iYear % 100 != 0) || iYear % 400 == 0;
}

int MondayBasedWeekday(const CalendarTime& iTime) {
  return (iTime.weekday + 6) % 7;
}

// Weeks of a year that begins on January 1st of that weekday (0 Monday).
int WeeksOfYear(int iFirstWeekday, bool iIsLeapYear) {
  return iFirstWeekday == 3 || (iIsLeapYear && iFirstWeekday == 2) ? 53 : 52;
}

IsoWeek ToIsoWeek(const CalendarTime& iTime) {
  const int week = (iTime.dayOfYear - (MondayBasedWeekday(iTime) + 1) + 10) / 7;
  const int firstWeekday = ((MondayBasedWeekday(iTime) - (iTime.dayOfYear - 1)) % 7 + 7) % 7;
  if (week < 1) {
    const bool wasLeapYear = IsLeapYear(iTime.year - 1);
    const int formerFirst = ((firstWeekday - (wasLeapYear ? 366 : 365)) % 7 + 7) % 7;
    return {iTime.year - 1, WeeksOfYear(formerFirst, wasLeapYear)};
  }
  if (week > WeeksOfYear(firstWeekday, IsLeapYear(iTime.year))) {
    return {iTime.year + 1, 1};
  }
  return {iTime.year, week};
}

class Formatter {
 public:
  Formatter(const CalendarTime& iTime, std::int64_t iUnixSeconds) : _time(iTime), _unixSeconds(iUnixSeconds) {}

  std::string Format(std::string_view iFormat) {
    for (std::size_t i = 0; i < iFormat.size(); ++i) {
      if (iFormat[i] != '%' || i + 1 == iFormat.size()) {
        _text.push_back(iFormat[i]);
      } else if (!AddDatePart(iFormat[i + 1]) && !AddTimePart(iFormat[i + 1]) && !AddOther(iFormat[i + 1])) {
        _text.append(iFormat.substr(i, 2));
        ++i;
      } else {
        ++i;
      }
    }
    return std::move(_text);
  }

 private:
  void Add(std::int64_t iNumber, int iWidth, char iFill = '0') {
    char digits[24];
    const bool isNegative = iNumber < 0;
    const auto magnitude = isNegative ? 0 - static_cast<std::uint64_t>(iNumber) : static_cast<std::uint64_t>(iNumber);
    const auto end = std::to_chars(digits, digits + sizeof digits, magnitude).ptr;
    const int length = static_cast<int>(end - digits);
    if (isNegative) {
      _text.push_back('-');
    }
    if (length < iWidth) {
      _text.append(static_cast<std::size_t>(iWidth - length), iFill);
    }
    _text.append(digits, end);
  }

  void AddFormatted(std::string_view iFormat) { _text.append(Formatter(_time, _unixSeconds).Format(iFormat)); }

  bool AddDatePart(char iConversion) {
    switch (iConversion) {
      case 'Y':
        Add(_time.year, 1);
        return true;
      case 'C':
        Add(_time.year / 100, 2);
        return true;
      case 'y':
        Add((_time.year % 100 + 100) % 100, 2);
        return true;
      case 'm':
        Add(_time.month, 2);
        return true;
      case 'd':
        Add(_time.day, 2);
        return true;
      case 'e':
        Add(_time.day, 2, ' ');
        return true;
      case 'j':
        Add(_time.dayOfYear, 3);
        return true;
      case 'a':
        _text.append(Weekday().substr(0, 3));
        return true;
      case 'A':
        _text.append(Weekday());
        return true;
      case 'b':
      case 'h':
        _text.append(Month().substr(0, 3));
        return true;
      case 'B':
        _text.append(Month());
        return true;
      case 'u':
        Add(MondayBasedWeekday(_time) + 1, 1);
        return true;
      case 'w':
        Add(_time.weekday, 1);
        return true;
      case 'U':
        Add((_time.dayOfYear + 6 - _time.weekday) / 7, 2);
        return true;
      case 'W':
        Add((_time.dayOfYear + 6 - MondayBasedWeekday(_time)) / 7, 2);
        return true;
      case 'V':
        Add(ToIsoWeek(_time).week, 2);
        return true;
      case 'G':
        Add(ToIsoWeek(_time).year, 1);
        return true;
      case 'g':
        Add((ToIsoWeek(_time).year % 100 + 100) % 100, 2);
        return true;
      case 'D':
      case 'x':
        AddFormatted("%m/%d/%y");
        return true;
      case 'F':
        AddFormatted("%Y-%m-%d");
        return true;
      default:
        return false;
    }
  }

  bool AddTimePart(char iConversion) {
    switch (iConversion) {
      case 'H':
        Add(_time.hour, 2);
        return true;
      case 'I':
        Add((_time.hour + 11) % 12 + 1, 2);
        return true;
      case 'M':
        Add(_time.minute, 2);
        return true;
      case 'S':
        Add(_time.second, 2);
        return true;
      case 'p':
        _text.append(_time.hour < 12 ? "AM" : "PM");
        return true;
      case 's':
        Add(_unixSeconds, 1);
        return true;
      case 'T':
      case 'X':
        AddFormatted("%H:%M:%S");
        return true;
      case 'R':
        AddFormatted("%H:%M");
        return true;
      case 'r':
        AddFormatted("%I:%M:%S %p");
        return true;
      case 'z':
        AddOffset();
        return true;
      case 'Z':
        _text.append(_time.zone);
        return true;
      default:
        return false;
    }
  }

  bool AddOther(char iConversion) {
    switch (iConversion) {
      case 'c':
        AddFormatted("%a %b %e %H:%M:%S %Y");
        return true;
      case 'n':
        _text.push_back('\n');
        return true;
      case 't':
        _text.push_back('\t');
        return true;
      case '%':
        _text.push_back('%');
        return true;
      default:
        return false;
    }
  }

  void AddOffset() {
    const int minutes = (_time.utcOffset < 0 ? -_time.utcOffset : _time.utcOffset) / 60;
    _text.push_back(_time.utcOffset < 0 ? '-' : '+');
    Add(minutes / 60, 2);
    Add(minutes % 60, 2);
  }

  std::string_view Weekday() const { return kWeekdays[_time.weekday]; }
  std::string_view Month() const { return kMonths[_time.month - 1]; }

  const CalendarTime& _time;
  std::int64_t _unixSeconds;
  std::string _text;
};

}  // namespace

KORTime KORTime::GetCurrentLocalTime() noexcept {
  const VYX::Os::WallTime now = VYX::Os::CurrentWallTime();
  return KORTime(now.seconds, now.nanoseconds);
}

KORUnicodeString KORTime::ConvertToString(const KORUnicodeString& iFormat, KORTz iZone) const {
  CalendarTime calendar;
  if (iZone != KORTz::Local || !VYX::Os::ToLocalCalendar(_seconds, calendar)) {
    VYX::Os::ToUtcCalendar(_seconds, calendar);
  }
  return KORUnicodeString(std::string_view(Formatter(calendar, _seconds).Format(iFormat.ToStringView())));
}

std::ostream& operator<<(std::ostream& ioStream, const KORTime& iTime) {
  std::string fraction = std::to_string(iTime._nanoseconds);
  fraction.insert(0, fraction.size() < 9 ? 9 - fraction.size() : 0, '0');
  return ioStream << iTime.ConvertToString("%Y-%m-%dT%H:%M:%S.", KORTz::Utc) << fraction << 'Z';
}
