#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

class KORListValKORUnicodeString;
class KORListValVYXPropertyTree;
class KORListValvyx_bool;
class KORListValvyx_int64_t;
class KORRawColldouble;
class VYXIPropertyTreeVisitor;
class VYXListAccess;
class VYXPropertyAccess;

namespace json {
class Object;
}
namespace VYX::Internal {
struct TreeAccess;
}

/**
 * The library's data model: a tree of named, typed values in the shape of JSON (RFC 8259), always an object at its
 * root.
 *
 * ```cpp
 * VYXPropertyTree tree;
 * tree.SetString("name", "Holiday");
 * tree.SetInteger("width", 1920);
 * KORUnicodeString text;
 * if (tree.Stringify(text) >= 0) {
 *   std::cout << text << "\n";  // {"name":"Holiday","width":1920}
 * }
 * ```
 *
 * Values. A value is null, a Boolean, a Number, a String, an Array or an Object. There is one kind of Number, the
 * 64-bit floating-point one: an integer is stored as the nearest Number (exact up to 2^53) and read back by truncation
 * toward zero; a Number that is not-a-number or that no 64-bit integer holds reads as the most negative one. There is
 * no conversion between kinds.
 *
 * Order. Keys are unique and are ordered by their bytes, which is the order of code points; key lists, text and
 * traversal follow that order, never the order of insertion.
 *
 * Results. An operation that answers a result code answers S_OK or E_FAIL, and leaves its output alone on failure
 * unless it says otherwise. Every failure writes its trace at ERROR through the default logger; an absent key adds "Key
 * '...' not found", a value of another kind "bad variant access". No such operation raises an exception.
 *
 * Memory. A tree that found no memory for its root is unusable: operations fail with a trace, until the tree is
 * assigned to. Copying a tree raises std::bad_alloc when memory runs out, and assigning then leaves the target as it
 * was. Setters leave the tree as it was.
 *
 * Trees of any depth are copied, compared, written and destroyed without taking stack for the depth.
 *
 * A tree may be read by several threads at once, and is changed by one only.
 */
class VYX_EXPORT VYXPropertyTree {
 public:
  /// An empty tree.
  VYXPropertyTree() noexcept;

  /// A deep copy, which shares nothing. Views into the other tree keep designating that one.
  VYXPropertyTree(const VYXPropertyTree& iOther);

  /// Takes the members over; the other tree is empty afterwards. Views move along.
  VYXPropertyTree(VYXPropertyTree&& ioOther) noexcept;
  /// Becomes a deep copy; views into this tree dangle.
  VYXPropertyTree& operator=(const VYXPropertyTree& iOther);
  /// Takes the members over; the other tree is empty afterwards. Views into this tree dangle, the other's move along.
  VYXPropertyTree& operator=(VYXPropertyTree&& ioOther) noexcept;

  /// Destroys every member.
  ~VYXPropertyTree();

  /// Exchanges the members of two trees. Views move along.
  void Swap(VYXPropertyTree& ioOther) noexcept { _root.swap(ioOther._root); }
  /// The same, for the standard algorithms.
  friend void swap(VYXPropertyTree& ioLeft, VYXPropertyTree& ioRight) noexcept { ioLeft.Swap(ioRight); }

  /// True when the compact texts of the trees are equal: the same members, in whatever order they were set. A tree
  /// without root equals every tree, with a trace.
  bool operator==(const VYXPropertyTree& iOther) const;
  /// False when operator== answers true, else true.
  bool operator!=(const VYXPropertyTree& iOther) const { return !(*this == iOther); }

  // Text.

  /**
   * Adds the members of a JSON text to the tree; a member of the same key is replaced, all others stay.
   *
   * Every well-formed text (RFC 8259, UTF-8, at most 512 levels of nesting) with an object at its top is stored, with
   * two peculiarities: members that are null store nothing, and an empty array is a list of nothing. Of repeated keys
   * the last one counts. Control characters may stand in texts as Stringify leaves them.
   *
   * @return S_OK; E_FAIL with a trace, which tells line and column of what is ill-formed, and nothing is stored then;
   * E_FAIL also when memory runs out, and the members before that stay.
   */
  long Parse(const KORUnicodeString& iText);

  /**
   * Writes the tree as compact JSON text: no white space, members in key order, Numbers with 17 significant digits as
   * "%.17g" does, texts escaped as VYXInfStringUtil::EscapeStringForJS does. A Number that is no number gives "nan",
   * "inf" or "-inf", which is no JSON; control characters other than the five that have a short escape stay as they
   * are.
   */
  long Stringify(KORUnicodeString& oText) const;

  /// Writes the text of Stringify; nothing after a failure, which is traced and sets the stream's fail bit.
  friend VYX_EXPORT std::ostream& operator<<(std::ostream& ioStream, const VYXPropertyTree& iTree);

  // Reading. The output is untouched on failure.

  /// A Boolean.
  long GetBoolean(const KORUnicodeString& iKey, bool& oValue) const;

  /// A Number, as it is stored.
  long GetDouble(const KORUnicodeString& iKey, double& oValue) const;

  /// A Number, truncated toward zero.
  long GetInteger(const KORUnicodeString& iKey, std::int64_t& oValue) const;

  /// A Number that is a whole one and at most 2^53 from zero, so that nothing is cut off or rounded; any other Number
  /// is a failure, whose trace adds "The number 2.5 is no integer" or "The number 1e+300 is beyond 2^53". SetInteger
  /// rounds what is beyond 2^53 before it is stored.
  long GetExactInteger(const KORUnicodeString& iKey, std::int64_t& oValue) const;

  /// A String.
  long GetString(const KORUnicodeString& iKey, KORUnicodeString& oValue) const;

  /// An Object: the members of oValue are replaced by deep copies.
  long GetPropertyTree(const KORUnicodeString& iKey, VYXPropertyTree& oValue) const;

  // Reading arrays. The list is untouched when the key is absent, else it is emptied first: it stays empty for a value
  // that is no Array, and holds the elements before the first one of another kind.

  /// Reads an Array of Booleans.
  long GetBooleanList(const KORUnicodeString& iKey, KORListValvyx_bool& oValues) const;
  /// Reads an Array of Numbers.
  long GetDoubleList(const KORUnicodeString& iKey, KORRawColldouble& oValues) const;
  /// Numbers, each truncated toward zero.
  long GetIntegerList(const KORUnicodeString& iKey, KORListValvyx_int64_t& oValues) const;
  /// Reads an Array of Strings.
  long GetStringList(const KORUnicodeString& iKey, KORListValKORUnicodeString& oValues) const;
  /// Objects, as deep copies.
  long GetPropertyTreeList(const KORUnicodeString& iKey, KORListValVYXPropertyTree& oValues) const;

  // Reading what may be absent: as the operations without "Try", but S_FALSE, without a trace, when the key is absent.

  /// GetInteger for a key that may be absent.
  long TryGetInteger(const KORUnicodeString& iKey, std::int64_t& oValue) const;
  /// GetPropertyTree for a key that may be absent.
  long TryGetPropertyTree(const KORUnicodeString& iKey, VYXPropertyTree& oValue) const;
  /// GetPropertyTreeList for a key that may be absent.
  long TryGetPropertyTreeList(const KORUnicodeString& iKey, KORListValVYXPropertyTree& oValues) const;

  // Asking.

  /// Appends the keys of the root, in order, to what the list holds.
  long GetKeys(KORListValKORUnicodeString& ioKeys) const;

  /// True when the key is there. On a tree without root false, with a trace.
  bool HasKey(const KORUnicodeString& iKey) const;

  // True when the key is there and holds the kind. On a tree without root true, with a trace.

  /// The key holds a Boolean.
  bool IsBoolean(const KORUnicodeString& iKey) const;
  /// Integers are Numbers.
  bool IsNumber(const KORUnicodeString& iKey) const;
  /// The key holds a String.
  bool IsString(const KORUnicodeString& iKey) const;
  /// The key holds an Object.
  bool IsPropertyTree(const KORUnicodeString& iKey) const;

  // True when the key holds an Array whose first element is of the kind; the others are not looked at, and an empty
  // Array is a list of nothing. On a tree without root true, with a trace.

  /// The key holds an Array whose first element is a Boolean.
  bool IsBooleanList(const KORUnicodeString& iKey) const;
  /// The key holds an Array whose first element is a Number.
  bool IsNumberList(const KORUnicodeString& iKey) const;
  /// The key holds an Array whose first element is a String.
  bool IsStringList(const KORUnicodeString& iKey) const;
  /// The key holds an Array whose first element is an Object.
  bool IsPropertyTreeList(const KORUnicodeString& iKey) const;

  // Writing. A member of the key is replaced, whatever it holds; views on it dangle then. A tree is stored as a deep
  // copy of its members, and fails when it has no root; by rvalue its members are taken over and it is empty
  // afterwards. A text or tree given by rvalue is unchanged on failure; a list given by rvalue is empty after success,
  // and may have lost its elements after a failure.

  /// Stores a Boolean.
  long SetBoolean(const KORUnicodeString& iKey, bool iValue);
  /// Stores a Number.
  long SetDouble(const KORUnicodeString& iKey, double iValue);
  /// Stores the Number next to the integer.
  long SetInteger(const KORUnicodeString& iKey, std::int64_t iValue);
  /// Stores a text.
  long SetString(const KORUnicodeString& iKey, const KORUnicodeString& iValue);
  /// Stores a text, taking it over.
  long SetString(const KORUnicodeString& iKey, KORUnicodeString&& ioValue);
  /// Stores an Object, a deep copy of a tree's members.
  long SetPropertyTree(const KORUnicodeString& iKey, const VYXPropertyTree& iValue);
  /// Stores an Object, taking a tree's members over.
  long SetPropertyTree(const KORUnicodeString& iKey, VYXPropertyTree&& ioValue);
  /// Stores an Array of Booleans.
  long SetBooleanList(const KORUnicodeString& iKey, const KORListValvyx_bool& iValues);
  /// Stores an Array of Numbers.
  long SetDoubleList(const KORUnicodeString& iKey, const KORRawColldouble& iValues);
  /// Stores an Array of the Numbers next to integers.
  long SetIntegerList(const KORUnicodeString& iKey, const KORListValvyx_int64_t& iValues);
  /// Stores an Array of texts.
  long SetStringList(const KORUnicodeString& iKey, const KORListValKORUnicodeString& iValues);
  /// Stores an Array of texts, taking the elements over.
  long SetStringList(const KORUnicodeString& iKey, KORListValKORUnicodeString&& ioValues);
  /// Stores an Array of Objects, deep copies of trees' members.
  long SetPropertyTreeList(const KORUnicodeString& iKey, const KORListValVYXPropertyTree& iValues);
  /// Stores an Array of Objects, taking the trees' members over.
  long SetPropertyTreeList(const KORUnicodeString& iKey, KORListValVYXPropertyTree&& ioValues);

  /// Removes a member and everything below it; an absent key is a failure.
  long RemoveKey(const KORUnicodeString& iKey);

  // Views, for reading and changing a nested value in place.

  /**
   * Lets a view designate the Object of a key.
   *
   * @param iKey the member's key.
   * @param oAccess the view, valid until the member is replaced or removed or the tree dies or is assigned to.
   * @param iCreate says whether an empty Object is inserted where the key is absent. A member of another kind is never
   *        replaced: that is a failure.
   */
  long GetPropertyAccess(const KORUnicodeString& iKey, VYXPropertyAccess& oAccess, bool iCreate);

  /// The same for the Array of a key.
  long GetListAccess(const KORUnicodeString& iKey, VYXListAccess& oAccess, bool iCreate);

  // Traversal.

  /**
   * Calls the visitor once for every member of the root, in key order. Nested objects are not descended into: the
   * visitor gets them as copies. An Array is handed over as the list that its first element calls for; one whose first
   * element is null is passed over.
   *
   * @return E_FAIL, with a trace and the exception's text, when a call raises an exception of the standard family, when
   * an Array holds elements of different kinds ("bad variant access") or begins with an Array ("Unexpected visit"); the
   *         members before have been visited.
   */
  long Traverse(VYXIPropertyTreeVisitor& iVisitor) const;

  /// Calls the visitor for one member, under the rules of Traverse; S_FALSE, without a trace, when the key is absent.
  long Dispatch(const KORUnicodeString& iKey, VYXIPropertyTreeVisitor& iVisitor) const;

 private:
  friend struct VYX::Internal::TreeAccess;

  std::unique_ptr<json::Object> _root;  // null only after memory ran out
};

/// Conveniences around VYXPropertyTree.
namespace VYXPropertyTreeUtils {

/// The compact text of a tree; empty after a failure, which is written to the log and not reported.
VYX_EXPORT KORUnicodeString Stringify(const VYXPropertyTree& iTree);

/**
 * Writes a tree as JSON text that every reader of RFC 8259 accepts, for readers outside the library;
 * VYXPropertyTree::Stringify keeps its fixed format instead. Parse reads the same tree from it, but for null members.
 *
 * ```cpp
 * VYXPropertyTree tree;
 * tree.SetString("tab", "a\tb");
 * KORUnicodeString text;
 * if (VYXPropertyTreeUtils::StringifyStrict(tree, text, 2) >= 0) {
 *   std::cout << text << "\n";
 * }
 * ```
 *
 * prints
 *
 * ```json
 * {
 *   "tab": "a\tb"
 * }
 * ```
 *
 * Members are in key order. All control characters are escaped; other characters are written as UTF-8. Integers up to
 * 2^53 are written without an exponent, other Numbers with the fewest digits that read back as the same Number.
 *
 * @param iTree what to write.
 * @param oText the text.
 * @param iIndent the spaces per level, each member and element on a line of its own; 0, or less, for compact text. More
 *        than 16 count as 16.
 * @return S_OK; E_FAIL with a trace for a tree without root, for a Number that is none and for a text or key that is no
 *         UTF-8. The trace tells its place in the notation of RFC 6901 ("/sizes/3"). oText is untouched then.
 */
VYX_EXPORT long StringifyStrict(const VYXPropertyTree& iTree, KORUnicodeString& oText, int iIndent = 0);

/// The same text as a result; empty after a failure, which is written to the log.
VYX_EXPORT KORUnicodeString StringifyStrict(const VYXPropertyTree& iTree, int iIndent = 0);

}  // namespace VYXPropertyTreeUtils
