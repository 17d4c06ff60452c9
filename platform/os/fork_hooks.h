#pragma once

namespace VYX::Os {

/// Has functions called around every fork of the process, so that locks are free in the child: iBefore in the parent,
/// later registrations first; then iAfter in the parent and in the child, earlier registrations first. On a host
/// without fork nothing is ever called.
void RegisterForkHooks(void (*iBefore)(), void (*iAfter)()) noexcept;

}  // namespace VYX::Os
