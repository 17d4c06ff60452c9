#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/os/status.h"

namespace VYX::Os {

/// How the host's event log ranks an event.
enum class EventKind : std::uint8_t { Error, Warning, Information };

/// Writes to the event log that the host keeps for all programs. Used by one thread at a time.
class EventLog {
 public:
  EventLog() noexcept = default;
  ~EventLog() { Close(); }
  EventLog(const EventLog&) = delete;
  EventLog& operator=(const EventLog&) = delete;

  /// Whether the host has such a log; without one every call fails.
  static bool IsAvailable() noexcept;

  /// Opens the log for the events of a source, a name that the log shows beside them; closes it where it was open.
  Status Open(const std::string& iSource);

  bool IsOpen() const noexcept { return _log != nullptr; }

  /// Writes one event. What exceeds the longest text of an event, 31,839 UTF-16 units, is cut off.
  Status Write(EventKind iKind, std::string_view iText);

  void Close() noexcept;

 private:
  void* _log = nullptr;
};

}  // namespace VYX::Os
