#include "platform/os/fork_hooks.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os {

void RegisterForkHooks(ForkRank, void (*)(), void (*)()) noexcept {}

}  // namespace VYX::Os
