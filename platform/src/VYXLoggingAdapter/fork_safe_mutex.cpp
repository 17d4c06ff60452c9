#include "platform/src/VYXLoggingAdapter/fork_safe_mutex.h"

#include <mutex>
#include <type_traits>

#include "platform/os/fork_hooks.h"

namespace VYX::Logging {

// The mutexes that exist, in a list of their own.
class ForkSafeMutexAccess {
 public:
  void Add(ForkSafeMutex& ioMutex) {
    const std::lock_guard guard(_lock);
    ioMutex._next = _first;
    if (_first != nullptr) {
      _first->_previous = &ioMutex;
    }
    _first = &ioMutex;
  }

  void Remove(ForkSafeMutex& ioMutex) {
    const std::lock_guard guard(_lock);
    (ioMutex._previous == nullptr ? _first : ioMutex._previous->_next) = ioMutex._next;
    if (ioMutex._next != nullptr) {
      ioMutex._next->_previous = ioMutex._previous;
    }
  }

  void LockAll() {
    _lock.lock();
    for (ForkSafeMutex* mutex = _first; mutex != nullptr; mutex = mutex->_next) {
      mutex->lock();
    }
  }
  void UnlockAll() {
    for (ForkSafeMutex* mutex = _first; mutex != nullptr; mutex = mutex->_next) {
      mutex->unlock();
    }
    _lock.unlock();
  }

 private:
  Os::Lock _lock;
  ForkSafeMutex* _first = nullptr;
};

namespace {

// There from the start and never destroyed: sinks may die while static objects do.
constinit ForkSafeMutexAccess gMutexes;
static_assert(std::is_trivially_destructible_v<ForkSafeMutexAccess>);

[[maybe_unused]] const bool gIsForkNoticed =
    (Os::RegisterForkHooks(
         Os::ForkRank::Middle, [] { gMutexes.LockAll(); }, [] { gMutexes.UnlockAll(); }),
     true);

}  // namespace

ForkSafeMutex::ForkSafeMutex() {
  gMutexes.Add(*this);
}

ForkSafeMutex::~ForkSafeMutex() {
  gMutexes.Remove(*this);
}

}  // namespace VYX::Logging
