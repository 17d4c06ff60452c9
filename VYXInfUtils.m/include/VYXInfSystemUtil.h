#pragma once

#include <cstdint>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

/**
 * Files, paths, clocks and the running process: static functions only, never instantiated.
 */
class VYX_EXPORT VYXInfSystemUtil {
 public:
  VYXInfSystemUtil() = delete;

  // Clocks and process identity. They write no log line and may be called from any thread.

  /// The performance counter in microseconds, counted from an unspecified moment; it never goes back.
  static std::uint64_t GetTimeInMicroseconds();

  /// Seconds since the first call in the process, minus iOffset: a caller that passes the value of an earlier call gets
  /// the time since that call. The first call answers -iOffset.
  static double GetElapsedSeconds(double iOffset);

  /// The current local time as text, in the format of strftime (KORTime::ConvertToString).
  static KORUnicodeString GetCurrentDateTimeString(const KORUnicodeString& iFormat);

  /// The local time of the first call in the process as text; later calls show the same moment.
  static KORUnicodeString GetStartDateTimeString(const KORUnicodeString& iFormat);

  /// The current process id.
  static int GetPID();

  /// The platform's id of the calling thread.
  static unsigned int GetCurrentThreadId();
};
