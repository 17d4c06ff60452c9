#include "platform/os/datagram_socket.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <utility>

#include "platform/os/posix/system_calls.h"

#if !defined(__unix__)
#error "this source is for POSIX hosts"
#endif

namespace VYX::Os {

bool DatagramSocket::IsAvailable() noexcept {
  return true;
}

Status DatagramSocket::Connect(const std::string& iPath) {
  Close();
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (iPath.empty() || iPath.size() >= sizeof address.sun_path) {
    return Failure::BadName();
  }
  std::memcpy(address.sun_path, iPath.data(), iPath.size());
  _socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (_socket < 0) {
    return Status::OfLastCall();
  }
  if (::connect(_socket, static_cast<const sockaddr*>(static_cast<const void*>(&address)), sizeof address) != 0) {
    const Status status = Status::OfLastCall();
    Close();
    return status;
  }
  return Status();
}

Status DatagramSocket::Send(std::string_view iData) {
  const ssize_t sent = Posix::Uninterrupted([&] { return ::send(_socket, iData.data(), iData.size(), MSG_NOSIGNAL); });
  return sent == static_cast<ssize_t>(iData.size()) ? Status() : Status::OfLastCall();
}

void DatagramSocket::Close() noexcept {
  if (_socket >= 0) {
    ::close(std::exchange(_socket, -1));
  }
}

}  // namespace VYX::Os
