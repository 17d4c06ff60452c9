#include "platform/os/temporary_folder.h"

#if !defined(__unix__)
#error "this source is for POSIX hosts"
#endif

namespace VYX::Os {

std::string UsualTemporaryFolder() {
  return "/tmp";
}

}  // namespace VYX::Os
