#pragma once

#include <cstdint>

namespace VYX::Os {

/// The host's number of the running process; right in a forked child as well.
std::int32_t CurrentProcessId() noexcept;

/// The host's number of the calling thread; asked of the host once per thread, and once more in a forked child.
std::uint32_t CurrentThreadId() noexcept;

/// The number of the thread that runs main, or 0 where the host cannot tell.
std::uint32_t MainThreadId() noexcept;

}  // namespace VYX::Os
