#include "platform/os/fork_hooks.h"

#include <pthread.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>

#if !defined(__unix__)
#error "this source is for POSIX hosts"
#endif

namespace VYX::Os {

namespace {

struct Hooks {
  ForkRank rank;
  void (*before)();
  void (*after)();
};

constexpr std::size_t kMaxHooks = 8;
constinit Hooks gHooks[kMaxHooks]{};
constinit std::size_t gCount = 0;

void RunBefore() {
  for (std::size_t i = 0; i < gCount; ++i) {
    gHooks[i].before();
  }
}

void RunAfter() {
  for (std::size_t i = gCount; i > 0; --i) {
    gHooks[i - 1].after();
  }
}

}  // namespace

void RegisterForkHooks(ForkRank iRank, void (*iBefore)(), void (*iAfter)()) noexcept {
  if (gCount == kMaxHooks) {
    std::abort();
  }
  if (gCount == 0) {
    static_cast<void>(::pthread_atfork(&RunBefore, &RunAfter, &RunAfter));
  }
  gHooks[gCount++] = {iRank, iBefore, iAfter};
  std::stable_sort(gHooks, gHooks + gCount,
                   [](const Hooks& iLeft, const Hooks& iRight) { return iLeft.rank < iRight.rank; });
}

}  // namespace VYX::Os
