#include "VYXInfMediaBase.h"

#include <utility>

#include "internal/FailureTrace.h"

namespace VYX::Inf {

namespace {

using Internal::FailureReturn;

constexpr const char* kNameKey = "mediaName";
constexpr const char* kDescriptionKey = "mediaDescription";

}  // namespace

MediaBase::~MediaBase() = default;

KORUnicodeString MediaBase::GetType() const {
  return kType;
}

bool MediaBase::Transfer(ITransmitter& ioTransmitter) const {
  if (!ioTransmitter.PutString(kNameKey, _name)) {
    return FailureReturn(VYX_HERE, false);
  }
  if (!ioTransmitter.PutString(kDescriptionKey, _description)) {
    return FailureReturn(VYX_HERE, false);
  }
  return true;
}

bool MediaBase::Receive(const IReceiver& iReceiver) {
  KORUnicodeString name;
  KORUnicodeString description;
  if (!iReceiver.GetString(kNameKey, name) || !iReceiver.GetString(kDescriptionKey, description)) {
    return FailureReturn(VYX_HERE, false);
  }
  _name = std::move(name);
  _description = std::move(description);
  return true;
}

bool MediaBase::SetName(const KORUnicodeString& iName) {
  _name = iName;
  return true;
}

bool MediaBase::SetDescription(const KORUnicodeString& iDescription) {
  _description = iDescription;
  return true;
}

}  // namespace VYX::Inf
