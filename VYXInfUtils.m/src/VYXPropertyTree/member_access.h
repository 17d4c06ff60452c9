#pragma once

#include <cstdint>

#include "KORSysBase/KORListValKORUnicodeString.h"
#include "KORSysBase/KORRawColldouble.h"
#include "KORSysTS/KORUnicodeString.h"
#include "VYXListAccess.h"
#include "VYXPropertyAccess.h"
#include "VYXPropertyTree.h"
#include "VYXPropertyTree/value.h"
#include "VYXPropertyTreeLists.h"
#include "internal/FailureTrace.h"

namespace VYX::Internal {

/**
 * The operations by key that a tree applies to its root and a view to the object that it designates, with their failure
 * traces. What may designate nothing is a tree without root, or a view that was never set.
 */
class MemberAccess {
 public:
  explicit MemberAccess(json::Object* iRoot) noexcept : _root(iRoot), _isView(false) {}
  explicit MemberAccess(json::Value* iDesignated) noexcept : _designated(iDesignated), _isView(true) {}

  long GetBoolean(const KORUnicodeString& iKey, bool& oValue) const;
  long GetDouble(const KORUnicodeString& iKey, double& oValue) const;
  long GetInteger(const KORUnicodeString& iKey, std::int64_t& oValue) const;
  long GetExactInteger(const KORUnicodeString& iKey, std::int64_t& oValue) const;
  long GetString(const KORUnicodeString& iKey, KORUnicodeString& oValue) const;
  long GetPropertyTree(const KORUnicodeString& iKey, VYXPropertyTree& oValue) const;
  long GetBooleanList(const KORUnicodeString& iKey, KORListValvyx_bool& oValues) const;
  long GetDoubleList(const KORUnicodeString& iKey, KORRawColldouble& oValues) const;
  long GetIntegerList(const KORUnicodeString& iKey, KORListValvyx_int64_t& oValues) const;
  long GetStringList(const KORUnicodeString& iKey, KORListValKORUnicodeString& oValues) const;
  long GetPropertyTreeList(const KORUnicodeString& iKey, KORListValVYXPropertyTree& oValues) const;
  long TryGetInteger(const KORUnicodeString& iKey, std::int64_t& oValue) const;
  long TryGetPropertyTree(const KORUnicodeString& iKey, VYXPropertyTree& oValue) const;
  long TryGetPropertyTreeList(const KORUnicodeString& iKey, KORListValVYXPropertyTree& oValues) const;
  long GetKeys(KORListValKORUnicodeString& ioKeys) const;

  bool HasKey(const KORUnicodeString& iKey) const;
  /// True when the member holds the alternative.
  bool Is(json::Kind iKind, const KORUnicodeString& iKey) const;
  /// True when the member holds an array whose first element holds the alternative.
  bool IsListOf(json::Kind iKind, const KORUnicodeString& iKey) const;

  long SetBoolean(const KORUnicodeString& iKey, bool iValue) const;
  long SetDouble(const KORUnicodeString& iKey, double iValue) const;
  long SetInteger(const KORUnicodeString& iKey, std::int64_t iValue) const;
  long SetString(const KORUnicodeString& iKey, const KORUnicodeString& iValue) const;
  long SetString(const KORUnicodeString& iKey, KORUnicodeString&& ioValue) const;
  long SetPropertyTree(const KORUnicodeString& iKey, const VYXPropertyTree& iValue) const;
  long SetPropertyTree(const KORUnicodeString& iKey, VYXPropertyTree&& ioValue) const;
  long SetBooleanList(const KORUnicodeString& iKey, const KORListValvyx_bool& iValues) const;
  long SetDoubleList(const KORUnicodeString& iKey, const KORRawColldouble& iValues) const;
  long SetIntegerList(const KORUnicodeString& iKey, const KORListValvyx_int64_t& iValues) const;
  long SetStringList(const KORUnicodeString& iKey, const KORListValKORUnicodeString& iValues) const;
  long SetStringList(const KORUnicodeString& iKey, KORListValKORUnicodeString&& ioValues) const;
  long SetPropertyTreeList(const KORUnicodeString& iKey, const KORListValVYXPropertyTree& iValues) const;
  long SetPropertyTreeList(const KORUnicodeString& iKey, KORListValVYXPropertyTree&& ioValues) const;
  /// Stores any value; it is left as it is on failure.
  long SetValue(const KORUnicodeString& iKey, json::Value&& ioValue) const;

  /// Removes a member; an absent key is no failure.
  long RemoveKey(const KORUnicodeString& iKey) const;

  long GetPropertyAccess(const KORUnicodeString& iKey, VYXPropertyAccess& oAccess, bool iCreate) const;
  long GetListAccess(const KORUnicodeString& iKey, VYXListAccess& oAccess, bool iCreate) const;

 private:
  bool IsNothing() const noexcept { return _root == nullptr && _designated == nullptr; }

  /// The object; json::BadVariantAccess where a view designates something else.
  json::Object& Object() const { return _root != nullptr ? *_root : _designated->GetObject(); }

  /// What an absent key is: a failure, one that reports the pending error as well, or an answer.
  enum class Absence { Failure, ReportingFailure, Answer };
  Absence AbsenceOfInteger() const noexcept { return _isView ? Absence::ReportingFailure : Absence::Failure; }

  template <class Read>
  long ReadMember(const SourceSite& iSite, const KORUnicodeString& iKey, Read&& iRead,
                  Absence iAbsence = Absence::Failure) const;
  long ReadTreeList(const SourceSite& iSite, const KORUnicodeString& iKey, KORListValVYXPropertyTree& oValues,
                    Absence iAbsence) const;
  template <class List, class Append>
  long ReadList(const SourceSite& iSite, const KORUnicodeString& iKey, List& oValues, Append&& iAppend) const;
  template <class Test>
  bool TestMember(const SourceSite& iSite, const KORUnicodeString& iKey, bool iWithout, Test&& iTest) const;
  template <class Make>
  long StoreMember(const SourceSite& iSite, const KORUnicodeString& iKey, Make&& iMake) const;
  template <class Access>
  long DesignateMember(const SourceSite& iSite, const KORUnicodeString& iKey, Access& oAccess, bool iCreate) const;

  json::Object* _root = nullptr;
  json::Value* _designated = nullptr;
  bool _isView;
};

}  // namespace VYX::Internal
