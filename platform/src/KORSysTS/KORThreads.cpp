#include "KORSysTS/KORThreads.h"

#include "platform/os/process_identity.h"

KORThreads::ThreadId KORThreads::GetCurrentThreadId() noexcept {
  return VYX::Os::CurrentThreadId();
}

const KORThreads::ThreadId* KORThreads::GetMainThread() noexcept {
  static const ThreadId mainThread = VYX::Os::MainThreadId();
  return mainThread == 0 ? nullptr : &mainThread;
}
