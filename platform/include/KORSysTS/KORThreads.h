#pragma once

#include <cstdint>

#include "VYXExport.h"

/**
 * The platform's view of threads. Nothing here fails, and every operation may be called from any thread.
 *
 * ```cpp
 * const KORThreads::ThreadId* const main = KORThreads::GetMainThread();
 * KORThreads::CompareThreadId(*main, KORThreads::GetCurrentThreadId());  // 1
 * ```
 */
class VYX_EXPORT KORThreads {
 public:
  /// The platform's number of a thread; 0 is no thread.
  using ThreadId = std::uint32_t;

  /// The calling thread's number.
  static ThreadId GetCurrentThreadId() noexcept;

  /// The number of the thread that runs main; null where the platform has no record of it. Valid as long as the
  /// calling thread.
  static const ThreadId* GetMainThread() noexcept;

  /// 1 when both numbers denote the same thread, else 0.
  static int CompareThreadId(ThreadId iLeft, ThreadId iRight) noexcept { return iLeft == iRight ? 1 : 0; }
};
