#include "platform/os/fork_hooks.h"

#include <pthread.h>

#if !defined(__unix__)
#error "this source is for POSIX hosts"
#endif

namespace VYX::Os {

void RegisterForkHooks(void (*iBefore)(), void (*iAfter)()) noexcept {
  static_cast<void>(::pthread_atfork(iBefore, iAfter, iAfter));
}

}  // namespace VYX::Os
