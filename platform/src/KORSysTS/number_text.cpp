#include "number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string_view>

namespace VYX::Platform {

namespace {

constexpr int kLargestField = 65535;
constexpr int kNoPrecision = -1;
// Sign, prefix, the longest integral part (309 digits), point and exponent fit in it.
constexpr std::size_t kDigitsBesidesPrecision = 340;

struct Conversion {
  bool isLeft = false;
  bool hasPlus = false;
  bool hasSpace = false;
  bool isAlternate = false;
  bool hasZeros = false;
  int width = 0;
  int precision = kNoPrecision;
  char kind = '\0';  // lower case
  bool isUpper = false;
};

bool TakeFlag(char iChar, Conversion& ioConversion) noexcept {
  switch (iChar) {
    case '-':
      return ioConversion.isLeft = true;
    case '+':
      return ioConversion.hasPlus = true;
    case ' ':
      return ioConversion.hasSpace = true;
    case '#':
      return ioConversion.isAlternate = true;
    case '0':
      return ioConversion.hasZeros = true;
    default:
      return false;
  }
}

// Takes decimal digits, none being 0; false beyond the largest field.
bool TakeNumber(const char*& ioFormat, int& oNumber) noexcept {
  oNumber = 0;
  for (; *ioFormat >= '0' && *ioFormat <= '9'; ++ioFormat) {
    oNumber = oNumber * 10 + (*ioFormat - '0');
    if (oNumber > kLargestField) {
      return false;
    }
  }
  return true;
}

// Takes what follows a percent sign.
bool TakeConversion(const char*& ioFormat, Conversion& oConversion) noexcept {
  while (TakeFlag(*ioFormat, oConversion)) {
    ++ioFormat;
  }
  if (!TakeNumber(ioFormat, oConversion.width)) {
    return false;
  }
  if (*ioFormat == '.' && !TakeNumber(++ioFormat, oConversion.precision)) {
    return false;
  }
  if (*ioFormat == 'l') {  // without a meaning for a double, and allowed
    ++ioFormat;
  }
  oConversion.isUpper = *ioFormat >= 'A' && *ioFormat <= 'G';
  oConversion.kind = static_cast<char>(oConversion.isUpper ? *ioFormat - 'A' + 'a' : *ioFormat);
  if (std::string_view("aefg").find(oConversion.kind) == std::string_view::npos) {
    return false;
  }
  ++ioFormat;
  return true;
}

std::string Digits(double iNumber, std::chars_format iForm, int iPrecision) {
  std::string digits(kDigitsBesidesPrecision + static_cast<std::size_t>(std::max(iPrecision, 0)), '\0');
  char* const end = digits.data() + digits.size();
  const auto result = iPrecision == kNoPrecision ? std::to_chars(digits.data(), end, iNumber, iForm)
                                                 : std::to_chars(digits.data(), end, iNumber, iForm, iPrecision);
  digits.resize(static_cast<std::size_t>(result.ptr - digits.data()));
  return digits;
}

// The alternate form always has a point.
void AddPoint(std::string& ioDigits, char iExponentMark) {
  if (ioDigits.find('.') == std::string::npos) {
    ioDigits.insert(std::min(ioDigits.find(iExponentMark), ioDigits.size()), 1, '.');
  }
}

// The alternate form of g keeps trailing zeros: the rule of the C standard, which chooses the style by the exponent.
std::string GeneralWithZeros(double iNumber, int iPrecision) {
  std::string scientific = Digits(iNumber, std::chars_format::scientific, iPrecision - 1);
  const int exponent = std::atoi(scientific.c_str() + scientific.find('e') + 1);
  if (exponent < -4 || exponent >= iPrecision) {
    return scientific;
  }
  return Digits(iNumber, std::chars_format::fixed, iPrecision - 1 - exponent);
}

std::string FiniteDigits(double iNumber, const Conversion& iConversion) {
  const int precision = iConversion.precision == kNoPrecision ? 6 : iConversion.precision;
  std::string digits;
  switch (iConversion.kind) {
    case 'a':
      digits = Digits(iNumber, std::chars_format::hex, iConversion.precision);
      break;
    case 'e':
      digits = Digits(iNumber, std::chars_format::scientific, precision);
      break;
    case 'f':
      digits = Digits(iNumber, std::chars_format::fixed, precision);
      break;
    default:
      digits = iConversion.isAlternate ? GeneralWithZeros(iNumber, std::max(precision, 1))
                                       : Digits(iNumber, std::chars_format::general, std::max(precision, 1));
      break;
  }
  if (iConversion.isAlternate) {
    AddPoint(digits, iConversion.kind == 'a' ? 'p' : 'e');
  }
  return digits;
}

std::string SignOf(double iNumber, const Conversion& iConversion) {
  if (std::signbit(iNumber)) {
    return "-";
  }
  return iConversion.hasPlus ? "+" : iConversion.hasSpace ? " " : "";
}

void AppendNumber(double iNumber, const Conversion& iConversion, std::string& ioText) {
  const bool isFinite = std::isfinite(iNumber);
  const double magnitude = std::fabs(iNumber);
  std::string head = SignOf(iNumber, iConversion);
  std::string digits = isFinite ? FiniteDigits(magnitude, iConversion) : std::isnan(iNumber) ? "nan" : "inf";
  if (isFinite && iConversion.kind == 'a') {
    head += "0x";
  }
  if (iConversion.isUpper) {
    for (std::string* part : {&head, &digits}) {
      std::transform(part->begin(), part->end(), part->begin(), [](char iChar) {
        return iChar >= 'a' && iChar <= 'z' ? static_cast<char>(iChar - 'a' + 'A') : iChar;
      });
    }
  }
  const std::size_t length = head.size() + digits.size();
  const auto width = static_cast<std::size_t>(iConversion.width);
  const std::size_t padding = width > length ? width - length : 0;
  if (iConversion.isLeft) {
    ioText.append(head).append(digits).append(padding, ' ');
  } else if (iConversion.hasZeros && isFinite) {
    ioText.append(head).append(padding, '0').append(digits);
  } else {
    ioText.append(padding, ' ').append(head).append(digits);
  }
}

}  // namespace

bool FormatNumber(double iNumber, const char* iFormat, std::string& oText) {
  std::string text;
  bool isWritten = false;
  while (*iFormat != '\0') {
    if (*iFormat != '%') {
      text.push_back(*iFormat++);
      continue;
    }
    ++iFormat;
    if (*iFormat == '%') {
      text.push_back(*iFormat++);
      continue;
    }
    Conversion conversion;
    if (isWritten || !TakeConversion(iFormat, conversion)) {
      return false;
    }
    AppendNumber(iNumber, conversion, text);
    isWritten = true;
  }
  oText.swap(text);
  return isWritten;
}

}  // namespace VYX::Platform
