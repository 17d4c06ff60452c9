#pragma once

namespace VYX::Test {

inline constexpr long kUnlimited = -1;

/**
 * How many allocations by operator new still succeed; those after them fail as if memory had run out. The source
 * replaces the allocator of its program, so only a program of its own may be built with it. For programs of one thread.
 */
void AllowAllocations(long iCount) noexcept;

}  // namespace VYX::Test
