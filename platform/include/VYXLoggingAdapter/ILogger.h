#pragma once

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

 protected:
  ILogger() = default;
  ILogger(const ILogger&) = default;
  ILogger& operator=(const ILogger&) = default;
};

}  // namespace VYX::Logging
