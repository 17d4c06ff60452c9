#pragma once

#include <mutex>

namespace VYX::Os {

#if defined(_WIN32)

/// A lock for one thread at a time, not recursive, that is there before any code of the program runs and needs no
/// destruction. A standard BasicLockable.
class Lock {
 public:
  constexpr Lock() noexcept = default;
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;

  void lock() noexcept;
  void unlock() noexcept;

 private:
  void* _state = nullptr;
};

#else

using Lock = std::mutex;

#endif

}  // namespace VYX::Os
