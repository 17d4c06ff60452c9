#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "KORSysBase/KORResult.h"
#include "KORSysTS/KORUnicodeString.h"
#include "Quillbase/Binary.h"
#include "VYXInfStringUtil.h"
#include "fuzz/support/require.h"

// Base64 of any bytes and from any text, against the plain definition of RFC 4648, section 4.

namespace {

using VYX::Fuzz::Require;
using VYX::Fuzz::RequireEqual;

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string PlainEncoding(std::string_view iBytes) {
  std::string text;
  for (std::size_t at = 0; at < iBytes.size(); at += 3) {
    const std::string_view group = iBytes.substr(at, 3);
    std::uint32_t bits = 0;
    for (std::size_t index = 0; index < 3; ++index) {
      bits = bits << 8 | (index < group.size() ? static_cast<unsigned char>(group[index]) : 0U);
    }
    for (std::size_t digit = 0; digit < 4; ++digit) {
      text += digit > group.size() ? '=' : kAlphabet[bits >> (18 - 6 * digit) & 0x3F];
    }
  }
  return text;
}

std::string_view BytesOf(const QB::Binary& iBinary) {
  return {iBinary.GetData(), static_cast<std::size_t>(iBinary.GetSize())};
}

void CheckEncoding(std::string_view iBytes) {
  const std::string copy(iBytes);
  const QB::Binary binary(const_cast<char*>(copy.data()), copy.size(), nullptr);
  KORUnicodeString text;
  Require(VYXInfStringUtil::EncodeToBase64(binary, &text) == S_OK, "all bytes can be encoded");
  RequireEqual(text.ToStringView(), PlainEncoding(iBytes), "the encoding is the plain one");
  QB::Binary back;
  Require(VYXInfStringUtil::DecodeFromBase64(text, &back) == S_OK, "what was encoded can be decoded");
  RequireEqual(BytesOf(back), iBytes, "encoding and decoding give the bytes again");
}

// Strict decoding: a text is taken exactly when it is the encoding of what it gives.
void CheckDecoding(std::string_view iText) {
  QB::Binary bytes;
  if (VYXInfStringUtil::DecodeFromBase64(KORUnicodeString(iText), &bytes) == S_OK) {
    RequireEqual(PlainEncoding(BytesOf(bytes)), iText, "each sequence of bytes has one text");
    return;
  }
  Require(bytes.IsEmpty(), "a refused text gives no bytes");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  const std::string_view input(reinterpret_cast<const char*>(iData), iSize);
  CheckEncoding(input);
  CheckDecoding(input);
  return 0;
}
