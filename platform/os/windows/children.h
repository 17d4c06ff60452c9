#pragma once

#include <cstdint>

#include "platform/os/windows/handle.h"

namespace VYX::Os::Windows {

/// Keeps a child's handle, and with it the child's number from passing to another process, until it has ended and is
/// heard of, or is taken. A child that is waited for is kept until then. Where there is no memory to keep it, the
/// handle is closed.
void KeepChild(std::uint32_t iId, Handle iChild, bool iIsWaitedFor) noexcept;

/// Takes the handle of a child that is waited for out; none where there is no such child.
Handle TakeChild(std::uint32_t iId) noexcept;

/// Forgets the children that have ended and that nobody waits for.
void HearOfEndedChildren() noexcept;

}  // namespace VYX::Os::Windows
