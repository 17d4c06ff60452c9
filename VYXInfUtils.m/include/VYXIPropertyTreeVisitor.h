#pragma once

#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

class KORListValKORUnicodeString;
class KORListValVYXPropertyTree;
class KORListValvyx_bool;
class KORRawColldouble;
class VYXPropertyTree;

/**
 * What VYXPropertyTree::Traverse and VYXPropertyTree::Dispatch call, one operation per member.
 *
 * ```cpp
 * class Names : public VYXIPropertyTreeVisitor {
 *  public:
 *   long VisitString(const KORUnicodeString& iKey, const KORUnicodeString& iValue) override {
 *     std::cout << iKey << " is " << iValue << "\n";
 *     return S_OK;
 *   }
 * };
 *
 * VYXPropertyTree tree;
 * tree.SetString("city", "Oslo");
 * tree.SetInteger("people", 700000);
 * Names names;
 * tree.Traverse(names);
 * ```
 *
 * prints
 *
 * ```text
 * city is Oslo
 * ```
 *
 * Every operation receives the member's key first; key and value are valid during the call. The operations do nothing
 * and answer S_OK unless overridden, and their answers are not used: only an exception ends a traversal. The visited
 * tree must not be changed during a call. A traversal calls from its own thread only; a visitor that several threads
 * traverse with has to be made for that. The order of the operations is part of the interface.
 */
class VYX_EXPORT VYXIPropertyTreeVisitor {
 public:
  /// Never called by a traversal.
  virtual ~VYXIPropertyTreeVisitor() = 0;

  /// A null member.
  virtual long VisitNull(const KORUnicodeString& iKey);

  /// An array whose first element is an object; the list holds deep copies.
  virtual long VisitPropertyTreeList(const KORUnicodeString& iKey, const KORListValVYXPropertyTree& iValues);

  /// An array whose first element is a number.
  virtual long VisitDoubleList(const KORUnicodeString& iKey, const KORRawColldouble& iValues);

  /// An array whose first element is a text, and every empty array, whatever it was set as.
  virtual long VisitStringList(const KORUnicodeString& iKey, const KORListValKORUnicodeString& iValues);

  /// An array whose first element is a Boolean.
  virtual long VisitBooleanList(const KORUnicodeString& iKey, const KORListValvyx_bool& iValues);

  /// A text.
  virtual long VisitString(const KORUnicodeString& iKey, const KORUnicodeString& iValue);

  /// A number, integers included.
  virtual long VisitDouble(const KORUnicodeString& iKey, double iValue);

  /// An object, as a temporary deep copy, which the visitor may traverse itself.
  virtual long VisitPropertyTree(const KORUnicodeString& iKey, const VYXPropertyTree& iValue);

  /// A Boolean.
  virtual long VisitBoolean(const KORUnicodeString& iKey, bool iValue);

 protected:
  /// @{
  /// For derived classes.
  VYXIPropertyTreeVisitor() = default;
  VYXIPropertyTreeVisitor(const VYXIPropertyTreeVisitor&) = default;
  VYXIPropertyTreeVisitor& operator=(const VYXIPropertyTreeVisitor&) = default;
  /// @}
};
