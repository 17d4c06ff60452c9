#pragma once

#include "platform/os/lock.h"

namespace VYX::Logging {

class ForkSafeMutexAccess;

/// A mutex that is free in a forked child: the process forks only while no thread holds one. A standard BasicLockable;
/// the objects it guards must not take another of its kind while it is held.
class ForkSafeMutex {
 public:
  ForkSafeMutex();
  ~ForkSafeMutex();
  ForkSafeMutex(const ForkSafeMutex&) = delete;
  ForkSafeMutex& operator=(const ForkSafeMutex&) = delete;

  void lock() { _mutex.lock(); }
  void unlock() { _mutex.unlock(); }

 private:
  friend class ForkSafeMutexAccess;

  Os::Lock _mutex;
  ForkSafeMutex* _previous = nullptr;
  ForkSafeMutex* _next = nullptr;
};

}  // namespace VYX::Logging
