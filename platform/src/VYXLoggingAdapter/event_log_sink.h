#pragma once

#include <string>
#include <utility>

#include "platform/os/event_log.h"
#include "platform/src/VYXLoggingAdapter/fork_safe_mutex.h"
#include "platform/src/VYXLoggingAdapter/sink.h"
#include "platform/src/VYXLoggingAdapter/trouble.h"

namespace VYX::Logging {

/// Writes each line as one event of the host's event log, under the name of a source. The log is opened again with the
/// next line where it fails.
class EventLogSink : public Sink {
 public:
  EventLogSink(std::string iSource, LineFormat iFormat, Filter iFilter)
      : Sink(std::move(iFormat), std::move(iFilter)), _source(std::move(iSource)) {}

 private:
  void WriteLine(const Record& iRecord, std::string_view iLine) override;
  Os::Status Send(int iLevel, std::string_view iText);

  const std::string _source;
  ForkSafeMutex _lock;
  Os::EventLog _log;
  Trouble _trouble;
};

}  // namespace VYX::Logging
