#include "platform/os/process_identity.h"

#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

#if !defined(__linux__)
#error "this source is for Linux"
#endif

namespace VYX::Os {
namespace {

thread_local std::uint32_t tThreadId = 0;

std::uint32_t AskThreadId() noexcept {
  return static_cast<std::uint32_t>(syscall(SYS_gettid));
}

// The one thread of a forked child carries the number that its parent's thread had.
void ForgetThreadId() noexcept {
  tThreadId = 0;
}

// Until static objects are made it says no, and the number is asked for each time.
const bool gIsForkNoticed = pthread_atfork(nullptr, nullptr, ForgetThreadId) == 0;

}  // namespace

std::int32_t CurrentProcessId() noexcept {
  return getpid();
}

std::uint32_t CurrentThreadId() noexcept {
  if (tThreadId != 0) {
    return tThreadId;
  }
  const std::uint32_t threadId = AskThreadId();
  if (gIsForkNoticed) {
    tThreadId = threadId;
  }
  return threadId;
}

std::uint32_t MainThreadId() noexcept {
  return static_cast<std::uint32_t>(getpid());
}

}  // namespace VYX::Os
