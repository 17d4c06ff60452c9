#include "VYXPropertyTree/member_access.h"

namespace VYX::Internal {

namespace {

json::Value EmptyFor(const VYXPropertyAccess*) noexcept {
  return json::Value(json::Object());
}
json::Value EmptyFor(const VYXListAccess*) noexcept {
  return json::Value(json::Array());
}

}  // namespace

/// Lets a view designate a member that holds its alternative; a member of another alternative is never replaced.
template <class Access>
long MemberAccess::DesignateMember(const SourceSite& iSite, const KORUnicodeString& iKey, Access& oAccess,
                                   bool iCreate) const {
  return CatchAtBoundary(iSite, E_FAIL, [&]() -> long {
    if (IsNothing()) {
      return FailureReturn(iSite, E_FAIL);
    }
    json::Object& object = Object();
    json::Value empty = EmptyFor(&oAccess);
    if (json::Value* const value = object.Find(iKey)) {
      if (value->GetKind() != empty.GetKind()) {
        return FailureReturn(iSite, E_FAIL);
      }
      oAccess = Access(*value);
      return S_OK;
    }
    if (!iCreate) {
      return FailureReturn(iSite, E_FAIL, "Key '", iKey, "' not found");
    }
    oAccess = Access(object.Set(iKey, std::move(empty)));
    return S_OK;
  });
}

long MemberAccess::GetPropertyAccess(const KORUnicodeString& iKey, VYXPropertyAccess& oAccess, bool iCreate) const {
  return DesignateMember(VYX_HERE, iKey, oAccess, iCreate);
}

long MemberAccess::GetListAccess(const KORUnicodeString& iKey, VYXListAccess& oAccess, bool iCreate) const {
  return DesignateMember(VYX_HERE, iKey, oAccess, iCreate);
}

}  // namespace VYX::Internal
