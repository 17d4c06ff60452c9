#include <utility>

#include "VYXPropertyTree/member_access.h"
#include "VYXPropertyTree/tree_access.h"

namespace VYX::Internal {

namespace {

json::Object* RootOf(const VYXPropertyTree& iTree) noexcept {
  return TreeAccess::Root(iTree);
}

bool HaveRoots(const KORListValVYXPropertyTree& iTrees) noexcept {
  for (int position = 1; position <= iTrees.Size(); ++position) {
    if (RootOf(iTrees[position]) == nullptr) {
      return false;
    }
  }
  return true;
}

/// An array of the elements of a list, each made by iMake.
template <class List, class Make>
json::Value ArrayOf(List& ioList, Make&& iMake) {
  json::Array array;
  array.Reserve(static_cast<std::size_t>(ioList.Size()));
  for (int position = 1; position <= ioList.Size(); ++position) {
    array.Append(json::Value(iMake(ioList[position])));
  }
  return json::Value(std::move(array));
}

}  // namespace

/// Stores the value that iMake makes, in the place of what the key held.
template <class Make>
long MemberAccess::StoreMember(const SourceSite& iSite, const KORUnicodeString& iKey, Make&& iMake) const {
  return CatchAtBoundary(iSite, E_FAIL, [&]() -> long {
    if (IsNothing()) {
      return FailureReturn(iSite, E_FAIL);
    }
    json::Object& object = Object();
    object.Set(iKey, iMake());
    return S_OK;
  });
}

long MemberAccess::SetValue(const KORUnicodeString& iKey, json::Value&& ioValue) const {
  return StoreMember(VYX_HERE, iKey, [&]() -> json::Value&& { return std::move(ioValue); });
}

long MemberAccess::SetBoolean(const KORUnicodeString& iKey, bool iValue) const {
  return StoreMember(VYX_HERE, iKey, [&] { return json::Value(iValue); });
}

long MemberAccess::SetDouble(const KORUnicodeString& iKey, double iValue) const {
  return StoreMember(VYX_HERE, iKey, [&] { return json::Value(iValue); });
}

long MemberAccess::SetInteger(const KORUnicodeString& iKey, std::int64_t iValue) const {
  return StoreMember(VYX_HERE, iKey, [&] { return json::Value(static_cast<double>(iValue)); });
}

long MemberAccess::SetString(const KORUnicodeString& iKey, const KORUnicodeString& iValue) const {
  return StoreMember(VYX_HERE, iKey, [&] { return json::Value(iValue); });
}

long MemberAccess::SetString(const KORUnicodeString& iKey, KORUnicodeString&& ioValue) const {
  json::Value value(std::move(ioValue));
  const long code = SetValue(iKey, std::move(value));
  if (code < 0) {
    // NOLINTNEXTLINE(bugprone-use-after-move): a value that was not stored was not moved from
    ioValue = std::move(value.GetString());
  }
  return code;
}

long MemberAccess::SetPropertyTree(const KORUnicodeString& iKey, const VYXPropertyTree& iValue) const {
  if (RootOf(iValue) == nullptr) {
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  return StoreMember(VYX_HERE, iKey, [&] { return json::Value(json::Object(*RootOf(iValue))); });
}

long MemberAccess::SetPropertyTree(const KORUnicodeString& iKey, VYXPropertyTree&& ioValue) const {
  if (RootOf(ioValue) == nullptr) {
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  json::Value value(std::move(*RootOf(ioValue)));
  const long code = SetValue(iKey, std::move(value));
  if (code < 0) {
    // NOLINTNEXTLINE(bugprone-use-after-move): a value that was not stored was not moved from
    *RootOf(ioValue) = std::move(value.GetObject());
  }
  return code;
}

long MemberAccess::SetBooleanList(const KORUnicodeString& iKey, const KORListValvyx_bool& iValues) const {
  return StoreMember(VYX_HERE, iKey, [&] { return ArrayOf(iValues, [](bool iElement) { return iElement; }); });
}

long MemberAccess::SetDoubleList(const KORUnicodeString& iKey, const KORRawColldouble& iValues) const {
  return StoreMember(VYX_HERE, iKey, [&] { return ArrayOf(iValues, [](double iElement) { return iElement; }); });
}

long MemberAccess::SetIntegerList(const KORUnicodeString& iKey, const KORListValvyx_int64_t& iValues) const {
  return StoreMember(VYX_HERE, iKey, [&] {
    return ArrayOf(iValues, [](std::int64_t iElement) { return static_cast<double>(iElement); });
  });
}

long MemberAccess::SetStringList(const KORUnicodeString& iKey, const KORListValKORUnicodeString& iValues) const {
  return StoreMember(VYX_HERE, iKey, [&] {
    return ArrayOf(iValues, [](const KORUnicodeString& iElement) -> const KORUnicodeString& { return iElement; });
  });
}

long MemberAccess::SetStringList(const KORUnicodeString& iKey, KORListValKORUnicodeString&& ioValues) const {
  const long code = StoreMember(VYX_HERE, iKey, [&] {
    return ArrayOf(ioValues, [](KORUnicodeString& ioElement) { return std::move(ioElement); });
  });
  ioValues.RemoveAll();
  return code;
}

long MemberAccess::SetPropertyTreeList(const KORUnicodeString& iKey, const KORListValVYXPropertyTree& iValues) const {
  if (!HaveRoots(iValues)) {
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  return StoreMember(VYX_HERE, iKey, [&] {
    return ArrayOf(iValues, [](const VYXPropertyTree& iElement) { return json::Object(*RootOf(iElement)); });
  });
}

long MemberAccess::SetPropertyTreeList(const KORUnicodeString& iKey, KORListValVYXPropertyTree&& ioValues) const {
  if (!HaveRoots(ioValues)) {
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  const long code = StoreMember(VYX_HERE, iKey, [&] {
    return ArrayOf(ioValues, [](VYXPropertyTree& ioElement) { return std::move(*RootOf(ioElement)); });
  });
  ioValues.RemoveAll();
  return code;
}

long MemberAccess::RemoveKey(const KORUnicodeString& iKey) const {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    if (IsNothing()) {
      return FailureReturn(VYX_HERE, E_FAIL);
    }
    Object().Erase(iKey);
    return S_OK;
  });
}

}  // namespace VYX::Internal
