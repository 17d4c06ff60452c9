#include "platform/src/VYXLoggingAdapter/event_log_sink.h"

namespace VYX::Logging {

namespace {

// FATAL and ERROR are errors, WARN is a warning, everything else informs.
Os::EventKind KindOf(int iLevel) noexcept {
  constexpr int kError = 1;
  constexpr int kWarn = 2;
  if (iLevel >= 0 && iLevel <= kError) {
    return Os::EventKind::Error;
  }
  return iLevel == kWarn ? Os::EventKind::Warning : Os::EventKind::Information;
}

}  // namespace

Os::Status EventLogSink::Send(int iLevel, std::string_view iText) {
  if (!_log.IsOpen()) {
    if (const Os::Status status = _log.Open(_source); !status.IsOk()) {
      return status;
    }
  }
  return _log.Write(KindOf(iLevel), iText);
}

void EventLogSink::WriteLine(const Record& iRecord, std::string_view iLine) {
  const std::lock_guard guard(_lock);
  const Os::Status status = Send(iRecord.level, iLine.substr(0, iLine.size() - 1));
  if (!status.IsOk()) {
    _log.Close();
    _trouble.Report("cannot write to the event log as '" + _source + "'", status.Describe());
    return;
  }
  _trouble.Clear();
}

}  // namespace VYX::Logging
