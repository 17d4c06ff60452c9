#include <utility>

#include "VYXPropertyTree/member_access.h"
#include "VYXPropertyTree/object_body.h"
#include "VYXPropertyTree/tree_access.h"
#include "internal/FailureTrace.h"

namespace VYX::Internal {

/// Reads a member into an output; iRead raises an exception, and leaves the output alone, where the value is not what
/// it needs.
template <class Read>
long MemberAccess::ReadMember(const SourceSite& iSite, const KORUnicodeString& iKey, Read&& iRead,
                              Absence iAbsence) const {
  return CatchAtBoundary(iSite, E_FAIL, [&]() -> long {
    const json::Value* const value = IsNothing() ? nullptr : Object().Find(iKey);
    if (value != nullptr) {
      iRead(*value);
      return S_OK;
    }
    if (iAbsence == Absence::Answer && !IsNothing()) {
      return S_FALSE;
    }
    if (iAbsence == Absence::ReportingFailure) {
      LogPendingError(E_FAIL);
    }
    return IsNothing() ? FailureReturn(iSite, E_FAIL) : FailureReturn(iSite, E_FAIL, "Key '", iKey, "' not found");
  });
}

/// Reads an array into a list: the list is emptied once the key is found, and keeps what stands before an unfit
/// element.
template <class List, class Append>
long MemberAccess::ReadList(const SourceSite& iSite, const KORUnicodeString& iKey, List& oValues,
                            Append&& iAppend) const {
  return ReadMember(iSite, iKey, [&](const json::Value& iValue) {
    oValues.RemoveAll(KORCollec::MemoryHandling::KeepMemory);
    for (const json::Value& element : iValue.GetArray()) {
      iAppend(element);
    }
  });
}

long MemberAccess::GetBoolean(const KORUnicodeString& iKey, bool& oValue) const {
  return ReadMember(VYX_HERE, iKey, [&](const json::Value& iValue) { oValue = iValue.GetBoolean(); });
}

long MemberAccess::GetDouble(const KORUnicodeString& iKey, double& oValue) const {
  return ReadMember(VYX_HERE, iKey, [&](const json::Value& iValue) { oValue = iValue.GetNumber(); });
}

long MemberAccess::GetInteger(const KORUnicodeString& iKey, std::int64_t& oValue) const {
  return ReadMember(
      VYX_HERE, iKey, [&](const json::Value& iValue) { oValue = TruncatedInteger(iValue.GetNumber()); },
      AbsenceOfInteger());
}

long MemberAccess::GetExactInteger(const KORUnicodeString& iKey, std::int64_t& oValue) const {
  return ReadMember(
      VYX_HERE, iKey, [&](const json::Value& iValue) { oValue = ExactInteger(iValue.GetNumber()); },
      AbsenceOfInteger());
}

long MemberAccess::TryGetInteger(const KORUnicodeString& iKey, std::int64_t& oValue) const {
  return ReadMember(
      VYX_HERE, iKey, [&](const json::Value& iValue) { oValue = TruncatedInteger(iValue.GetNumber()); },
      Absence::Answer);
}

long MemberAccess::GetString(const KORUnicodeString& iKey, KORUnicodeString& oValue) const {
  return ReadMember(VYX_HERE, iKey, [&](const json::Value& iValue) { oValue = iValue.GetString(); });
}

long MemberAccess::GetPropertyTree(const KORUnicodeString& iKey, VYXPropertyTree& oValue) const {
  return ReadMember(VYX_HERE, iKey,
                    [&](const json::Value& iValue) { TreeAccess::Replace(oValue, json::Object(iValue.GetObject())); });
}

long MemberAccess::TryGetPropertyTree(const KORUnicodeString& iKey, VYXPropertyTree& oValue) const {
  return ReadMember(
      VYX_HERE, iKey, [&](const json::Value& iValue) { TreeAccess::Replace(oValue, json::Object(iValue.GetObject())); },
      Absence::Answer);
}

long MemberAccess::GetBooleanList(const KORUnicodeString& iKey, KORListValvyx_bool& oValues) const {
  return ReadList(VYX_HERE, iKey, oValues, [&](const json::Value& iElement) { oValues.Append(iElement.GetBoolean()); });
}

long MemberAccess::GetDoubleList(const KORUnicodeString& iKey, KORRawColldouble& oValues) const {
  return ReadList(VYX_HERE, iKey, oValues, [&](const json::Value& iElement) { oValues.Append(iElement.GetNumber()); });
}

long MemberAccess::GetIntegerList(const KORUnicodeString& iKey, KORListValvyx_int64_t& oValues) const {
  return ReadList(VYX_HERE, iKey, oValues,
                  [&](const json::Value& iElement) { oValues.Append(TruncatedInteger(iElement.GetNumber())); });
}

long MemberAccess::GetStringList(const KORUnicodeString& iKey, KORListValKORUnicodeString& oValues) const {
  return ReadList(VYX_HERE, iKey, oValues, [&](const json::Value& iElement) { oValues.Append(iElement.GetString()); });
}

long MemberAccess::ReadTreeList(const SourceSite& iSite, const KORUnicodeString& iKey,
                                KORListValVYXPropertyTree& oValues, Absence iAbsence) const {
  // The tree that is read may be an element of the list that is emptied: the old elements live until the end.
  KORListValVYXPropertyTree previous;
  const auto read = [&](const json::Value& iValue) {
    std::swap(previous, oValues);
    for (const json::Value& element : iValue.GetArray()) {
      VYXPropertyTree tree;
      TreeAccess::Replace(tree, json::Object(element.GetObject()));
      oValues.Append(std::move(tree));
    }
  };
  return ReadMember(iSite, iKey, read, iAbsence);
}

long MemberAccess::GetPropertyTreeList(const KORUnicodeString& iKey, KORListValVYXPropertyTree& oValues) const {
  return ReadTreeList(VYX_HERE, iKey, oValues, Absence::Failure);
}

long MemberAccess::TryGetPropertyTreeList(const KORUnicodeString& iKey, KORListValVYXPropertyTree& oValues) const {
  return ReadTreeList(VYX_HERE, iKey, oValues, Absence::Answer);
}

long MemberAccess::GetKeys(KORListValKORUnicodeString& ioKeys) const {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    if (IsNothing()) {
      return FailureReturn(VYX_HERE, E_FAIL);
    }
    json::SlotTable::Cursor members = json::MembersOf(Object());
    while (const json::Entry* const member = members.Next()) {
      ioKeys.Append(member->key);
    }
    return S_OK;
  });
}

}  // namespace VYX::Internal
