#include "platform/adapters/json_tokens.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <system_error>

namespace VYX::Adapters {

namespace {

bool IsDigit(char iChar) {
  return iChar >= '0' && iChar <= '9';
}

char CharAt(std::string_view iText, std::size_t iPlace) {
  return iPlace < iText.size() ? iText[iPlace] : '\0';
}

std::size_t SkipDigits(std::string_view iText, std::size_t iBegin) {
  while (iBegin < iText.size() && IsDigit(iText[iBegin])) {
    ++iBegin;
  }
  return iBegin;
}

// The exponent part of a token, held within a range that no digit count can leave again.
std::int64_t ExponentOf(std::string_view iDigits) {
  constexpr std::int64_t kHuge = 100'000'000'000'000'000;
  const bool isNegative = CharAt(iDigits, 0) == '-';
  if (isNegative || CharAt(iDigits, 0) == '+') {
    iDigits.remove_prefix(1);
  }
  std::int64_t exponent = 0;
  for (const char digit : iDigits) {
    exponent = std::min(exponent * 10 + (digit - '0'), kHuge);
  }
  return isNegative ? -exponent : exponent;
}

// True when a token that no double comes near to is a large number, not a small one.
bool IsHuge(std::string_view iToken) {
  const std::size_t mark = iToken.find_first_of("eE");
  const std::string_view mantissa = iToken.substr(0, mark);
  const std::int64_t exponent = mark == std::string_view::npos ? 0 : ExponentOf(iToken.substr(mark + 1));
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  const std::size_t leading = mantissa.find_first_of("123456789");
  if (leading == std::string_view::npos) {
    return false;
  }
  return exponent + static_cast<std::int64_t>(point) - static_cast<std::int64_t>(leading) > 0;
}

// The value of four hexadecimal digits, or -1.
std::int32_t HexQuad(std::string_view iText, std::size_t iBegin) {
  if (iBegin + 4 > iText.size()) {
    return -1;
  }
  std::uint32_t value = 0;
  const char* const begin = iText.data() + iBegin;
  const auto result = std::from_chars(begin, begin + 4, value, 16);
  return result.ptr == begin + 4 ? static_cast<std::int32_t>(value) : -1;
}

bool IsHighSurrogate(std::int32_t iValue) {
  return iValue >= 0xD800 && iValue <= 0xDBFF;
}
bool IsLowSurrogate(std::int32_t iValue) {
  return iValue >= 0xDC00 && iValue <= 0xDFFF;
}

}  // namespace

JsonNumberToken ScanJsonNumber(std::string_view iText, std::size_t iBegin) noexcept {
  std::size_t at = iBegin + (CharAt(iText, iBegin) == '-' ? 1 : 0);
  if (!IsDigit(CharAt(iText, at))) {
    return {at, false, "a minus sign without a digit behind it"};
  }
  if (iText[at] == '0' && IsDigit(CharAt(iText, at + 1))) {
    return {at, false, "a number with a leading zero"};
  }
  at = SkipDigits(iText, at);
  bool isInteger = true;
  if (CharAt(iText, at) == '.') {
    isInteger = false;
    if (!IsDigit(CharAt(iText, ++at))) {
      return {at, false, "a decimal point without a digit behind it"};
    }
    at = SkipDigits(iText, at);
  }
  if (CharAt(iText, at) == 'e' || CharAt(iText, at) == 'E') {
    isInteger = false;
    ++at;
    at += CharAt(iText, at) == '+' || CharAt(iText, at) == '-' ? 1 : 0;
    if (!IsDigit(CharAt(iText, at))) {
      return {at, false, "an exponent without a digit"};
    }
    at = SkipDigits(iText, at);
  }
  return {at, isInteger, {}};
}

bool ConvertJsonNumber(std::string_view iToken, double& oNumber) noexcept {
  const auto result = std::from_chars(iToken.data(), iToken.data() + iToken.size(), oNumber);
  if (result.ec != std::errc::result_out_of_range) {
    return true;
  }
  oNumber = iToken.front() == '-' ? -0.0 : 0.0;
  return !IsHuge(iToken);
}

bool FitsIn64Bits(std::string_view iToken) noexcept {
  const char* const end = iToken.data() + iToken.size();
  if (iToken.front() == '-') {
    std::int64_t value = 0;
    return std::from_chars(iToken.data(), end, value).ec == std::errc();
  }
  std::uint64_t value = 0;
  return std::from_chars(iToken.data(), end, value).ec == std::errc();
}

std::size_t Utf8SequenceLength(std::string_view iText, std::size_t iBegin) noexcept {
  const auto byte = [iText, iBegin](std::size_t iIndex) {
    return iBegin + iIndex < iText.size() ? static_cast<std::uint8_t>(iText[iBegin + iIndex]) : 0U;
  };
  const auto isTail = [&byte](std::size_t iIndex) { return (byte(iIndex) & 0xC0U) == 0x80U; };
  const unsigned lead = byte(0);
  const unsigned second = byte(1);
  if (lead < 0x80) {
    return 1;
  }
  if (lead < 0xC2 || lead > 0xF4 || !isTail(1)) {
    return 0;
  }
  if (lead < 0xE0) {
    return 2;
  }
  if (!isTail(2) || (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F)) {
    return 0;
  }
  if (lead < 0xF0) {
    return 3;
  }
  return isTail(3) && !(lead == 0xF0 && second < 0x90) && !(lead == 0xF4 && second > 0x8F) ? 4 : 0;
}

std::size_t ScanJsonEscape(std::string_view iText, std::size_t iBegin, std::string_view& oReason) noexcept {
  const char kind = CharAt(iText, iBegin + 1);
  if (kind != 'u') {
    if (kind != '\0' && std::string_view("\"\\/bfnrt").find(kind) != std::string_view::npos) {
      return 2;
    }
    oReason = "an unknown escape in a string";
    return 0;
  }
  const std::int32_t unit = HexQuad(iText, iBegin + 2);
  if (unit < 0) {
    oReason = "an escape \\u without four hexadecimal digits";
    return 0;
  }
  if (!IsHighSurrogate(unit) && !IsLowSurrogate(unit)) {
    return 6;
  }
  const bool isPair = IsHighSurrogate(unit) && CharAt(iText, iBegin + 6) == '\\' && CharAt(iText, iBegin + 7) == 'u' &&
                      IsLowSurrogate(HexQuad(iText, iBegin + 8));
  oReason = isPair ? std::string_view() : "an escaped surrogate without its other half";
  return isPair ? 12 : 0;
}

}  // namespace VYX::Adapters
