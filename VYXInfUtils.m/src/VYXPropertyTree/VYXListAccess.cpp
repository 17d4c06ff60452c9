#include "VYXListAccess.h"

#include <ostream>
#include <utility>

#include "VYXPropertyAccess.h"
#include "VYXPropertyTree/designated_text.h"
#include "VYXPropertyTree/tree_access.h"
#include "VYXPropertyTree/value.h"
#include "internal/FailureTrace.h"

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::ExactInteger;
using VYX::Internal::FailureReturn;
using VYX::Internal::LogPendingError;
using VYX::Internal::SourceSite;
using VYX::Internal::TreeAccess;
using VYX::Internal::TruncatedInteger;

namespace {

/// Runs an operation on the designated array; exceptions tell what is unfit, and are traced. A caller that reports
/// pending errors does so also where nothing is designated.
template <class Operation>
long WithArray(const SourceSite& iSite, json::Value* iDesignated, Operation&& iOperation,
               bool iReportsPending = false) {
  return CatchAtBoundary(iSite, E_FAIL, [&]() -> long {
    if (iDesignated == nullptr) {
      if (iReportsPending) {
        LogPendingError(E_FAIL);
      }
      return FailureReturn(iSite, E_FAIL);
    }
    iOperation(iDesignated->GetArray());
    return S_OK;
  });
}

/// Lets a view designate an element that holds the alternative of iKind.
template <class Access>
long DesignateElement(const SourceSite& iSite, json::Value* iDesignated, std::uint64_t iIndex, json::Kind iKind,
                      Access&& iAccess) {
  return WithArray(iSite, iDesignated, [&](json::Array& ioArray) {
    json::Value& element = ioArray.At(iIndex);
    if (element.GetKind() != iKind) {
      throw json::BadVariantAccess();
    }
    iAccess(element);
  });
}

}  // namespace

long VYXListAccess::GetListSize(std::uint64_t& oSize) const {
  return WithArray(VYX_HERE, _value, [&](const json::Array& iArray) { oSize = iArray.Size(); });
}

long VYXListAccess::GetBoolean(std::uint64_t iIndex, bool& oValue) const {
  return WithArray(VYX_HERE, _value, [&](const json::Array& iArray) { oValue = iArray.At(iIndex).GetBoolean(); });
}

long VYXListAccess::GetDouble(std::uint64_t iIndex, double& oValue) const {
  return WithArray(VYX_HERE, _value, [&](const json::Array& iArray) { oValue = iArray.At(iIndex).GetNumber(); });
}

long VYXListAccess::GetInteger(std::uint64_t iIndex, std::int64_t& oValue) const {
  return WithArray(
      VYX_HERE, _value, [&](const json::Array& iArray) { oValue = TruncatedInteger(iArray.At(iIndex).GetNumber()); },
      true);
}

long VYXListAccess::GetExactInteger(std::uint64_t iIndex, std::int64_t& oValue) const {
  return WithArray(
      VYX_HERE, _value, [&](const json::Array& iArray) { oValue = ExactInteger(iArray.At(iIndex).GetNumber()); }, true);
}

long VYXListAccess::GetString(std::uint64_t iIndex, KORUnicodeString& oValue) const {
  return WithArray(VYX_HERE, _value, [&](const json::Array& iArray) { oValue = iArray.At(iIndex).GetString(); });
}

long VYXListAccess::GetPropertyTree(std::uint64_t iIndex, VYXPropertyTree& oValue) const {
  return WithArray(VYX_HERE, _value, [&](const json::Array& iArray) {
    TreeAccess::Replace(oValue, json::Object(iArray.At(iIndex).GetObject()));
  });
}

long VYXListAccess::GetPropertyAccess(std::uint64_t iIndex, VYXPropertyAccess& oAccess) const {
  return DesignateElement(VYX_HERE, _value, iIndex, json::Kind::Object,
                          [&](json::Value& ioElement) { oAccess = VYXPropertyAccess(ioElement); });
}

long VYXListAccess::GetListAccess(std::uint64_t iIndex, VYXListAccess& oAccess) const {
  return DesignateElement(VYX_HERE, _value, iIndex, json::Kind::Array,
                          [&](json::Value& ioElement) { oAccess = VYXListAccess(ioElement); });
}

long VYXListAccess::AddBoolean(const bool& iValue) const {
  return WithArray(VYX_HERE, _value, [&](json::Array& ioArray) { ioArray.Append(json::Value(iValue)); });
}

long VYXListAccess::AddDouble(const double& iValue) const {
  return WithArray(VYX_HERE, _value, [&](json::Array& ioArray) { ioArray.Append(json::Value(iValue)); });
}

long VYXListAccess::AddInteger(const std::int64_t& iValue) const {
  return WithArray(VYX_HERE, _value,
                   [&](json::Array& ioArray) { ioArray.Append(json::Value(static_cast<double>(iValue))); });
}

long VYXListAccess::AddString(const KORUnicodeString& iValue) const {
  return WithArray(VYX_HERE, _value, [&](json::Array& ioArray) { ioArray.Append(json::Value(iValue)); });
}

long VYXListAccess::AddString(KORUnicodeString&& ioValue) const {
  return WithArray(VYX_HERE, _value, [&](json::Array& ioArray) {
    json::Value& element = ioArray.Append(json::Value());
    element = json::Value(std::move(ioValue));
  });
}

long VYXListAccess::AddPropertyTree(const VYXPropertyTree& iValue) const {
  const json::Object* const root = TreeAccess::Root(iValue);
  if (root == nullptr) {
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  return WithArray(VYX_HERE, _value, [&](json::Array& ioArray) { ioArray.Append(json::Value(json::Object(*root))); });
}

long VYXListAccess::AddPropertyTree(VYXPropertyTree&& ioValue) const {
  json::Object* const root = TreeAccess::Root(ioValue);
  if (root == nullptr) {
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  return WithArray(VYX_HERE, _value, [&](json::Array& ioArray) {
    json::Value& element = ioArray.Append(json::Value());
    element = json::Value(std::move(*root));
  });
}

long VYXListAccess::SetBoolean(std::uint64_t iIndex, const bool& iValue) const {
  return WithArray(VYX_HERE, _value, [&](json::Array& ioArray) { ioArray.At(iIndex) = json::Value(iValue); });
}

long VYXListAccess::SetDouble(std::uint64_t iIndex, const double& iValue) const {
  return WithArray(VYX_HERE, _value, [&](json::Array& ioArray) { ioArray.At(iIndex) = json::Value(iValue); });
}

long VYXListAccess::SetInteger(std::uint64_t iIndex, const std::int64_t& iValue) const {
  return WithArray(VYX_HERE, _value,
                   [&](json::Array& ioArray) { ioArray.At(iIndex) = json::Value(static_cast<double>(iValue)); });
}

long VYXListAccess::SetString(std::uint64_t iIndex, const KORUnicodeString& iValue) const {
  return WithArray(VYX_HERE, _value, [&](json::Array& ioArray) { ioArray.At(iIndex) = json::Value(iValue); });
}

long VYXListAccess::SetString(std::uint64_t iIndex, KORUnicodeString&& ioValue) const {
  return WithArray(VYX_HERE, _value, [&](json::Array& ioArray) {
    json::Value& element = ioArray.At(iIndex);
    element = json::Value(std::move(ioValue));
  });
}

long VYXListAccess::SetPropertyTree(std::uint64_t iIndex, const VYXPropertyTree& iValue) const {
  const json::Object* const root = TreeAccess::Root(iValue);
  if (root == nullptr) {
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  return WithArray(VYX_HERE, _value, [&](json::Array& ioArray) {
    json::Value& element = ioArray.At(iIndex);
    element = json::Value(json::Object(*root));
  });
}

long VYXListAccess::SetPropertyTree(std::uint64_t iIndex, VYXPropertyTree&& ioValue) const {
  json::Object* const root = TreeAccess::Root(ioValue);
  if (root == nullptr) {
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  return WithArray(VYX_HERE, _value, [&](json::Array& ioArray) {
    json::Value& element = ioArray.At(iIndex);
    element = json::Value(std::move(*root));
  });
}

KORUnicodeString VYXListAccess::Stringify() const {
  return VYX::Internal::TextOfDesignated(_value);
}

std::ostream& operator<<(std::ostream& ioStream, const VYXListAccess& iView) {
  return ioStream << iView.Stringify();
}
