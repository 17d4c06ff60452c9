#include "platform/os/system_information.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <string_view>

#include "platform/os/linux/proc_files.h"
#include "platform/os/posix/system_calls.h"

#if !defined(__linux__)
#error "this source is for Linux"
#endif

namespace VYX::Os {
namespace {

// The number of a line such as "VmRSS:     2096 kB", in bytes; 0 where there is no such line.
std::uint64_t BytesOfLine(std::string_view iText, std::string_view iName) {
  const std::size_t start = iText.find(iName);
  if (start == std::string_view::npos) {
    return 0;
  }
  const std::string_view line = iText.substr(start + iName.size());
  const std::size_t digits = line.find_first_not_of("\t ");
  std::uint64_t kibibytes = 0;
  if (digits != std::string_view::npos) {
    std::from_chars(line.data() + digits, line.data() + line.size(), kibibytes);
  }
  return kibibytes * 1024;
}

}  // namespace

Status QueryMemoryUsage(MemoryUsage& oUsage) {
  std::string text;
  if (const Status status = Linux::ReadProcFile("/proc/self/status", text); !status.IsOk()) {
    return status;
  }
  const std::uint64_t current = BytesOfLine(text, "\nVmRSS:");
  if (current == 0) {
    return Status(ENOSYS);
  }
  // The peak is kept up with a delay: it may stand below the current figure for a moment.
  oUsage = {current, std::max(current, BytesOfLine(text, "\nVmHWM:"))};
  return {};
}

std::uint64_t PhysicalMemory() noexcept {
  const long pages = sysconf(_SC_PHYS_PAGES);
  const long pageSize = sysconf(_SC_PAGESIZE);
  return pages <= 0 || pageSize <= 0 ? 0 : static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(pageSize);
}

Status ExecutablePath(std::string& oPath) {
  return Linux::ReadProcLink("/proc/self/exe", oPath);
}

Status RandomBytes(void* oBuffer, std::size_t iSize) noexcept {
  auto* next = static_cast<char*>(oBuffer);
  while (iSize > 0) {
    const ssize_t count = Posix::Uninterrupted([&] { return Posix::Calls().Random(next, iSize); });
    if (count < 0) {
      return Status::OfLastCall();
    }
    next += count;
    iSize -= static_cast<std::size_t>(count);
  }
  return {};
}

}  // namespace VYX::Os
