#pragma once

#include <cstdint>
#include <iosfwd>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

class KORListValKORUnicodeString;
class KORListValVYXPropertyTree;
class KORListValvyx_bool;
class KORListValvyx_int64_t;
class KORRawColldouble;
class VYXListAccess;
class VYXPropertyTree;

namespace json {
struct Value;
}
namespace VYX::Internal {
class MemberAccess;
}

/**
 * A view on an Object inside a VYXPropertyTree, for reading and changing it in place, without copying.
 *
 * ```cpp
 * VYXPropertyTree tree;
 * VYXPropertyAccess address;
 * if (tree.GetPropertyAccess("address", address, true) >= 0) {
 *   address.SetString("city", "Oslo");
 * }
 * std::cout << VYXPropertyTreeUtils::Stringify(tree) << "\n";  // {"address":{"city":"Oslo"}}
 * ```
 *
 * A view owns nothing and copies as a pointer does; a const view still changes what it designates. It stays valid while
 * its value lives: other keys may come and go, and the tree may be moved. It dangles once its member is replaced or
 * removed or the tree dies or is assigned to; a view on an element of an Array also once an element is added to that
 * Array.
 *
 * Operations follow those of VYXPropertyTree of the same name. They fail, with a trace, on a view that designates
 * nothing; on one whose value is no longer an Object the trace adds "bad variant access". Threads: the rules of the
 * tree.
 */
class VYX_EXPORT VYXPropertyAccess {
 public:
  /// Designates nothing.
  VYXPropertyAccess() noexcept = default;

  // Reading. The output is untouched on failure.

  /// Reads a Boolean.
  long GetBoolean(const KORUnicodeString& iKey, bool& oValue) const;
  /// Reads a Number.
  long GetDouble(const KORUnicodeString& iKey, double& oValue) const;
  /// Truncates toward zero. Every failure reports the platform's pending error, if there is one, before its trace.
  long GetInteger(const KORUnicodeString& iKey, std::int64_t& oValue) const;
  /// Reads a Number that is a whole one and at most 2^53 from zero. Failures report as those of GetInteger.
  long GetExactInteger(const KORUnicodeString& iKey, std::int64_t& oValue) const;
  /// Reads a String.
  long GetString(const KORUnicodeString& iKey, KORUnicodeString& oValue) const;

  /// Appends the keys, in order, to what the list holds.
  long GetKeys(KORListValKORUnicodeString& ioKeys) const;

  /// True when the key is there; false, with a trace, on a view that designates nothing.
  bool HasKey(const KORUnicodeString& iKey) const;

  // True when the key is there and holds the kind; true, with a trace, on a view that designates nothing.

  /// The key holds a Boolean.
  bool IsBoolean(const KORUnicodeString& iKey) const;
  /// The key holds a Number.
  bool IsNumber(const KORUnicodeString& iKey) const;
  /// The key holds a String.
  bool IsString(const KORUnicodeString& iKey) const;
  /// The key holds an Object.
  bool IsPropertyTree(const KORUnicodeString& iKey) const;

  // True when the key holds an Array whose first element is of the kind; true, with a trace, on a view that designates
  // nothing.

  /// The key holds an Array whose first element is a Boolean.
  bool IsBooleanList(const KORUnicodeString& iKey) const;
  /// The key holds an Array whose first element is a Number.
  bool IsNumberList(const KORUnicodeString& iKey) const;
  /// The key holds an Array whose first element is a String.
  bool IsStringList(const KORUnicodeString& iKey) const;
  /// The key holds an Array whose first element is an Object.
  bool IsPropertyTreeList(const KORUnicodeString& iKey) const;

  // Writing. A member of the key is replaced, whatever it holds. A tree given by rvalue must not be the one that the
  // view looks into.

  /// Stores a Boolean.
  long SetBoolean(const KORUnicodeString& iKey, bool iValue) const;
  /// Stores a Number.
  long SetDouble(const KORUnicodeString& iKey, double iValue) const;
  /// Stores the Number next to an integer.
  long SetInteger(const KORUnicodeString& iKey, std::int64_t iValue) const;
  /// Stores a text.
  long SetString(const KORUnicodeString& iKey, const KORUnicodeString& iValue) const;
  /// Stores a text, taking it over.
  long SetString(const KORUnicodeString& iKey, KORUnicodeString&& ioValue) const;
  /// Stores an Object, a deep copy of a tree's members.
  long SetPropertyTree(const KORUnicodeString& iKey, const VYXPropertyTree& iValue) const;
  /// Stores an Object, taking a tree's members over.
  long SetPropertyTree(const KORUnicodeString& iKey, VYXPropertyTree&& ioValue) const;
  /// Stores an Array of Booleans.
  long SetBooleanList(const KORUnicodeString& iKey, const KORListValvyx_bool& iValues) const;
  /// Stores an Array of Numbers.
  long SetDoubleList(const KORUnicodeString& iKey, const KORRawColldouble& iValues) const;
  /// Stores an Array of the Numbers next to integers.
  long SetIntegerList(const KORUnicodeString& iKey, const KORListValvyx_int64_t& iValues) const;
  /// Stores an Array of texts.
  long SetStringList(const KORUnicodeString& iKey, const KORListValKORUnicodeString& iValues) const;
  /// Stores an Array of texts, taking the elements over.
  long SetStringList(const KORUnicodeString& iKey, KORListValKORUnicodeString&& ioValues) const;
  /// Stores an Array of Objects, deep copies of trees' members.
  long SetPropertyTreeList(const KORUnicodeString& iKey, const KORListValVYXPropertyTree& iValues) const;
  /// Stores an Array of Objects, taking the trees' members over.
  long SetPropertyTreeList(const KORUnicodeString& iKey, KORListValVYXPropertyTree&& ioValues) const;

  /// Removes a member; unlike VYXPropertyTree::RemoveKey it succeeds, silently, when the key is absent.
  long RemoveKey(const KORUnicodeString& iKey) const;

  /// Lets another view (or this one) designate the Object of a key; VYXPropertyTree::GetPropertyAccess tells the rules.
  long GetPropertyAccess(const KORUnicodeString& iKey, VYXPropertyAccess& oAccess, bool iCreate) const;

  /// The same for the Array of a key.
  long GetListAccess(const KORUnicodeString& iKey, VYXListAccess& oAccess, bool iCreate) const;

  /// The compact text of what the view designates; "null" for nothing.
  KORUnicodeString Stringify() const;

  /// Writes the text of Stringify.
  friend VYX_EXPORT std::ostream& operator<<(std::ostream& ioStream, const VYXPropertyAccess& iView);

 private:
  friend class VYX::Internal::MemberAccess;
  friend class VYXListAccess;
  explicit VYXPropertyAccess(json::Value& ioValue) noexcept : _value(&ioValue) {}

  json::Value* _value = nullptr;
};
