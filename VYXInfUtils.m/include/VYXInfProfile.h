#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "VYXExport.h"
#include "VYXInfLog.h"

/**
 * Measures the time of a scope: the counter that it was given holds the microseconds between its construction and its
 * destruction. Used by one thread at a time.
 *
 *     std::uint64_t microseconds = 0;
 *     {
 *       const VYXInfScopedMeasurement measurement(microseconds);
 *       Work();
 *     }
 */
class VYX_EXPORT VYXInfScopedMeasurement {
 public:
  /// Starts measuring into a counter, which must outlive the object and is written when it dies.
  explicit VYXInfScopedMeasurement(std::uint64_t& oTarget);
  ~VYXInfScopedMeasurement();
  VYXInfScopedMeasurement(const VYXInfScopedMeasurement&) = delete;
  VYXInfScopedMeasurement& operator=(const VYXInfScopedMeasurement&) = delete;

 private:
  std::uint64_t& _target;
  std::uint64_t _start;
};

/**
 * Measures the time of a scope and writes it as one line through the default logger when the scope ends:
 *
 *     [PROFILE]  PROFILE:  @ReadFile:<tab><tab>took 0.012345s
 *
 * (with a space at the end). The line is composed only when its level is not filtered. Used by one thread at a time.
 */
class VYX_EXPORT VYXInfProfileTrigger {
 public:
  /**
   * Starts measuring.
   *
   * @param iName what is measured; copied, null is the empty name.
   * @param iLogOnEnd whether the line is written.
   * @param iLevel the line's level.
   */
  VYXInfProfileTrigger(const char* iName, bool iLogOnEnd, const VYXInfLogLevel& iLevel);

  /// Takes the name over and copies the settings, but not the running measurement: the source goes on measuring, under
  /// an empty name, and the new trigger shows the time that the source had reached when it was moved, which is 0.
  VYXInfProfileTrigger(VYXInfProfileTrigger&& ioOther) noexcept;

  ~VYXInfProfileTrigger();
  VYXInfProfileTrigger(const VYXInfProfileTrigger&) = delete;
  VYXInfProfileTrigger& operator=(const VYXInfProfileTrigger&) = delete;

 private:
  std::string _name;
  bool _logOnEnd;
  VYXInfLogLevel _level;
  std::uint64_t _elapsed = 0;
  std::optional<VYXInfScopedMeasurement> _measurement;
};
