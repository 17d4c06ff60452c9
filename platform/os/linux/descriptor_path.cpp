#include <unistd.h>

#include <limits.h>

#include "platform/os/files.h"

#if !defined(__linux__)
#error "this source is for Linux"
#endif

namespace VYX::Os {

std::string PathOf(FileDescriptor iFile) {
  const std::string link = "/proc/self/fd/" + std::to_string(iFile);
  char path[PATH_MAX];
  const ssize_t length = readlink(link.c_str(), path, sizeof path);
  return length <= 0 ? std::string() : std::string(path, static_cast<std::size_t>(length));
}

}  // namespace VYX::Os
