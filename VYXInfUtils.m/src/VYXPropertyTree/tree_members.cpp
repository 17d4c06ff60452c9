#include <utility>

#include "VYXPropertyTree.h"
#include "VYXPropertyTree/member_access.h"

// The operations by key, applied to the root.

using VYX::Internal::MemberAccess;

long VYXPropertyTree::GetBoolean(const KORUnicodeString& iKey, bool& oValue) const {
  return MemberAccess(_root.get()).GetBoolean(iKey, oValue);
}

long VYXPropertyTree::GetDouble(const KORUnicodeString& iKey, double& oValue) const {
  return MemberAccess(_root.get()).GetDouble(iKey, oValue);
}

long VYXPropertyTree::GetInteger(const KORUnicodeString& iKey, std::int64_t& oValue) const {
  return MemberAccess(_root.get()).GetInteger(iKey, oValue);
}

long VYXPropertyTree::GetExactInteger(const KORUnicodeString& iKey, std::int64_t& oValue) const {
  return MemberAccess(_root.get()).GetExactInteger(iKey, oValue);
}

long VYXPropertyTree::TryGetInteger(const KORUnicodeString& iKey, std::int64_t& oValue) const {
  return MemberAccess(_root.get()).TryGetInteger(iKey, oValue);
}

long VYXPropertyTree::TryGetPropertyTree(const KORUnicodeString& iKey, VYXPropertyTree& oValue) const {
  return MemberAccess(_root.get()).TryGetPropertyTree(iKey, oValue);
}

long VYXPropertyTree::TryGetPropertyTreeList(const KORUnicodeString& iKey, KORListValVYXPropertyTree& oValues) const {
  return MemberAccess(_root.get()).TryGetPropertyTreeList(iKey, oValues);
}

long VYXPropertyTree::GetString(const KORUnicodeString& iKey, KORUnicodeString& oValue) const {
  return MemberAccess(_root.get()).GetString(iKey, oValue);
}

long VYXPropertyTree::GetPropertyTree(const KORUnicodeString& iKey, VYXPropertyTree& oValue) const {
  return MemberAccess(_root.get()).GetPropertyTree(iKey, oValue);
}

long VYXPropertyTree::GetBooleanList(const KORUnicodeString& iKey, KORListValvyx_bool& oValues) const {
  return MemberAccess(_root.get()).GetBooleanList(iKey, oValues);
}

long VYXPropertyTree::GetDoubleList(const KORUnicodeString& iKey, KORRawColldouble& oValues) const {
  return MemberAccess(_root.get()).GetDoubleList(iKey, oValues);
}

long VYXPropertyTree::GetIntegerList(const KORUnicodeString& iKey, KORListValvyx_int64_t& oValues) const {
  return MemberAccess(_root.get()).GetIntegerList(iKey, oValues);
}

long VYXPropertyTree::GetStringList(const KORUnicodeString& iKey, KORListValKORUnicodeString& oValues) const {
  return MemberAccess(_root.get()).GetStringList(iKey, oValues);
}

long VYXPropertyTree::GetPropertyTreeList(const KORUnicodeString& iKey, KORListValVYXPropertyTree& oValues) const {
  return MemberAccess(_root.get()).GetPropertyTreeList(iKey, oValues);
}

long VYXPropertyTree::GetKeys(KORListValKORUnicodeString& ioKeys) const {
  return MemberAccess(_root.get()).GetKeys(ioKeys);
}

bool VYXPropertyTree::HasKey(const KORUnicodeString& iKey) const {
  return MemberAccess(_root.get()).HasKey(iKey);
}

bool VYXPropertyTree::IsBoolean(const KORUnicodeString& iKey) const {
  return MemberAccess(_root.get()).Is(json::Kind::Boolean, iKey);
}

bool VYXPropertyTree::IsNumber(const KORUnicodeString& iKey) const {
  return MemberAccess(_root.get()).Is(json::Kind::Number, iKey);
}

bool VYXPropertyTree::IsString(const KORUnicodeString& iKey) const {
  return MemberAccess(_root.get()).Is(json::Kind::String, iKey);
}

bool VYXPropertyTree::IsPropertyTree(const KORUnicodeString& iKey) const {
  return MemberAccess(_root.get()).Is(json::Kind::Object, iKey);
}

bool VYXPropertyTree::IsBooleanList(const KORUnicodeString& iKey) const {
  return MemberAccess(_root.get()).IsListOf(json::Kind::Boolean, iKey);
}

bool VYXPropertyTree::IsNumberList(const KORUnicodeString& iKey) const {
  return MemberAccess(_root.get()).IsListOf(json::Kind::Number, iKey);
}

bool VYXPropertyTree::IsStringList(const KORUnicodeString& iKey) const {
  return MemberAccess(_root.get()).IsListOf(json::Kind::String, iKey);
}

bool VYXPropertyTree::IsPropertyTreeList(const KORUnicodeString& iKey) const {
  return MemberAccess(_root.get()).IsListOf(json::Kind::Object, iKey);
}

long VYXPropertyTree::SetBoolean(const KORUnicodeString& iKey, bool iValue) {
  return MemberAccess(_root.get()).SetBoolean(iKey, iValue);
}

long VYXPropertyTree::SetDouble(const KORUnicodeString& iKey, double iValue) {
  return MemberAccess(_root.get()).SetDouble(iKey, iValue);
}

long VYXPropertyTree::SetInteger(const KORUnicodeString& iKey, std::int64_t iValue) {
  return MemberAccess(_root.get()).SetInteger(iKey, iValue);
}

long VYXPropertyTree::SetString(const KORUnicodeString& iKey, const KORUnicodeString& iValue) {
  return MemberAccess(_root.get()).SetString(iKey, iValue);
}

long VYXPropertyTree::SetString(const KORUnicodeString& iKey, KORUnicodeString&& ioValue) {
  return MemberAccess(_root.get()).SetString(iKey, std::move(ioValue));
}

long VYXPropertyTree::SetPropertyTree(const KORUnicodeString& iKey, const VYXPropertyTree& iValue) {
  return MemberAccess(_root.get()).SetPropertyTree(iKey, iValue);
}

long VYXPropertyTree::SetPropertyTree(const KORUnicodeString& iKey, VYXPropertyTree&& ioValue) {
  return MemberAccess(_root.get()).SetPropertyTree(iKey, std::move(ioValue));
}

long VYXPropertyTree::SetBooleanList(const KORUnicodeString& iKey, const KORListValvyx_bool& iValues) {
  return MemberAccess(_root.get()).SetBooleanList(iKey, iValues);
}

long VYXPropertyTree::SetDoubleList(const KORUnicodeString& iKey, const KORRawColldouble& iValues) {
  return MemberAccess(_root.get()).SetDoubleList(iKey, iValues);
}

long VYXPropertyTree::SetIntegerList(const KORUnicodeString& iKey, const KORListValvyx_int64_t& iValues) {
  return MemberAccess(_root.get()).SetIntegerList(iKey, iValues);
}

long VYXPropertyTree::SetStringList(const KORUnicodeString& iKey, const KORListValKORUnicodeString& iValues) {
  return MemberAccess(_root.get()).SetStringList(iKey, iValues);
}

long VYXPropertyTree::SetStringList(const KORUnicodeString& iKey, KORListValKORUnicodeString&& ioValues) {
  return MemberAccess(_root.get()).SetStringList(iKey, std::move(ioValues));
}

long VYXPropertyTree::SetPropertyTreeList(const KORUnicodeString& iKey, const KORListValVYXPropertyTree& iValues) {
  return MemberAccess(_root.get()).SetPropertyTreeList(iKey, iValues);
}

long VYXPropertyTree::SetPropertyTreeList(const KORUnicodeString& iKey, KORListValVYXPropertyTree&& ioValues) {
  return MemberAccess(_root.get()).SetPropertyTreeList(iKey, std::move(ioValues));
}

long VYXPropertyTree::GetPropertyAccess(const KORUnicodeString& iKey, VYXPropertyAccess& oAccess, bool iCreate) {
  return MemberAccess(_root.get()).GetPropertyAccess(iKey, oAccess, iCreate);
}

long VYXPropertyTree::GetListAccess(const KORUnicodeString& iKey, VYXListAccess& oAccess, bool iCreate) {
  return MemberAccess(_root.get()).GetListAccess(iKey, oAccess, iCreate);
}
