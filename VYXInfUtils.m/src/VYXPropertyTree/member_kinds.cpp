#include "VYXPropertyTree/member_access.h"

namespace VYX::Internal {

/// Asks iTest about a member, null where the key is absent; answers iWithout where there is no object.
template <class Test>
bool MemberAccess::TestMember(const SourceSite& iSite, const KORUnicodeString& iKey, bool iWithout,
                              Test&& iTest) const {
  return CatchAtBoundary(iSite, false, [&] {
    if (IsNothing()) {
      return FailureReturn(iSite, iWithout);
    }
    const json::Value* const value = Object().Find(iKey);
    return value != nullptr && iTest(*value);
  });
}

bool MemberAccess::HasKey(const KORUnicodeString& iKey) const {
  return TestMember(VYX_HERE, iKey, false, [](const json::Value&) { return true; });
}

bool MemberAccess::Is(json::Kind iKind, const KORUnicodeString& iKey) const {
  return TestMember(VYX_HERE, iKey, true, [&](const json::Value& iValue) { return iValue.GetKind() == iKind; });
}

bool MemberAccess::IsListOf(json::Kind iKind, const KORUnicodeString& iKey) const {
  return TestMember(VYX_HERE, iKey, true, [&](const json::Value& iValue) {
    return iValue.GetKind() == json::Kind::Array && !iValue.GetArray().IsEmpty() &&
           iValue.GetArray().begin()->GetKind() == iKind;
  });
}

}  // namespace VYX::Internal
