#include "platform/src/VYXLoggingAdapter/syslog_sink.h"

#include <iterator>

#include "KORSysBase/KORTime.h"

namespace VYX::Logging {

namespace {

constexpr int kFacilityUser = 1;

// The severities of RFC 3164 for our levels: critical, error, warning, informational, debug, debug.
constexpr int kSeverities[] = {2, 3, 4, 6, 7, 7};

std::string Message(const Record& iRecord, std::string_view iLine) {
  const auto level = static_cast<std::size_t>(iRecord.level);
  const int severity = level < std::size(kSeverities) ? kSeverities[level] : kSeverities[std::size(kSeverities) - 1];
  std::string message = "<" + std::to_string(kFacilityUser * 8 + severity) + ">";
  const KORTime time(iRecord.time.seconds, iRecord.time.nanoseconds);
  message.append(time.ConvertToString("%b %e %H:%M:%S ").ToStringView());
  message.append(iRecord.channel).append("[").append(std::to_string(iRecord.processId)).append("]: ");
  message.append(iLine.substr(0, iLine.size() - 1));
  return message;
}

}  // namespace

Os::Status SyslogSink::Send(std::string_view iMessage) {
  if (!_socket.IsConnected()) {
    const Os::Status status = _socket.Connect(_path);
    if (!status.IsOk()) {
      return status;
    }
  }
  return _socket.Send(iMessage);
}

void SyslogSink::WriteLine(const Record& iRecord, std::string_view iLine) {
  const std::string message = Message(iRecord, iLine);
  const std::lock_guard guard(_lock);
  Os::Status status = Send(message);
  if (!status.IsOk()) {
    // The other end may have been started anew.
    _socket.Close();
    status = Send(message);
  }
  if (!status.IsOk()) {
    _socket.Close();
    _trouble.Report("cannot send to '" + _path + "'", status.Describe());
    return;
  }
  _trouble.Clear();
}

}  // namespace VYX::Logging
