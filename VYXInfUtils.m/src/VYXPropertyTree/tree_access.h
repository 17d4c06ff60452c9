#pragma once

#include <memory>

#include "VYXPropertyTree.h"
#include "VYXPropertyTree/value.h"

namespace VYX::Internal {

/// The library's own way to a tree's root.
struct TreeAccess {
  /// The root; null for a tree that found no memory for one.
  static json::Object* Root(const VYXPropertyTree& iTree) noexcept { return iTree._root.get(); }

  /// Replaces a tree's members, also of a tree without root.
  static void Replace(VYXPropertyTree& oTree, json::Object&& ioMembers);

  /// Leaves a tree as one that found no memory for its root.
  static void DropRoot(VYXPropertyTree& ioTree) noexcept { ioTree._root.reset(); }
};

/// A stored number as an integer: truncated toward zero; the most negative value for a not-a-number and for one that no
/// 64-bit integer holds.
std::int64_t TruncatedInteger(double iNumber) noexcept;

/// A stored number as the same integer; std::range_error, which tells the number, where it is no integer or beyond
/// 2^53, so that it may be a rounded one.
std::int64_t ExactInteger(double iNumber);

}  // namespace VYX::Internal
