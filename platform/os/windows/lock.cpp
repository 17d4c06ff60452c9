#include "platform/os/lock.h"

#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os {
namespace {

// The standard library's mutex has to be initialised by code here; the host's own slim lock is a null pointer.
PSRWLOCK Native(void*& ioState) noexcept {
  static_assert(sizeof(SRWLOCK) == sizeof(void*) && alignof(SRWLOCK) == alignof(void*));
  return reinterpret_cast<PSRWLOCK>(&ioState);
}

}  // namespace

void Lock::lock() noexcept {
  ::AcquireSRWLockExclusive(Native(_state));
}

void Lock::unlock() noexcept {
  ::ReleaseSRWLockExclusive(Native(_state));
}

}  // namespace VYX::Os
