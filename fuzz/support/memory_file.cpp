#include "fuzz/support/memory_file.h"

#include <sys/mman.h>
#include <unistd.h>

#include "fuzz/support/require.h"

namespace VYX::Fuzz {

MemoryFile::MemoryFile() : _file(memfd_create("fuzz", MFD_CLOEXEC)), _path("/proc/self/fd/" + std::to_string(_file)) {
  Require(_file >= 0, "a file in memory can be made");
}

MemoryFile::~MemoryFile() {
  close(_file);
}

void MemoryFile::Write(std::string_view iContent) {
  const auto size = static_cast<ssize_t>(iContent.size());
  Require(ftruncate(_file, 0) == 0 && pwrite(_file, iContent.data(), iContent.size(), 0) == size,
          "a file in memory can be written");
}

}  // namespace VYX::Fuzz
