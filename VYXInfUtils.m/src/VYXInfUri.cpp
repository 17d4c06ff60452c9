#include "VYXInfUri.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <ostream>
#include <stdexcept>
#include <utility>

#include "KORSysBase/KORResult.h"
#include "internal/FailureTrace.h"
#include "platform/os/console.h"

namespace {

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::FailureLog;
using VYX::Internal::FailureReturn;

constexpr auto kEnd = std::string_view::npos;
constexpr std::string_view kFileScheme = "file";

KORUnicodeString ToUnicode(std::string_view iText) {
  return KORUnicodeString(iText);
}

bool IsLetter(char iChar) noexcept {
  return (iChar >= 'a' && iChar <= 'z') || (iChar >= 'A' && iChar <= 'Z');
}

bool IsDigit(char iChar) noexcept {
  return iChar >= '0' && iChar <= '9';
}

// Reads a number as std::stoul does where unsigned long has 32 bits, with the same errors on every host.
std::uint32_t ParseUnsigned32(std::string_view iText) {
  iText.remove_prefix(std::min(iText.find_first_not_of(" \t\n\v\f\r"), iText.size()));
  const bool isNegative = iText.starts_with('-');
  if (isNegative || iText.starts_with('+')) {
    iText.remove_prefix(1);
  }
  if (iText.empty() || !IsDigit(iText.front())) {
    throw std::invalid_argument("invalid stoul argument");
  }
  std::uint32_t number = 0;
  if (std::from_chars(iText.data(), iText.data() + iText.size(), number).ec != std::errc()) {
    throw std::out_of_range("stoul argument out of range");
  }
  return isNegative ? 0U - number : number;
}

// Takes what stands before the first of iDelimiters (or the end) off the front of ioRest.
std::string_view TakeUntil(std::string_view& ioRest, std::string_view iDelimiters) {
  const std::string_view taken = ioRest.substr(0, ioRest.find_first_of(iDelimiters));
  ioRest.remove_prefix(taken.size());
  return taken;
}

// Steps through the parameters of a query that are not empty.
class Parameters {
 public:
  explicit Parameters(std::string_view iQuery) : _rest(iQuery) {}

  bool Next() {
    _offset += _isStarted ? _current.size() + 1 : 0;
    do {
      if (_rest.empty()) {
        return false;
      }
      _current = TakeUntil(_rest, "&");
      _rest.remove_prefix(_rest.empty() ? 0 : 1);
    } while (_current.empty());
    _isStarted = true;
    return true;
  }

  std::string_view Current() const { return _current; }

  // Where the parameter would stand if exactly one "&" separated neighbours.
  std::size_t Offset() const { return _offset; }

 private:
  std::string_view _rest;
  std::string_view _current;
  std::size_t _offset = 0;
  bool _isStarted = false;
};

std::string KeyPrefix(const KORUnicodeString& iKey) {
  return iKey.ConvertToChar().append("=");
}

bool HasDriveRoot(std::string_view iPath) {
  return iPath.size() > 2 && IsLetter(iPath[0]) && iPath[1] == ':' && iPath[2] == '/';
}

}  // namespace

VYXInfUri::VYXInfUri(const KORUnicodeString& iText) {
  if (Set(iText) < 0) {
    FailureLog(VYX_HERE);
  }
}

long VYXInfUri::Set(const KORUnicodeString& iText) {
  std::string_view rest = iText.ToStringView();
  if (const std::size_t colon = rest.find(':'); colon != kEnd) {
    _scheme = rest.substr(0, colon);
    rest.remove_prefix(colon + 1);
  }
  if (rest.empty()) {
    return S_OK;
  }
  if (rest.starts_with("//")) {
    rest.remove_prefix(2);
    SetAuthority(TakeUntil(rest, "/?#"));
  }
  if (rest.empty()) {
    return S_OK;
  }
  _path = TakeUntil(rest, "?#");
  if (rest.starts_with('?')) {
    rest.remove_prefix(1);
    _query = TakeUntil(rest, "#");
  }
  if (rest.empty()) {
    return S_OK;
  }
  if (rest.front() != '#') {
    return E_INVALIDARG;
  }
  _fragment = rest.substr(1);
  return S_OK;
}

void VYXInfUri::SetAuthority(std::string_view iAuthority) {
  const std::size_t colon = iAuthority.find(':');
  _host = iAuthority.substr(0, colon);
  _port = colon == kEnd ? kNoPort : static_cast<std::int32_t>(ParseUnsigned32(iAuthority.substr(colon + 1)));
}

long VYXInfUri::TrySet(const KORUnicodeString& iText) {
  return CatchAtBoundary(VYX_HERE, E_INVALIDARG, [&] {
    VYXInfUri parsed(*this);
    const long code = parsed.Set(iText);
    if (code < 0) {
      return FailureReturn(VYX_HERE, code);
    }
    *this = std::move(parsed);
    return code;
  });
}

KORUnicodeString VYXInfUri::GetString() const {
  KORUnicodeString text;
  text.Reserve(_scheme.size() + _host.size() + _path.size() + _query.size() + _fragment.size() + 17);
  if (!_scheme.empty()) {
    text.Append(std::string_view(_scheme)).Append(":");
  }
  if (!_host.empty()) {
    text.Append("//").Append(std::string_view(_host));
    if (_port != kNoPort) {
      text.Append(":").Append(std::string_view(std::to_string(_port)));
    }
  } else if (_scheme == kFileScheme) {
    text.Append("//");
  }
  text.Append(std::string_view(_path));
  if (!_query.empty()) {
    text.Append("?").Append(std::string_view(_query));
  }
  if (!_fragment.empty()) {
    text.Append("#").Append(std::string_view(_fragment));
  }
  return text;
}

KORUnicodeString VYXInfUri::GetScheme() const {
  return ToUnicode(_scheme);
}
KORUnicodeString VYXInfUri::GetHost() const {
  return ToUnicode(_host);
}
KORUnicodeString VYXInfUri::GetPath() const {
  return ToUnicode(_path);
}
KORUnicodeString VYXInfUri::GetQuery() const {
  return ToUnicode(_query);
}
KORUnicodeString VYXInfUri::GetFragment() const {
  return ToUnicode(_fragment);
}

void VYXInfUri::SetScheme(const KORUnicodeString& iScheme) {
  _scheme = iScheme.ToStringView();
}
void VYXInfUri::SetHost(const KORUnicodeString& iHost) {
  _host = iHost.ToStringView();
}
void VYXInfUri::SetPath(const KORUnicodeString& iPath) {
  _path = iPath.ToStringView();
}
void VYXInfUri::SetQuery(const KORUnicodeString& iQuery) {
  _query = iQuery.ToStringView();
}
void VYXInfUri::SetFragment(const KORUnicodeString& iFragment) {
  _fragment = iFragment.ToStringView();
}

KORUnicodeString VYXInfUri::GetQuery(const KORUnicodeString& iKey) const {
  const std::string prefix = KeyPrefix(iKey);
  for (Parameters parameters(_query); parameters.Next();) {
    if (parameters.Current().starts_with(prefix)) {
      return ToUnicode(parameters.Current().substr(prefix.size()));
    }
  }
  return {};
}

void VYXInfUri::SetQuery(const KORUnicodeString& iKey, const KORUnicodeString& iValue) {
  if (_query.empty()) {
    throw std::out_of_range("invalid string position");
  }
  const std::string prefix = KeyPrefix(iKey);
  const std::string_view value = iValue.ToStringView();
  for (Parameters parameters(_query); parameters.Next();) {
    if (parameters.Current().starts_with(prefix)) {
      const std::size_t length = parameters.Current().size() - prefix.size();
      _query.replace(parameters.Offset() + prefix.size(), length, value);
      return;
    }
  }
  _query.reserve(_query.size() + 1 + prefix.size() + value.size());
  _query.append("&").append(prefix).append(value);
}

long VYXInfUri::TrySetQuery(const KORUnicodeString& iKey, const KORUnicodeString& iValue) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&] {
    SetQuery(iKey, iValue);
    return S_OK;
  });
}

VYXInfUri VYXInfUri::FromLocalPath(const KORUnicodeString& iPath) {
  std::string path = iPath.ConvertToChar();
  std::replace(path.begin(), path.end(), '\\', '/');
  const std::string_view prefix = HasDriveRoot(path) ? "file:///" : "file://";
  return VYXInfUri(ToUnicode(path.insert(0, prefix)));
}

long VYXInfUri::ToLocalPath(KORUnicodeString& oPath) const {
  if (_scheme != kFileScheme) {
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  const std::string joined = _host + _path;
  std::string_view path = joined;
  if (path.size() > 2 && path[0] == '/' && IsLetter(path[1]) && path[2] == ':') {
    path.remove_prefix(1);
  }
  oPath = ToUnicode(path);
  return S_OK;
}

bool VYXInfUri::IsEmpty() const noexcept {
  return *this == VYXInfUri();
}

void VYXInfUri::DebugPrint() const {
  std::string lines = "scheme:   " + _scheme;
  lines.append("\nhost:     ").append(_host);
  lines.append("\nport:     ").append(std::to_string(_port));
  lines.append("\npath:     ").append(_path);
  lines.append("\nquery:    ").append(_query);
  lines.append("\nfragment: ").append(_fragment).append("\n");
  VYX::Os::WriteConsole(lines);
}

std::size_t VYXInfUri::Hash() const noexcept {
  std::size_t hash = std::hash<std::int32_t>()(_port);
  for (const std::string* const component : {&_scheme, &_host, &_path, &_query, &_fragment}) {
    hash = hash * 31 + std::hash<std::string>()(*component);
  }
  return hash;
}

std::ostream& operator<<(std::ostream& ioStream, const VYXInfUri& iUri) {
  return ioStream << iUri.GetString();
}
