#pragma once

#include <cstdint>
#include <iosfwd>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

class VYXPropertyAccess;
class VYXPropertyTree;

namespace json {
struct Value;
}
namespace VYX::Internal {
class MemberAccess;
}

/**
 * A view on an Array inside a VYXPropertyTree, for reading and changing it in place; indexes count from 0.
 *
 * ```cpp
 * VYXPropertyTree tree;
 * VYXListAccess sizes;
 * if (tree.GetListAccess("sizes", sizes, true) >= 0) {
 *   sizes.AddInteger(640);
 *   sizes.AddString("auto");
 * }
 * std::cout << sizes.Stringify() << "\n";  // [640,"auto"]
 * ```
 *
 * Elements may be of different kinds. A view owns nothing and copies as a pointer does; VYXPropertyAccess tells how
 * long one is valid.
 *
 * Every operation but Stringify answers S_OK or E_FAIL, and leaves its output alone on failure. It fails, with a trace,
 * on a view that designates nothing; a value that is no Array and an element of another kind add "bad variant access",
 * an index outside the Array adds "invalid vector subscript". Threads: the rules of the tree.
 */
class VYX_EXPORT VYXListAccess {
 public:
  /// Designates nothing.
  VYXListAccess() noexcept = default;

  /// The number of elements.
  long GetListSize(std::uint64_t& oSize) const;

  // Reading an element.

  /// Reads a Boolean.
  long GetBoolean(std::uint64_t iIndex, bool& oValue) const;
  /// Reads a Number.
  long GetDouble(std::uint64_t iIndex, double& oValue) const;
  /// Truncates toward zero. Every failure reports the platform's pending error, if there is one, before its trace.
  long GetInteger(std::uint64_t iIndex, std::int64_t& oValue) const;
  /// Reads a Number that is a whole one and at most 2^53 from zero. Failures report as those of GetInteger.
  long GetExactInteger(std::uint64_t iIndex, std::int64_t& oValue) const;
  /// Reads a String.
  long GetString(std::uint64_t iIndex, KORUnicodeString& oValue) const;
  /// Replaces the members of oValue by deep copies of an Object's.
  long GetPropertyTree(std::uint64_t iIndex, VYXPropertyTree& oValue) const;

  /// Lets a view designate an element that is an Object.
  long GetPropertyAccess(std::uint64_t iIndex, VYXPropertyAccess& oAccess) const;

  /// Lets another view (or this one) designate an element that is an Array.
  long GetListAccess(std::uint64_t iIndex, VYXListAccess& oAccess) const;

  // Appending an element. Views on elements of this Array dangle afterwards. A tree is stored as a deep copy, or by
  // rvalue by taking its members over; it fails when it has no root. A tree given by rvalue must not be the one that
  // the view looks into.

  /// Appends a Boolean.
  long AddBoolean(const bool& iValue) const;
  /// Appends a Number.
  long AddDouble(const double& iValue) const;
  /// Appends the Number next to an integer.
  long AddInteger(const std::int64_t& iValue) const;
  /// Appends a text.
  long AddString(const KORUnicodeString& iValue) const;
  /// Appends a text, taking it over.
  long AddString(KORUnicodeString&& ioValue) const;
  /// Appends an Object, a deep copy of a tree's members.
  long AddPropertyTree(const VYXPropertyTree& iValue) const;
  /// Appends an Object, taking a tree's members over.
  long AddPropertyTree(VYXPropertyTree&& ioValue) const;

  // Replacing an element, whatever it holds, under the same rules for trees.

  /// Stores a Boolean.
  long SetBoolean(std::uint64_t iIndex, const bool& iValue) const;
  /// Stores a Number.
  long SetDouble(std::uint64_t iIndex, const double& iValue) const;
  /// Stores the Number next to an integer.
  long SetInteger(std::uint64_t iIndex, const std::int64_t& iValue) const;
  /// Stores a text.
  long SetString(std::uint64_t iIndex, const KORUnicodeString& iValue) const;
  /// Stores a text, taking it over.
  long SetString(std::uint64_t iIndex, KORUnicodeString&& ioValue) const;
  /// Stores an Object, a deep copy of a tree's members.
  long SetPropertyTree(std::uint64_t iIndex, const VYXPropertyTree& iValue) const;
  /// Stores an Object, taking a tree's members over.
  long SetPropertyTree(std::uint64_t iIndex, VYXPropertyTree&& ioValue) const;

  /// The compact text of what the view designates; "null" for nothing.
  KORUnicodeString Stringify() const;

  /// Writes the text of Stringify.
  friend VYX_EXPORT std::ostream& operator<<(std::ostream& ioStream, const VYXListAccess& iView);

 private:
  friend class VYX::Internal::MemberAccess;
  explicit VYXListAccess(json::Value& ioValue) noexcept : _value(&ioValue) {}

  json::Value* _value = nullptr;
};
