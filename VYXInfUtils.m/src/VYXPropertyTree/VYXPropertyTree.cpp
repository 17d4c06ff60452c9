#include "VYXPropertyTree.h"

#include <cmath>
#include <new>
#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>

#include "VYXPropertyTree/compact_text.h"
#include "VYXPropertyTree/member_access.h"
#include "VYXPropertyTree/number_text.h"
#include "VYXPropertyTree/strict_text.h"
#include "VYXPropertyTree/tree_access.h"
#include "internal/FailureTrace.h"

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::FailureReturn;

namespace VYX::Internal {

void TreeAccess::Replace(VYXPropertyTree& oTree, json::Object&& ioMembers) {
  if (oTree._root == nullptr) {
    oTree._root = std::make_unique<json::Object>();
  }
  *oTree._root = std::move(ioMembers);
}

std::int64_t TruncatedInteger(double iNumber) noexcept {
  constexpr double kLimit = 9223372036854775808.0;  // 2^63
  const bool fits = iNumber >= -kLimit && iNumber < kLimit;
  return fits ? static_cast<std::int64_t>(iNumber) : INT64_MIN;
}

std::int64_t ExactInteger(double iNumber) {
  constexpr double kLargestExact = 9007199254740992.0;  // 2^53
  const bool isInteger = std::trunc(iNumber) == iNumber && std::isfinite(iNumber);
  if (isInteger && std::fabs(iNumber) <= kLargestExact) {
    return static_cast<std::int64_t>(iNumber);
  }
  char digits[json::kNumberTextSize];
  const std::string text(digits, json::WriteNumber(digits, iNumber));
  throw std::range_error("The number " + text + (isInteger ? " is beyond 2^53" : " is no integer"));
}

}  // namespace VYX::Internal

VYXPropertyTree::VYXPropertyTree() noexcept : _root(new (std::nothrow) json::Object()) {}

VYXPropertyTree::VYXPropertyTree(const VYXPropertyTree& iOther)
    : _root(iOther._root == nullptr ? nullptr : std::make_unique<json::Object>(*iOther._root)) {}

VYXPropertyTree::VYXPropertyTree(VYXPropertyTree&& ioOther) noexcept : _root(std::move(ioOther._root)) {
  ioOther._root.reset(new (std::nothrow) json::Object());
}

VYXPropertyTree& VYXPropertyTree::operator=(const VYXPropertyTree& iOther) {
  if (this != &iOther) {
    VYXPropertyTree copy(iOther);
    _root.swap(copy._root);
  }
  return *this;
}

VYXPropertyTree& VYXPropertyTree::operator=(VYXPropertyTree&& ioOther) noexcept {
  if (this != &ioOther) {
    _root = std::move(ioOther._root);
    ioOther._root.reset(new (std::nothrow) json::Object());
  }
  return *this;
}

VYXPropertyTree::~VYXPropertyTree() = default;

bool VYXPropertyTree::operator==(const VYXPropertyTree& iOther) const {
  if (_root == nullptr) {
    return FailureReturn(VYX_HERE, true);
  }
  if (iOther._root == nullptr) {
    return FailureReturn(VYX_HERE, true);
  }
  return CatchAtBoundary(VYX_HERE, false, [&] { return json::HaveEqualText(*_root, *iOther._root); });
}

long VYXPropertyTree::Stringify(KORUnicodeString& oText) const {
  if (_root == nullptr) {
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    oText = json::CompactText(*_root);
    return S_OK;
  });
}

std::ostream& operator<<(std::ostream& ioStream, const VYXPropertyTree& iTree) {
  KORUnicodeString text;
  if (iTree.Stringify(text) < 0) {
    ioStream.setstate(std::ios_base::failbit);
    return ioStream;
  }
  return ioStream << text;
}

long VYXPropertyTree::RemoveKey(const KORUnicodeString& iKey) {
  if (!HasKey(iKey)) {
    return FailureReturn(VYX_HERE, E_FAIL, "Key '", iKey, "' not found");
  }
  _root->Erase(iKey);
  return S_OK;
}

long VYXPropertyTreeUtils::StringifyStrict(const VYXPropertyTree& iTree, KORUnicodeString& oText, int iIndent) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    const json::Object* const root = VYX::Internal::TreeAccess::Root(iTree);
    if (root == nullptr) {
      return FailureReturn(VYX_HERE, E_FAIL);
    }
    oText = json::StrictText(*root, iIndent);
    return S_OK;
  });
}

KORUnicodeString VYXPropertyTreeUtils::StringifyStrict(const VYXPropertyTree& iTree, int iIndent) {
  KORUnicodeString text;
  const long code = StringifyStrict(iTree, text, iIndent);
  if (code < 0) {
    VYX::Internal::LogPendingError(code);
    VYX::Internal::FailureLog(VYX_HERE);
  }
  return text;
}

KORUnicodeString VYXPropertyTreeUtils::Stringify(const VYXPropertyTree& iTree) {
  KORUnicodeString text;
  const long code = iTree.Stringify(text);
  if (code < 0) {
    VYX::Internal::LogPendingError(code);
    VYX::Internal::FailureLog(VYX_HERE);
  }
  return text;
}
