#pragma once

namespace VYX::Os {

/// Whose locks are taken first before a fork: who may wait for another lock while holding its own is further outside.
enum class ForkRank : int { Outer, Middle, Inner };

/// Has functions called around every fork of the process, so that locks are free in the child: iBefore in the parent,
/// the outer ranks first; then iAfter in the parent and in the child, the inner ranks first. At most eight pairs,
/// registered while static objects are made. On a host without fork nothing is ever called.
void RegisterForkHooks(ForkRank iRank, void (*iBefore)(), void (*iAfter)()) noexcept;

}  // namespace VYX::Os
