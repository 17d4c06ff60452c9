#include "base64.h"

#include <array>

#include "platform/adapters/base64.h"

namespace VYX::Platform {

namespace {

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t kNoValue = 0xFF;

constexpr std::array<std::uint8_t, 256> kValues = [] {
  std::array<std::uint8_t, 256> values{};
  values.fill(kNoValue);
  for (std::size_t value = 0; value < kAlphabet.size(); ++value) {
    values[static_cast<unsigned char>(kAlphabet[value])] = static_cast<std::uint8_t>(value);
  }
  return values;
}();

std::uint32_t ByteOf(char iChar) noexcept {
  return static_cast<unsigned char>(iChar);
}
std::uint32_t ValueOf(char iChar) noexcept {
  return kValues[static_cast<unsigned char>(iChar)];
}

void EncodeGroup(std::uint32_t iBits, char* oText) noexcept {
  for (unsigned character = 0; character < 4; ++character) {
    oText[character] = kAlphabet[(iBits >> (18 - 6 * character)) & 0x3F];
  }
}

std::optional<Base64Fault> Refused(std::size_t iPosition, const char* iReason) noexcept {
  return Base64Fault{iPosition, iReason};
}

// The fault of the first of a few characters that is not of the alphabet.
std::optional<Base64Fault> FindStranger(std::string_view iText, std::size_t iStart, std::size_t iCount) noexcept {
  for (std::size_t position = iStart; position < iStart + iCount; ++position) {
    if (ValueOf(iText[position]) == kNoValue) {
      return Refused(position, iText[position] == '=' ? "padding before the end" : "a character outside the alphabet");
    }
  }
  return std::nullopt;
}

// The last group: four characters, of which the last one or two may be padding, or what there is of them.
std::optional<Base64Fault> DecodeLastGroup(std::string_view iText, std::size_t iStart, char* oData) noexcept {
  const std::string_view group = iText.substr(iStart);
  const std::size_t count = group.ends_with("==") ? group.size() - 2 : group.size() - (group.ends_with('=') ? 1 : 0);
  if (const auto fault = FindStranger(iText, iStart, count)) {
    return fault;
  }
  if (group.size() != 4) {
    return Refused(iText.size(), "an incomplete group of four characters");
  }
  std::uint32_t bits = 0;
  for (std::size_t character = 0; character < 4; ++character) {
    bits = (bits << 6) | (character < count ? ValueOf(group[character]) : 0);
  }
  const std::uint32_t unused = count == 4 ? 0 : count == 3 ? 0xFF : 0xFFFF;
  if ((bits & unused) != 0) {
    return Refused(iStart + count - 1, "unused bits that are not zero");
  }
  for (std::size_t byte = 0; byte + 1 < count; ++byte) {
    oData[byte] = static_cast<char>(bits >> (16 - 8 * byte));
  }
  return std::nullopt;
}

}  // namespace

void EncodeBase64(const char* iData, std::size_t iSize, char* oText) noexcept {
  std::size_t done = Adapters::EncodeBase64Blocks(iData, iSize, oText);
  char* out = oText + done / 3 * 4;
  for (; iSize - done >= 3; done += 3, out += 4) {
    EncodeGroup(ByteOf(iData[done]) << 16 | ByteOf(iData[done + 1]) << 8 | ByteOf(iData[done + 2]), out);
  }
  if (iSize - done == 1) {
    EncodeGroup(ByteOf(iData[done]) << 16, out);
    out[2] = '=';
    out[3] = '=';
  } else if (iSize - done == 2) {
    EncodeGroup(ByteOf(iData[done]) << 16 | ByteOf(iData[done + 1]) << 8, out);
    out[3] = '=';
  }
}

std::optional<Base64Fault> DecodeBase64(std::string_view iText, char* oData) noexcept {
  if (iText.empty()) {
    return std::nullopt;
  }
  // The last group is left to DecodeLastGroup, complete or not.
  const std::size_t lastGroup = (iText.size() - 1) / 4 * 4;
  std::size_t done = Adapters::DecodeBase64Blocks(iText.data(), lastGroup, oData);
  char* out = oData + done / 4 * 3;
  for (; done < lastGroup; done += 4, out += 3) {
    const std::uint32_t v0 = ValueOf(iText[done]);
    const std::uint32_t v1 = ValueOf(iText[done + 1]);
    const std::uint32_t v2 = ValueOf(iText[done + 2]);
    const std::uint32_t v3 = ValueOf(iText[done + 3]);
    if ((v0 | v1 | v2 | v3) == kNoValue) {
      return FindStranger(iText, done, 4);
    }
    out[0] = static_cast<char>(v0 << 2 | v1 >> 4);
    out[1] = static_cast<char>(v1 << 4 | v2 >> 2);
    out[2] = static_cast<char>(v2 << 6 | v3);
  }
  return DecodeLastGroup(iText, lastGroup, out);
}

}  // namespace VYX::Platform
