#include "VYXPropertyTreeTransfer.h"

#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

#include "KORSysBase/KORResult.h"
#include "VYXInfStringUtil.h"
#include "VYXInfTransferableFactory.h"
#include "VYXListAccess.h"
#include "VYXPropertyTreeLists.h"
#include "internal/FailureTrace.h"

namespace VYX::Inf {

namespace {

using Internal::CatchAtBoundary;
using Internal::FailureLog;
using Internal::FailureReturn;
using Internal::LogPendingError;
using Object = std::unique_ptr<ITransferable>;
using Objects = std::vector<std::shared_ptr<ITransferable>>;

constexpr const char* kTypeKey = "$type";
constexpr const char* kTooDeep = "Objects nest deeper than 256 levels";
static_assert(PropertyTreeTransmitter::kMaxDepth == 256);

// Whole numbers up to here are exact in the tree.
constexpr std::int64_t kMaxInteger = std::int64_t{1} << 53;

bool IsFieldKey(const KORUnicodeString& iKey) {
  if (iKey == kTypeKey) {
    return FailureReturn(VYX_HERE, false, "The key '", kTypeKey, "' is taken by the type name");
  }
  return true;
}

// Tells whether an operation succeeded; one that did not has written its own reason.
bool Succeeded(const Internal::SourceSite& iSite, long iCode) {
  return iCode >= 0 || (LogPendingError(iCode), FailureReturn(iSite, false));
}

}  // namespace

bool PropertyTreeTransmitter::Transmit(const ITransferable& iObject, VYXPropertyTree& oDocument) {
  return CatchAtBoundary(VYX_HERE, false, [&] {
    VYXPropertyTree document;
    if (!WriteObject(iObject, 1, document)) {
      return FailureReturn(VYX_HERE, false);
    }
    oDocument = std::move(document);
    return true;
  });
}

bool PropertyTreeTransmitter::WriteObject(const ITransferable& iObject, std::size_t iDepth, VYXPropertyTree& oTree) {
  KORUnicodeString type = iObject.GetType();
  if (type.IsEmpty()) {
    return FailureReturn(VYX_HERE, false, "An object has no type name");
  }
  if (!Succeeded(VYX_HERE, oTree.SetString(kTypeKey, std::move(type)))) {
    return false;
  }
  PropertyTreeTransmitter transmitter(oTree, iDepth);
  return iObject.Transfer(transmitter);
}

bool PropertyTreeTransmitter::PutTransferables(const KORUnicodeString& iKey,
                                               const std::vector<std::shared_ptr<const ITransferable>>& iObjects) {
  if (!IsFieldKey(iKey)) {
    return false;
  }
  if (!iObjects.empty() && _depth >= kMaxDepth) {
    return FailureReturn(VYX_HERE, false, kTooDeep);
  }
  KORListValVYXPropertyTree trees;
  for (const std::shared_ptr<const ITransferable>& object : iObjects) {
    if (object == nullptr) {
      return FailureReturn(VYX_HERE, false, "A list holds an empty pointer");
    }
    VYXPropertyTree tree;
    if (!WriteObject(*object, _depth + 1, tree)) {
      return FailureReturn(VYX_HERE, false);
    }
    trees.Append(std::move(tree));
  }
  return Succeeded(VYX_HERE, _tree->SetPropertyTreeList(iKey, std::move(trees)));
}

bool PropertyTreeTransmitter::PutBoolean(const KORUnicodeString& iKey, bool iValue) {
  return IsFieldKey(iKey) && Succeeded(VYX_HERE, _tree->SetBoolean(iKey, iValue));
}

bool PropertyTreeTransmitter::PutInteger(const KORUnicodeString& iKey, std::int64_t iValue) {
  if (iValue > kMaxInteger || iValue < -kMaxInteger) {
    return FailureReturn(VYX_HERE, false, "The integer ", iValue, " of '", iKey, "' is beyond 2^53");
  }
  return IsFieldKey(iKey) && Succeeded(VYX_HERE, _tree->SetInteger(iKey, iValue));
}

bool PropertyTreeTransmitter::PutBinary(const KORUnicodeString& iKey, const QB::Binary& iContent) {
  if (iContent.GetSize() > std::numeric_limits<std::uint32_t>::max()) {
    return FailureReturn(VYX_HERE, false, "The bytes of '", iKey, "' are 4 GiB or more");
  }
  KORUnicodeString text;
  return IsFieldKey(iKey) && Succeeded(VYX_HERE, VYXInfStringUtil::EncodeToBase64(iContent, &text)) &&
         Succeeded(VYX_HERE, _tree->SetString(iKey, std::move(text)));
}

bool PropertyTreeTransmitter::PutDouble(const KORUnicodeString& iKey, double iValue) {
  if (!std::isfinite(iValue)) {
    return FailureReturn(VYX_HERE, false, "The number of '", iKey, "' is infinite or none");
  }
  return IsFieldKey(iKey) && Succeeded(VYX_HERE, _tree->SetDouble(iKey, iValue));
}

bool PropertyTreeTransmitter::PutString(const KORUnicodeString& iKey, const KORUnicodeString& iText) {
  KORUnicodeString text;
  if (text.BuildFromUTF8(iText.CastToCharPtr(), iText.GetLengthInByte()) != 0) {
    return FailureReturn(VYX_HERE, false, "The text of '", iKey, "' is no UTF-8");
  }
  return IsFieldKey(iKey) && Succeeded(VYX_HERE, _tree->SetString(iKey, std::move(text)));
}

PropertyTreeReceiver::PropertyTreeReceiver(VYXPropertyTree iDocument) : _document(std::make_unique<VYXPropertyTree>()) {
  // Held as a member, so that the document is seen through the same view as the objects inside.
  if (_document->SetPropertyTree("", std::move(iDocument)) < 0 ||
      _document->GetPropertyAccess("", _object, false) < 0) {
    FailureLog(VYX_HERE);
  }
}

std::unique_ptr<ITransferable> PropertyTreeReceiver::Rebuild(VYXPropertyTree iDocument) {
  Object object;
  CatchAtBoundary(VYX_HERE, false, [&] {
    object = PropertyTreeReceiver(std::move(iDocument)).RebuildObject();
    return object != nullptr;
  });
  return object;
}

std::unique_ptr<ITransferable> PropertyTreeReceiver::RebuildObject() const {
  KORUnicodeString type;
  if (!GetString(kTypeKey, type)) {
    return FailureReturn(VYX_HERE, Object());
  }
  return TransferableFactory::Create(type, *this);
}

bool PropertyTreeReceiver::GetTransferables(const KORUnicodeString& iKey, Objects& oObjects) const {
  VYXListAccess list;
  std::uint64_t count = 0;
  if (!Succeeded(VYX_HERE, _object.GetListAccess(iKey, list, false)) || !Succeeded(VYX_HERE, list.GetListSize(count))) {
    return false;
  }
  if (count > 0 && _depth >= PropertyTreeTransmitter::kMaxDepth) {
    return FailureReturn(VYX_HERE, false, kTooDeep);
  }
  Objects objects;
  objects.reserve(static_cast<std::size_t>(count));
  for (std::uint64_t index = 0; index < count; ++index) {
    VYXPropertyAccess element;
    if (!Succeeded(VYX_HERE, list.GetPropertyAccess(index, element))) {
      return false;
    }
    objects.push_back(PropertyTreeReceiver(element, _depth + 1).RebuildObject());
    if (objects.back() == nullptr) {
      return FailureReturn(VYX_HERE, false);
    }
  }
  oObjects = std::move(objects);
  return true;
}

bool PropertyTreeReceiver::GetBoolean(const KORUnicodeString& iKey, bool& oValue) const {
  return Succeeded(VYX_HERE, _object.GetBoolean(iKey, oValue));
}

bool PropertyTreeReceiver::GetInteger(const KORUnicodeString& iKey, std::int64_t& oValue) const {
  return Succeeded(VYX_HERE, _object.GetExactInteger(iKey, oValue));
}

bool PropertyTreeReceiver::GetBinary(const KORUnicodeString& iKey, QB::Binary& oContent) const {
  KORUnicodeString text;
  QB::Binary content;
  if (!GetString(iKey, text) || !Succeeded(VYX_HERE, VYXInfStringUtil::DecodeFromBase64(text, &content))) {
    return false;
  }
  oContent = std::move(content);
  return true;
}

bool PropertyTreeReceiver::GetDouble(const KORUnicodeString& iKey, double& oValue) const {
  return Succeeded(VYX_HERE, _object.GetDouble(iKey, oValue));
}

bool PropertyTreeReceiver::GetString(const KORUnicodeString& iKey, KORUnicodeString& oText) const {
  return Succeeded(VYX_HERE, _object.GetString(iKey, oText));
}

}  // namespace VYX::Inf
