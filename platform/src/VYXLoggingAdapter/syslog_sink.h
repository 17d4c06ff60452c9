#pragma once

#include <string>
#include <utility>

#include "platform/os/datagram_socket.h"
#include "platform/src/VYXLoggingAdapter/fork_safe_mutex.h"
#include "platform/src/VYXLoggingAdapter/sink.h"
#include "platform/src/VYXLoggingAdapter/trouble.h"

namespace VYX::Logging {

/// Sends each line as one message of facility "user" (RFC 3164) to the system log's local socket, which is looked for
/// again with the next line where it is gone.
class SyslogSink : public Sink {
 public:
  SyslogSink(std::string iSocketPath, LineFormat iFormat, Filter iFilter)
      : Sink(std::move(iFormat), std::move(iFilter)), _path(std::move(iSocketPath)) {}

 private:
  void WriteLine(const Record& iRecord, std::string_view iLine) override;
  Os::Status Send(std::string_view iMessage);

  const std::string _path;
  ForkSafeMutex _lock;
  Os::DatagramSocket _socket;
  Trouble _trouble;
};

}  // namespace VYX::Logging
