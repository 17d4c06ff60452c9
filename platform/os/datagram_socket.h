#pragma once

#include <string>
#include <string_view>

#include "platform/os/status.h"

namespace VYX::Os {

/// Sends datagrams to a local socket that another program listens on, such as the system log. Used by one thread at a
/// time.
class DatagramSocket {
 public:
  DatagramSocket() noexcept = default;
  ~DatagramSocket() { Close(); }
  DatagramSocket(const DatagramSocket&) = delete;
  DatagramSocket& operator=(const DatagramSocket&) = delete;

  /// Whether the host has such sockets; without them every call fails.
  static bool IsAvailable() noexcept;

  /// Connects to the socket of a path; closes an earlier connection.
  Status Connect(const std::string& iPath);

  bool IsConnected() const noexcept { return _socket >= 0; }

  /// Sends one datagram; never raises a signal.
  Status Send(std::string_view iData);

  void Close() noexcept;

 private:
  int _socket = -1;
};

}  // namespace VYX::Os
