#pragma once

#include <chrono>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

/**
 * @file
 * Moments and their texts.
 */

/// The time zone in which KORTime shows a moment.
enum class KORTz : std::int32_t {
  Local = 0,  ///< the host's time zone
  Utc = 1     ///< coordinated universal time
};

/**
 * A moment, kept to the nanosecond, and its text.
 *
 * ```cpp
 * KORTime(86400).ConvertToString("%Y-%m-%d %H:%M:%S", KORTz::Utc);  // "1970-01-02 00:00:00"
 * ```
 *
 * A value of 16 bytes; may be used from any thread.
 */
class VYX_EXPORT KORTime {
 public:
  /// 1970-01-01 00:00:00 UTC.
  constexpr KORTime() noexcept = default;

  /// So many seconds after (before, when negative) 1970-01-01 00:00:00 UTC, and nanoseconds of 0 to 999,999,999.
  constexpr explicit KORTime(std::int64_t iUnixSeconds, std::int32_t iNanoseconds = 0) noexcept
      : _seconds(iUnixSeconds), _nanoseconds(iNanoseconds) {}

  /// The present moment.
  static KORTime GetCurrentLocalTime() noexcept;

  /// Whole seconds since 1970-01-01 00:00:00 UTC, negative before.
  constexpr std::int64_t GetUnixSeconds() const noexcept { return _seconds; }
  /// What is beyond the whole seconds, in nanoseconds.
  constexpr std::int32_t GetNanoseconds() const noexcept { return _nanoseconds; }

  /**
   * The moment as text. The format is that of the C library's strftime in its "C" locale, whatever locale is set; an
   * unknown conversion is copied as it stands. A moment that the host's calendar cannot show in the local zone is shown
   * in UTC.
   */
  KORUnicodeString ConvertToString(const KORUnicodeString& iFormat, KORTz iZone = KORTz::Local) const;

  /// The moment of the standard library's clock; exact for the years 1678 to 2261, which 64-bit nanoseconds hold.
  constexpr std::chrono::sys_time<std::chrono::nanoseconds> ToSysTime() const noexcept {
    return std::chrono::sys_seconds(std::chrono::seconds(_seconds)) + std::chrono::nanoseconds(_nanoseconds);
  }

  /// The moment of a time of the standard library's clock.
  static constexpr KORTime FromSysTime(std::chrono::sys_time<std::chrono::nanoseconds> iTime) noexcept {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(iTime);
    return KORTime(seconds.time_since_epoch().count(), static_cast<std::int32_t>((iTime - seconds).count()));
  }

  /// True for the same moment to the nanosecond.
  constexpr bool operator==(const KORTime&) const noexcept = default;
  /// The earlier moment comes first.
  constexpr std::strong_ordering operator<=>(const KORTime&) const noexcept = default;

  /// Writes the moment in UTC in the form of RFC 3339, "2026-01-31T23:59:59.000000001Z".
  friend VYX_EXPORT std::ostream& operator<<(std::ostream& ioStream, const KORTime& iTime);

 private:
  std::int64_t _seconds = 0;
  std::int32_t _nanoseconds = 0;
};

/// Equal moments hash alike.
template <>
struct std::hash<KORTime> {
  /// The hash of a value.
  std::size_t operator()(const KORTime& iTime) const noexcept {
    const auto seconds = static_cast<std::uint64_t>(iTime.GetUnixSeconds());
    return std::hash<std::uint64_t>()(seconds * 1'000'000'007U + static_cast<std::uint32_t>(iTime.GetNanoseconds()));
  }
};
