#include "VYXPropertyTree/number_text.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace json {

namespace {

constexpr double kEndOfPlainIntegers = 1e17;  // 17 digits write every integer below without an exponent
constexpr int kDigits = 17;

char* WriteSpecial(char* oText, const char* iName, bool iIsNegative) noexcept {
  if (iIsNegative) {
    *oText++ = '-';
  }
  std::memcpy(oText, iName, 3);
  return oText + 3;
}

}  // namespace

char* WriteNumber(char* oText, double iNumber) noexcept {
  if (!std::isfinite(iNumber)) {
    return WriteSpecial(oText, std::isnan(iNumber) ? "nan" : "inf", std::signbit(iNumber));
  }
  if (std::fabs(iNumber) < kEndOfPlainIntegers) {
    const auto integer = static_cast<std::int64_t>(iNumber);
    const bool isPlainInteger = static_cast<double>(integer) == iNumber && (integer != 0 || !std::signbit(iNumber));
    if (isPlainInteger) {
      return std::to_chars(oText, oText + kNumberTextSize, integer).ptr;
    }
  }
  return std::to_chars(oText, oText + kNumberTextSize, iNumber, std::chars_format::general, kDigits).ptr;
}

}  // namespace json
