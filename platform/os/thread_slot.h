#pragma once

#include <cstdint>

namespace VYX::Os {

/// One pointer per thread, null at first, with a callback that runs on the pointer when its thread ends.
///
/// It stands in for a thread_local with a destructor. The callback is not run for a null pointer. Destroying the slot
/// runs the callback on the calling thread's pointer and forgets the pointers of all other threads.
class ThreadSlot {
 public:
  using Destructor = void (*)(void*);

  explicit ThreadSlot(Destructor iDestructor) noexcept;
  ~ThreadSlot();
  ThreadSlot(const ThreadSlot&) = delete;
  ThreadSlot& operator=(const ThreadSlot&) = delete;

  /// The calling thread's pointer; null before the first Set and where the host had no slot left.
  void* Get() const noexcept;

  /// Keeps the pointer for the calling thread without touching the former one. False when the host refuses: the
  /// pointer then still belongs to the caller.
  bool Set(void* iValue) noexcept;

 private:
  Destructor _destructor;
  std::uintptr_t _key = 0;
  bool _isUsable = false;
};

}  // namespace VYX::Os
