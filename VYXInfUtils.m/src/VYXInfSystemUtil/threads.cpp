#include "KORSysTS/KORThreads.h"
#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"

bool VYXInfSystemUtil::IsInMainThread() {
  const KORThreads::ThreadId current = KORThreads::GetCurrentThreadId();
  if (const KORThreads::ThreadId* const main = KORThreads::GetMainThread(); main != nullptr) {
    return KORThreads::CompareThreadId(current, *main) != 0;
  }
  VYX::Internal::LogUnlessFiltered(
      WARN,
      "MAIN THREAD info N/A, deducing that this is NOT MAIN THREAD.  (MainThreadId=\?\?,  CurrentThreadId=", current,
      ")");
  return false;
}
