#include "platform/os/system_information.h"

#include <algorithm>
#include <limits>

#include "platform/os/windows/module_path.h"
#include "platform/os/windows/process_calls.h"
#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os {

using Windows::gProcessCalls;

Status QueryMemoryUsage(MemoryUsage& oUsage) {
  PROCESS_MEMORY_COUNTERS counters = {};
  counters.cb = sizeof counters;
  if (!gProcessCalls.MemoryCounters(&counters)) {
    return Status::OfLastCall();
  }
  oUsage = {counters.WorkingSetSize, counters.PeakWorkingSetSize};
  return {};
}

std::uint64_t PhysicalMemory() noexcept {
  MEMORYSTATUSEX memory = {};
  memory.dwLength = sizeof memory;
  ::GlobalMemoryStatusEx(&memory);
  return memory.ullTotalPhys;
}

Status ExecutablePath(std::string& oPath) {
  return Windows::ModulePath(::GetCurrentProcess(), oPath);
}

Status RandomBytes(void* oBuffer, std::size_t iSize) noexcept {
  auto* next = static_cast<unsigned char*>(oBuffer);
  while (iSize > 0) {
    const std::size_t count = std::min<std::size_t>(iSize, std::numeric_limits<std::uint32_t>::max());
    if (gProcessCalls.Random(next, static_cast<std::uint32_t>(count)) != 0) {
      return Status(ERROR_GEN_FAILURE);
    }
    next += count;
    iSize -= count;
  }
  return {};
}

}  // namespace VYX::Os
