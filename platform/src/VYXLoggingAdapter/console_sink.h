#pragma once

#include "platform/src/VYXLoggingAdapter/sink.h"

namespace VYX::Logging {

/// Writes to the process's standard output, unbuffered, in order with what standard output itself is given.
class ConsoleSink : public Sink {
 public:
  using Sink::Sink;

 private:
  void WriteLine(const Record& iRecord, std::string_view iLine) override;
};

}  // namespace VYX::Logging
