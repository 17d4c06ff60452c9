#pragma once

#include <atomic>
#include <string_view>

namespace VYX::Logging {

/// Reports the trouble of one sink: once on standard error when it begins, and not again until a write has succeeded.
/// May be used by several threads at once.
class Trouble {
 public:
  /// Something failed; says so unless that is known.
  void Report(std::string_view iWhat, std::string_view iCause) noexcept;

  /// A write succeeded.
  void Clear() noexcept {
    if (_isReported.load(std::memory_order_relaxed)) {
      _isReported.store(false, std::memory_order_relaxed);
    }
  }

 private:
  std::atomic<bool> _isReported{false};
};

}  // namespace VYX::Logging
