#include "platform/os/process_identity.h"

#include <atomic>

#include "platform/os/windows/handle.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os {
namespace {

using Windows::Handle;

constexpr std::uint64_t kNever = ~std::uint64_t{0};

std::uint64_t StartTimeOf(DWORD iThread) noexcept {
  const Handle thread(::OpenThread(THREAD_QUERY_LIMITED_INFORMATION, FALSE, iThread));
  FILETIME start = {};
  FILETIME end = {};
  FILETIME kernel = {};
  FILETIME user = {};
  if (!thread.IsOpen() || ::GetThreadTimes(thread.Get(), &start, &end, &kernel, &user) == 0) {
    return kNever;
  }
  return std::uint64_t{start.dwHighDateTime} << 32 | start.dwLowDateTime;
}

// The host keeps no record of the thread that runs main: it is the one that has been there longest.
std::uint32_t FindOldestThread() noexcept {
  const HANDLE taken = ::CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  if (taken == INVALID_HANDLE_VALUE) {
    return 0;
  }
  const Handle snapshot(taken);
  const DWORD process = ::GetCurrentProcessId();
  THREADENTRY32 entry = {};
  entry.dwSize = sizeof entry;
  std::uint32_t oldest = 0;
  std::uint64_t oldestStart = kNever;
  for (BOOL isThere = ::Thread32First(taken, &entry); isThere != 0; isThere = ::Thread32Next(taken, &entry)) {
    if (entry.th32OwnerProcessID != process) {
      continue;
    }
    const std::uint64_t start = StartTimeOf(entry.th32ThreadID);
    if (start < oldestStart) {
      oldestStart = start;
      oldest = entry.th32ThreadID;
    }
  }
  return oldest;
}

constinit std::atomic<std::uint32_t> gMainThread{0};

}  // namespace

std::int32_t CurrentProcessId() noexcept {
  return static_cast<std::int32_t>(::GetCurrentProcessId());
}

std::uint32_t CurrentThreadId() noexcept {
  return ::GetCurrentThreadId();
}

std::uint32_t MainThreadId() noexcept {
  std::uint32_t thread = gMainThread.load(std::memory_order_relaxed);
  if (thread == 0) {
    thread = FindOldestThread();
    gMainThread.store(thread, std::memory_order_relaxed);
  }
  return thread;
}

}  // namespace VYX::Os
