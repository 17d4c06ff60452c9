#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "platform/src/VYXLoggingAdapter/filter.h"
#include "platform/src/VYXLoggingAdapter/line_format.h"
#include "platform/src/VYXLoggingAdapter/record.h"
#include "platform/src/VYXLoggingAdapter/trouble.h"

namespace VYX::Logging {

/**
 * Where records go. The base filters and makes the line; a sink writes it.
 *
 * May be used by several threads at once. A sink that fails says so once on standard error and goes on trying.
 */
class Sink {
 public:
  Sink(LineFormat iFormat, Filter iFilter) : _format(std::move(iFormat)), _filter(std::move(iFilter)) {}
  virtual ~Sink() = default;
  Sink(const Sink&) = delete;
  Sink& operator=(const Sink&) = delete;

  bool Accepts(int iLevel, std::string_view iChannel) const { return _filter.Accepts(iLevel, iChannel); }

  /// Writes the record, filter or not.
  void Write(const Record& iRecord) noexcept;

  /// Hands what is still held back to the operating system.
  virtual void Flush() noexcept {}

 private:
  /// Writes one line, line feed included.
  virtual void WriteLine(const Record& iRecord, std::string_view iLine) = 0;

  LineFormat _format;
  Filter _filter;
  Trouble _shortage;  // of memory
};

}  // namespace VYX::Logging
