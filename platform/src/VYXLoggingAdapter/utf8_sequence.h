#pragma once

#include <cstddef>
#include <string_view>

namespace VYX::Logging {

/// Length of the well-formed UTF-8 sequence at the start of a text that is not empty; 0 where none stands there (table
/// 3-7 of the Unicode Standard).
inline std::size_t Utf8SequenceLength(std::string_view iText) {
  const auto byteAt = [iText](std::size_t iIndex) -> unsigned {
    return iIndex < iText.size() ? static_cast<unsigned char>(iText[iIndex]) : 0U;
  };
  const auto continues = [&byteAt](std::size_t iIndex) { return (byteAt(iIndex) & 0xC0U) == 0x80U; };
  const unsigned first = byteAt(0);
  const unsigned second = byteAt(1);
  if (first < 0x80) {
    return 1;
  }
  if (first >= 0xC2 && first <= 0xDF) {
    return continues(1) ? 2 : 0;
  }
  if (first >= 0xE0 && first <= 0xEF) {
    const unsigned low = first == 0xE0 ? 0xA0U : 0x80U;
    const unsigned high = first == 0xED ? 0x9FU : 0xBFU;
    return second >= low && second <= high && continues(2) ? 3 : 0;
  }
  if (first >= 0xF0 && first <= 0xF4) {
    const unsigned low = first == 0xF0 ? 0x90U : 0x80U;
    const unsigned high = first == 0xF4 ? 0x8FU : 0xBFU;
    return second >= low && second <= high && continues(2) && continues(3) ? 4 : 0;
  }
  return 0;
}

}  // namespace VYX::Logging
