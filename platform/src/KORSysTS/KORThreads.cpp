#include "KORSysTS/KORThreads.h"

#include <type_traits>

#include "platform/os/process_identity.h"

KORThreads::ThreadId KORThreads::GetCurrentThreadId() noexcept {
  return VYX::Os::CurrentThreadId();
}

const KORThreads::ThreadId* KORThreads::GetMainThread() noexcept {
  // Asked each time, because a forked child has another main thread; one copy a thread, so that none writes another's.
  static_assert(std::is_trivially_destructible_v<ThreadId>);
  thread_local ThreadId mainThread = 0;
  mainThread = VYX::Os::MainThreadId();
  return mainThread == 0 ? nullptr : &mainThread;
}
