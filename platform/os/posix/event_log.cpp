#include "platform/os/event_log.h"

#include <cerrno>

#if !defined(__unix__)
#error "this source is for POSIX hosts"
#endif

// The host's log of all programs is reached by a socket (datagram_socket.h).
namespace VYX::Os {

bool EventLog::IsAvailable() noexcept {
  return false;
}

Status EventLog::Open(const std::string&) {
  return Status(ENOTSUP);
}

Status EventLog::Write(EventKind, std::string_view) {
  return Status(ENOTSUP);
}

void EventLog::Close() noexcept {}

}  // namespace VYX::Os
