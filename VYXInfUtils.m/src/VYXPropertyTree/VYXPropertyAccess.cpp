#include "VYXPropertyAccess.h"

#include <ostream>
#include <utility>

#include "VYXPropertyTree/designated_text.h"
#include "VYXPropertyTree/member_access.h"

using VYX::Internal::MemberAccess;

long VYXPropertyAccess::GetBoolean(const KORUnicodeString& iKey, bool& oValue) const {
  return MemberAccess(_value).GetBoolean(iKey, oValue);
}

long VYXPropertyAccess::GetDouble(const KORUnicodeString& iKey, double& oValue) const {
  return MemberAccess(_value).GetDouble(iKey, oValue);
}

long VYXPropertyAccess::GetInteger(const KORUnicodeString& iKey, std::int64_t& oValue) const {
  return MemberAccess(_value).GetInteger(iKey, oValue);
}

long VYXPropertyAccess::GetExactInteger(const KORUnicodeString& iKey, std::int64_t& oValue) const {
  return MemberAccess(_value).GetExactInteger(iKey, oValue);
}

long VYXPropertyAccess::GetString(const KORUnicodeString& iKey, KORUnicodeString& oValue) const {
  return MemberAccess(_value).GetString(iKey, oValue);
}

long VYXPropertyAccess::GetKeys(KORListValKORUnicodeString& ioKeys) const {
  return MemberAccess(_value).GetKeys(ioKeys);
}

bool VYXPropertyAccess::HasKey(const KORUnicodeString& iKey) const {
  return MemberAccess(_value).HasKey(iKey);
}

bool VYXPropertyAccess::IsBoolean(const KORUnicodeString& iKey) const {
  return MemberAccess(_value).Is(json::Kind::Boolean, iKey);
}

bool VYXPropertyAccess::IsNumber(const KORUnicodeString& iKey) const {
  return MemberAccess(_value).Is(json::Kind::Number, iKey);
}

bool VYXPropertyAccess::IsString(const KORUnicodeString& iKey) const {
  return MemberAccess(_value).Is(json::Kind::String, iKey);
}

bool VYXPropertyAccess::IsPropertyTree(const KORUnicodeString& iKey) const {
  return MemberAccess(_value).Is(json::Kind::Object, iKey);
}

bool VYXPropertyAccess::IsBooleanList(const KORUnicodeString& iKey) const {
  return MemberAccess(_value).IsListOf(json::Kind::Boolean, iKey);
}

bool VYXPropertyAccess::IsNumberList(const KORUnicodeString& iKey) const {
  return MemberAccess(_value).IsListOf(json::Kind::Number, iKey);
}

bool VYXPropertyAccess::IsStringList(const KORUnicodeString& iKey) const {
  return MemberAccess(_value).IsListOf(json::Kind::String, iKey);
}

bool VYXPropertyAccess::IsPropertyTreeList(const KORUnicodeString& iKey) const {
  return MemberAccess(_value).IsListOf(json::Kind::Object, iKey);
}

long VYXPropertyAccess::SetBoolean(const KORUnicodeString& iKey, bool iValue) const {
  return MemberAccess(_value).SetBoolean(iKey, iValue);
}

long VYXPropertyAccess::SetDouble(const KORUnicodeString& iKey, double iValue) const {
  return MemberAccess(_value).SetDouble(iKey, iValue);
}

long VYXPropertyAccess::SetInteger(const KORUnicodeString& iKey, std::int64_t iValue) const {
  return MemberAccess(_value).SetInteger(iKey, iValue);
}

long VYXPropertyAccess::SetString(const KORUnicodeString& iKey, const KORUnicodeString& iValue) const {
  return MemberAccess(_value).SetString(iKey, iValue);
}

long VYXPropertyAccess::SetString(const KORUnicodeString& iKey, KORUnicodeString&& ioValue) const {
  return MemberAccess(_value).SetString(iKey, std::move(ioValue));
}

long VYXPropertyAccess::SetPropertyTree(const KORUnicodeString& iKey, const VYXPropertyTree& iValue) const {
  return MemberAccess(_value).SetPropertyTree(iKey, iValue);
}

long VYXPropertyAccess::SetPropertyTree(const KORUnicodeString& iKey, VYXPropertyTree&& ioValue) const {
  return MemberAccess(_value).SetPropertyTree(iKey, std::move(ioValue));
}

long VYXPropertyAccess::SetBooleanList(const KORUnicodeString& iKey, const KORListValvyx_bool& iValues) const {
  return MemberAccess(_value).SetBooleanList(iKey, iValues);
}

long VYXPropertyAccess::SetDoubleList(const KORUnicodeString& iKey, const KORRawColldouble& iValues) const {
  return MemberAccess(_value).SetDoubleList(iKey, iValues);
}

long VYXPropertyAccess::SetIntegerList(const KORUnicodeString& iKey, const KORListValvyx_int64_t& iValues) const {
  return MemberAccess(_value).SetIntegerList(iKey, iValues);
}

long VYXPropertyAccess::SetStringList(const KORUnicodeString& iKey, const KORListValKORUnicodeString& iValues) const {
  return MemberAccess(_value).SetStringList(iKey, iValues);
}

long VYXPropertyAccess::SetStringList(const KORUnicodeString& iKey, KORListValKORUnicodeString&& ioValues) const {
  return MemberAccess(_value).SetStringList(iKey, std::move(ioValues));
}

long VYXPropertyAccess::SetPropertyTreeList(const KORUnicodeString& iKey,
                                            const KORListValVYXPropertyTree& iValues) const {
  return MemberAccess(_value).SetPropertyTreeList(iKey, iValues);
}

long VYXPropertyAccess::SetPropertyTreeList(const KORUnicodeString& iKey, KORListValVYXPropertyTree&& ioValues) const {
  return MemberAccess(_value).SetPropertyTreeList(iKey, std::move(ioValues));
}

long VYXPropertyAccess::GetPropertyAccess(const KORUnicodeString& iKey, VYXPropertyAccess& oAccess,
                                          bool iCreate) const {
  return MemberAccess(_value).GetPropertyAccess(iKey, oAccess, iCreate);
}

long VYXPropertyAccess::GetListAccess(const KORUnicodeString& iKey, VYXListAccess& oAccess, bool iCreate) const {
  return MemberAccess(_value).GetListAccess(iKey, oAccess, iCreate);
}

long VYXPropertyAccess::RemoveKey(const KORUnicodeString& iKey) const {
  return MemberAccess(_value).RemoveKey(iKey);
}

KORUnicodeString VYXPropertyAccess::Stringify() const {
  return VYX::Internal::TextOfDesignated(_value);
}

std::ostream& operator<<(std::ostream& ioStream, const VYXPropertyAccess& iView) {
  return ioStream << iView.Stringify();
}
