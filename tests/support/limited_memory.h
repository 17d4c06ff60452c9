#pragma once

namespace VYX::Test {

inline constexpr long kUnlimited = -1;

/**
 * How many allocations by operator new still succeed. The next one after them fails as if memory had run out, and with
 * it all later ones unless iIsOnce. The source replaces the allocator of its program, so only a program of its own may
 * be built with it. For programs of one thread.
 */
void AllowAllocations(long iCount, bool iIsOnce = false) noexcept;

/// Number of allocations that have failed since AllowAllocations was called.
long CountFailedAllocations() noexcept;

}  // namespace VYX::Test
