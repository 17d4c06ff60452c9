#pragma once

#include <cstdint>

#include <sys/types.h>

namespace VYX::Os::Posix {

/// Remembers a child that nobody waits for. iStartTime tells it from a later child of the same number; 0 is unknown.
/// Where there is no memory to remember it, it is heard of when the program ends.
void RememberChild(pid_t iChild, std::uint64_t iStartTime) noexcept;

/**
 * Hears of the remembered children that have ended, and forgets them.
 *
 * @param iStartTimeOf asked for the start time of a child that has ended but was not heard of; 0 is unknown. Where it
 * differs, the number belongs to a child that the program started by other means, and is left alone.
 */
void HearOfEndedChildren(std::uint64_t (*iStartTimeOf)(pid_t iChild)) noexcept;

}  // namespace VYX::Os::Posix
