#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/os/status.h"

/// What the host tells about itself and about the running process. May be called from any thread.
namespace VYX::Os {

/// The memory of the running process that is in use, in bytes: now, and the most it ever was.
struct MemoryUsage {
  std::uint64_t current = 0;
  std::uint64_t peak = 0;
};

/// The process's memory in use. On failure oUsage is untouched.
Status QueryMemoryUsage(MemoryUsage& oUsage);

/// The host's memory in bytes; 0 where the host cannot tell.
std::uint64_t PhysicalMemory() noexcept;

/// The program file of the running process, in the host's own spelling. It may have been renamed or
/// removed meanwhile. On failure oPath is untouched.
Status ExecutablePath(std::string& oPath);

/// Fills a buffer with bytes that nobody can foresee.
Status RandomBytes(void* oBuffer, std::size_t iSize) noexcept;

}  // namespace VYX::Os
