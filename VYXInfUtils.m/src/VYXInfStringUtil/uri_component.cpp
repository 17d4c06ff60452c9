#include "VYXInfStringUtil.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view kUnreservedAlphanumerics = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz1234567890";
constexpr std::string_view kUnreservedMarks = "-_.~";

constexpr std::array<bool, 256> kUnreserved = [] {
  std::array<bool, 256> unreserved{};
  for (const std::string_view characters : {kUnreservedAlphanumerics, kUnreservedMarks}) {
    for (const char character : characters) {
      unreserved[static_cast<unsigned char>(character)] = true;
    }
  }
  return unreserved;
}();

bool IsUnreserved(char iChar) noexcept {
  return kUnreserved[static_cast<unsigned char>(iChar)];
}

// The value of a hexadecimal digit, whatever the locale; -1 for any other character.
int HexValue(char iChar) noexcept {
  if (iChar >= '0' && iChar <= '9') {
    return iChar - '0';
  }
  if (iChar >= 'A' && iChar <= 'F') {
    return iChar - 'A' + 10;
  }
  return iChar >= 'a' && iChar <= 'f' ? iChar - 'a' + 10 : -1;
}

// The value of the two hexadecimal digits behind a percent sign; -1 when they are not there.
int EscapedByte(std::string_view iText, std::size_t iPercent) noexcept {
  if (iText.size() - iPercent < 3) {
    return -1;
  }
  const int high = HexValue(iText[iPercent + 1]);
  const int low = HexValue(iText[iPercent + 2]);
  return high < 0 || low < 0 ? -1 : high * 16 + low;
}

}  // namespace

KORUnicodeString VYXInfStringUtil::EncodeURIComponent(const KORUnicodeString& iText) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const std::string_view text = iText.ToStringView();
  const auto kept = static_cast<std::size_t>(std::count_if(text.begin(), text.end(), IsUnreserved));
  if (kept == text.size()) {
    return iText;
  }
  std::string encoded;
  encoded.reserve(kept + 3 * (text.size() - kept));
  for (const char character : text) {
    if (IsUnreserved(character)) {
      encoded.push_back(character);
    } else {
      const auto byte = static_cast<unsigned char>(character);
      const char escape[3] = {'%', kDigits[byte >> 4], kDigits[byte & 0x0F]};
      encoded.append(escape, sizeof escape);
    }
  }
  return KORUnicodeString(std::string_view(encoded));
}

KORUnicodeString VYXInfStringUtil::DecodeURIComponent(const KORUnicodeString& iText) {
  const std::string_view text = iText.ToStringView();
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t position = 0; position < text.size(); ++position) {
    if (text[position] != '%') {
      decoded.push_back(text[position]);
      continue;
    }
    const int byte = EscapedByte(text, position);
    if (byte >= 0) {
      decoded.push_back(static_cast<char>(byte));
      position += 2;
    } else if (++position < text.size()) {
      // The percent sign is dropped; what follows is an ordinary byte, even if it is another percent sign.
      decoded.push_back(text[position]);
    }
  }
  KORUnicodeString result;
  result.BuildFromUTF8(decoded.data(), std::min(decoded.find('\0'), decoded.size()));
  return result;
}

KORUnicodeString VYXInfStringUtil::URIFromLocalFile(const KORUnicodeString& iPath) {
  KORUnicodeString path(iPath);
  path.ReplaceAll("\\", "/");
  return (path.ToStringView().starts_with('/') ? "file://" : "file:///") + path;
}
