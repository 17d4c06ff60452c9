#include "VYXInfLoadableContent.h"

#include <string_view>
#include <utility>

#include "VYXInfStringUtil.h"
#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"

namespace VYX::Inf {

namespace {

using Internal::FailureLog;
using Internal::FailureReturn;
using Internal::LogPendingError;

constexpr const char* kLocationKey = "location";
constexpr const char* kContentKey = "content";
constexpr std::string_view kLocalPrefix = "file:///";

// The path that a location names; empty where it names none.
KORUnicodeString LocalPath(const KORUnicodeString& iLocation) {
  if (!VYXInfStringUtil::StartsWith(iLocation, KORUnicodeString(kLocalPrefix), false)) {
    return {};
  }
  return KORUnicodeString(iLocation.ToStringView().substr(kLocalPrefix.size()));
}

}  // namespace

ITransferable::~ITransferable() = default;

LoadableContent::LoadableContent(const KORUnicodeString& iLocation) : _location(iLocation) {}

LoadableContent::LoadableContent(const QB::Binary& iContent) : _content(iContent) {}

LoadableContent::LoadableContent(const KORUnicodeString& iLocation, const QB::Binary& iContent)
    : _location(iLocation), _content(iContent) {}

LoadableContent::~LoadableContent() = default;

KORUnicodeString LoadableContent::GetType() const {
  return kType;
}

bool LoadableContent::Transfer(ITransmitter& ioTransmitter) const {
  if (!ioTransmitter.PutString(kLocationKey, _location)) {
    return FailureReturn(VYX_HERE, false);
  }
  if (!ioTransmitter.PutBinary(kContentKey, _content)) {
    return FailureReturn(VYX_HERE, false);
  }
  return true;
}

bool LoadableContent::Receive(const IReceiver& iReceiver) {
  KORUnicodeString location;
  QB::Binary content;
  if (!iReceiver.GetString(kLocationKey, location) || !iReceiver.GetBinary(kContentKey, content)) {
    return FailureReturn(VYX_HERE, false);
  }
  _location = std::move(location);
  _content = std::move(content);
  return true;
}

QB::Binary LoadableContent::GetBinary() const {
  if (!_content.IsEmpty()) {
    return _content;
  }
  const KORUnicodeString path = LocalPath(_location);
  if (path.IsEmpty()) {
    return _content;
  }
  const long code = VYXInfSystemUtil::ReadFile(path, _content, true);
  if (code < 0) {
    LogPendingError(code);
    FailureLog(VYX_HERE);
  }
  return _content;
}

std::uint64_t LoadableContent::GetSize() const {
  if (!_content.IsEmpty()) {
    return _content.GetSize();
  }
  const KORUnicodeString path = LocalPath(_location);
  if (path.IsEmpty()) {
    return 0;
  }
  unsigned int size = 0;
  const long code = VYXInfSystemUtil::GetFileSize(path, size);
  if (code < 0) {
    LogPendingError(code);
    return FailureReturn(VYX_HERE, std::uint64_t{0});
  }
  return size;
}

}  // namespace VYX::Inf
