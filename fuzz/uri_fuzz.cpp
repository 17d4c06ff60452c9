#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXInfUri.h"
#include "fuzz/support/fuzz_input.h"
#include "fuzz/support/require.h"

// URIs taken apart against a plain splitter, and put together again.

namespace {

using namespace VYX::Fuzz;

struct Parts {
  std::string scheme, host, path, query, fragment;
  std::int32_t port = VYXInfUri::kNoPort;
};

// What follows the colon of an authority: an unsigned 32-bit number as std::stoul reads one; nothing where it throws.
std::optional<std::int32_t> PlainPort(const std::string& iText) {
  std::size_t at = 0;
  while (at < iText.size() && (iText[at] == ' ' || (iText[at] >= '\t' && iText[at] <= '\r'))) {
    ++at;
  }
  const bool isNegative = at < iText.size() && iText[at] == '-';
  at += at < iText.size() && (iText[at] == '-' || iText[at] == '+') ? 1U : 0U;
  const std::size_t start = at;
  std::uint64_t number = 0;
  for (; at < iText.size() && iText[at] >= '0' && iText[at] <= '9'; ++at) {
    number = number * 10 + static_cast<std::uint64_t>(iText[at] - '0');
    if (number > 0xFFFFFFFFU) {
      return std::nullopt;
    }
  }
  if (at == start) {
    return std::nullopt;
  }
  const auto value = static_cast<std::uint32_t>(number);
  return static_cast<std::int32_t>(isNegative ? 0U - value : value);
}

// One character after the other; each delimiter moves on to a later component.
std::optional<Parts> PlainSplit(std::string_view iText) {
  Parts parts;
  if (const std::size_t colon = iText.find(':'); colon != std::string_view::npos) {
    parts.scheme = iText.substr(0, colon);
    iText = iText.substr(colon + 1);
  }
  std::string authority;
  const bool hasAuthority = iText.size() >= 2 && iText[0] == '/' && iText[1] == '/';
  std::string* part = hasAuthority ? &authority : &parts.path;
  for (const char character : hasAuthority ? iText.substr(2) : iText) {
    const bool isBeforeFragment = part != &parts.fragment;
    if (part == &authority && character == '/') {
      part = &parts.path;
      part->push_back(character);
    } else if (isBeforeFragment && character == '#') {
      part = &parts.fragment;
    } else if (isBeforeFragment && part != &parts.query && character == '?') {
      part = &parts.query;
    } else {
      part->push_back(character);
    }
  }
  const std::size_t colon = authority.find(':');
  parts.host = authority.substr(0, colon);
  if (colon != std::string::npos) {
    const std::optional<std::int32_t> port = PlainPort(authority.substr(colon + 1));
    if (!port) {
      return std::nullopt;
    }
    parts.port = *port;
  }
  return parts;
}

std::string PlainJoin(const Parts& iParts) {
  std::string text = iParts.scheme.empty() ? "" : iParts.scheme + ":";
  if (!iParts.host.empty() || iParts.scheme == "file") {
    text += "//" + iParts.host;
  }
  if (!iParts.host.empty() && iParts.port != VYXInfUri::kNoPort) {
    text += ":" + std::to_string(iParts.port);
  }
  text += iParts.path;
  text += iParts.query.empty() ? "" : "?" + iParts.query;
  text += iParts.fragment.empty() ? "" : "#" + iParts.fragment;
  return text;
}

void CheckSplit(const VYXInfUri& iUri, const Parts& iParts) {
  RequireEqual(iUri.GetScheme().ToStringView(), iParts.scheme, "the scheme");
  RequireEqual(iUri.GetHost().ToStringView(), iParts.host, "the host");
  Require(iUri.GetPort() == iParts.port, "the port");
  RequireEqual(iUri.GetPath().ToStringView(), iParts.path, "the path");
  RequireEqual(iUri.GetQuery().ToStringView(), iParts.query, "the query");
  RequireEqual(iUri.GetFragment().ToStringView(), iParts.fragment, "the fragment");
  RequireEqual(iUri.GetString().ToStringView(), PlainJoin(iParts), "the text");
}

// A parameter that was set is the one that is found.
void CheckQuery(VYXInfUri ioUri, std::string_view iKey, std::string_view iValue) {
  const bool hasQuery = !ioUri.GetQuery().IsEmpty();
  const bool isPlainQuery = ("&" + ioUri.GetQuery().ConvertToChar() + "&").find("&&") == std::string::npos;
  const KORUnicodeString key(iKey);
  Require((ioUri.TrySetQuery(key, KORUnicodeString(iValue)) >= 0) == hasQuery, "a query can be changed, not started");
  const bool isPlain = iKey.find_first_of("&=") == std::string_view::npos && iValue.find('&') == std::string_view::npos;
  if (hasQuery && isPlainQuery && isPlain) {
    RequireEqual(ioUri.GetQuery(key).ToStringView(), iValue, "the parameter that was set");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  FuzzInput input(iData, iSize);
  const std::string_view key = input.Piece(10);
  const std::string_view value = input.Piece(10);
  const std::string_view text = input.Rest();
  VYXInfUri uri;
  const std::optional<Parts> parts = PlainSplit(text);
  Require((uri.TrySet(KORUnicodeString(text)) >= 0) == parts.has_value(), "only a bad port is refused");
  if (!parts) {
    Require(uri.IsEmpty(), "a refused text changes nothing");
    return 0;
  }
  CheckSplit(uri, *parts);
  CheckQuery(uri, key, value);
  KORUnicodeString path("untouched");
  Require((uri.ToLocalPath(path) >= 0) == (parts->scheme == "file"), "only file URIs have a local path");
  return 0;
}
