#pragma once

#include <cstdint>

#include "VYXExport.h"

namespace VYX::Logging {

/**
 * The logger of one channel of the logging back end. Every operation may be called from several threads at once.
 *
 * The order of the virtual operations is fixed.
 */
class VYX_EXPORT ILogger {
 public:
  virtual ~ILogger();

  /// True when the back end would drop a message of this level (0 FATAL to 5 TRACE).
  virtual bool IsFiltered(int iLevel) const = 0;

  /// Writes one message. The back end applies its own filter and format; null is written as the empty text.
  virtual void Write(int iLevel, const char* iText) = 0;

  /// Set in the answer of AcceptedLevels when the other bits hold.
  static constexpr std::uint32_t kLevelsKnown = 1U << 31;

  /**
   * Which of the levels 0 to 5 are not filtered at present, one bit a level, with kLevelsKnown; so that the answers of
   * IsFiltered can be kept until the sinks change. 0, the answer of the base, where they cannot.
   */
  virtual std::uint32_t AcceptedLevels() const;

 protected:
  /// @{
  /// For derived classes.
  ILogger() = default;
  ILogger(const ILogger&) = default;
  ILogger& operator=(const ILogger&) = default;
  /// @}
};

}  // namespace VYX::Logging
