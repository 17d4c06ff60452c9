#include "platform/src/VYXLoggingAdapter/fork_safe_mutex.h"

#include "platform/os/fork_hooks.h"

namespace VYX::Logging {

// The mutexes that exist, in a list of their own. Never destroyed: sinks may die while static objects do.
class ForkSafeMutexAccess {
 public:
  static ForkSafeMutexAccess& Instance() {
    static ForkSafeMutexAccess* const instance = new ForkSafeMutexAccess;
    return *instance;
  }

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

 private:
  ForkSafeMutexAccess() {
    Os::RegisterForkHooks([] { Instance().LockAll(); }, [] { Instance().UnlockAll(); });
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

  std::mutex _lock;
  ForkSafeMutex* _first = nullptr;
};

ForkSafeMutex::ForkSafeMutex() {
  ForkSafeMutexAccess::Instance().Add(*this);
}

ForkSafeMutex::~ForkSafeMutex() {
  ForkSafeMutexAccess::Instance().Remove(*this);
}

}  // namespace VYX::Logging
