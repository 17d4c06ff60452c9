#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXInfStringUtil.h"
#include "fuzz/support/characters.h"
#include "fuzz/support/require.h"

// Percent-encoding there and back, decoding of any text against a plain decoder, and the other escapes.

namespace {

using namespace VYX::Fuzz;

constexpr std::string_view kDigits = "0123456789ABCDEF";
constexpr std::string_view kUnreserved = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.~";

std::string PlainEncoding(std::string_view iBytes) {
  std::string text;
  for (const char byte : iBytes) {
    const auto value = static_cast<unsigned char>(byte);
    text += kUnreserved.find(byte) != std::string_view::npos
                ? std::string(1, byte)
                : std::string{'%', kDigits[value / 16], kDigits[value % 16]};
  }
  return text;
}

int Digit(char iChar) {
  const char upper = iChar >= 'a' && iChar <= 'f' ? static_cast<char>(iChar - 'a' + 'A') : iChar;
  const std::size_t value = kDigits.find(upper);
  return value == std::string_view::npos ? -1 : static_cast<int>(value);
}

std::string PlainDecoding(std::string_view iText) {
  std::string bytes;
  while (!iText.empty()) {
    std::size_t taken = 1;
    if (iText[0] != '%') {
      bytes += iText[0];
    } else if (iText.size() >= 3 && Digit(iText[1]) >= 0 && Digit(iText[2]) >= 0) {
      bytes += static_cast<char>(Digit(iText[1]) * 16 + Digit(iText[2]));
      taken = 3;
    } else if (iText.size() >= 2) {
      bytes += iText[1];
      taken = 2;
    }
    iText.remove_prefix(taken);
  }
  bytes.resize(std::min(bytes.find('\0'), bytes.size()));
  return AreWellFormed(Characters(bytes)) ? bytes : std::string();
}

// An unescaped quote would end the literal; what is escaped can be told apart again.
void CheckScriptLiteral(const KORUnicodeString& iText) {
  const KORUnicodeString escaped = VYXInfStringUtil::EscapeStringForJS(iText);
  constexpr std::string_view kShort = "\\\"bfnrt";
  constexpr std::string_view kMeant = "\\\"\b\f\n\r\t";
  std::string back;
  const std::string_view text = escaped.ToStringView();
  for (std::size_t at = 0; at < text.size(); ++at) {
    Require(text[at] != '"' && text[at] != '\n' && text[at] != '\r', "nothing ends the literal");
    if (text[at] != '\\') {
      back += text[at];
      continue;
    }
    const std::size_t kind = ++at < text.size() ? kShort.find(text[at]) : std::string_view::npos;
    Require(kind != std::string_view::npos, "a known escape");
    back += kMeant[kind];
  }
  RequireEqual(back, iText.ToStringView(), "the literal means the text");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  const std::string_view input(reinterpret_cast<const char*>(iData), iSize);
  const KORUnicodeString text(input);
  const KORUnicodeString encoded = VYXInfStringUtil::EncodeURIComponent(text);
  RequireEqual(encoded.ToStringView(), PlainEncoding(input), "the encoding is the plain one");
  RequireEqual(VYXInfStringUtil::DecodeURIComponent(text).ToStringView(), PlainDecoding(input), "the plain decoding");
  if (AreWellFormed(Characters(input)) && input.find('\0') == std::string_view::npos) {
    RequireEqual(VYXInfStringUtil::DecodeURIComponent(encoded).ToStringView(), input, "encoded and decoded again");
  }
  CheckScriptLiteral(text);
  return 0;
}
