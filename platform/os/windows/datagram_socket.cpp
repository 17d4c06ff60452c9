#include "platform/os/datagram_socket.h"

#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

// The host has no local datagram sockets, and no system log that listens on one.
namespace VYX::Os {

bool DatagramSocket::IsAvailable() noexcept {
  return false;
}

Status DatagramSocket::Connect(const std::string&) {
  return Status(ERROR_NOT_SUPPORTED);
}

Status DatagramSocket::Send(std::string_view) {
  return Status(ERROR_NOT_SUPPORTED);
}

void DatagramSocket::Close() noexcept {}

}  // namespace VYX::Os
