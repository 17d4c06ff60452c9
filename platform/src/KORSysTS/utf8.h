#pragma once

#include <cstddef>
#include <string_view>

namespace VYX::Platform {

// UTF-8 as the Unicode Standard defines it (chapter 3, table 3-7): no overlong form, no surrogate, nothing above
// U+10FFFF. A byte that stands in no well-formed sequence is a character of its own.

/// Length of the well-formed sequence at the start of iAvailable > 0 bytes; 0 when none starts there.
inline std::size_t SequenceLength(const char* iBytes, std::size_t iAvailable) noexcept {
  const auto byteAt = [iBytes](std::size_t iIndex) { return static_cast<unsigned char>(iBytes[iIndex]); };
  const auto continues = [&byteAt](std::size_t iIndex) { return (byteAt(iIndex) & 0xC0U) == 0x80U; };
  const unsigned char lead = byteAt(0);
  if (lead < 0x80) {
    return 1;
  }
  if (lead < 0xC2 || lead > 0xF4 || iAvailable < 2) {
    return 0;
  }
  const unsigned char second = byteAt(1);
  if (lead < 0xE0) {
    return continues(1) ? 2 : 0;
  }
  if (lead < 0xF0) {
    const unsigned char lowest = lead == 0xE0 ? 0xA0 : 0x80;
    const unsigned char highest = lead == 0xED ? 0x9F : 0xBF;
    return iAvailable >= 3 && second >= lowest && second <= highest && continues(2) ? 3 : 0;
  }
  const unsigned char lowest = lead == 0xF0 ? 0x90 : 0x80;
  const unsigned char highest = lead == 0xF4 ? 0x8F : 0xBF;
  return iAvailable >= 4 && second >= lowest && second <= highest && continues(2) && continues(3) ? 4 : 0;
}

/// Number of bytes of the character at the start of iAvailable > 0 bytes.
inline std::size_t CharacterLength(const char* iBytes, std::size_t iAvailable) noexcept {
  const std::size_t length = SequenceLength(iBytes, iAvailable);
  return length == 0 ? 1 : length;
}

/// The code point of a well-formed sequence of iLength bytes.
inline char32_t DecodeSequence(const char* iBytes, std::size_t iLength) noexcept {
  const auto low = [iBytes](std::size_t iIndex) { return static_cast<unsigned char>(iBytes[iIndex]) & 0x3FU; };
  const auto lead = static_cast<unsigned char>(iBytes[0]);
  switch (iLength) {
    case 1:
      return lead;
    case 2:
      return (lead & 0x1FU) << 6 | low(1);
    case 3:
      return (lead & 0x0FU) << 12 | low(1) << 6 | low(2);
    default:
      return (lead & 0x07U) << 18 | low(1) << 12 | low(2) << 6 | low(3);
  }
}

/// Writes a scalar value as one to four bytes and answers their number.
std::size_t EncodeCodePoint(char32_t iCodePoint, char* oBytes) noexcept;

/// Offset of the character before the boundary iOffset > 0.
std::size_t PreviousCharacter(std::string_view iText, std::size_t iOffset) noexcept;

/// True when no character reaches over iOffset; the start and the end of a text are boundaries.
bool IsCharacterBoundary(std::string_view iText, std::size_t iOffset) noexcept;

/// True when appended bytes could complete a sequence that the text ends in.
bool EndsInsideSequence(std::string_view iText) noexcept;

/// Number of ASCII bytes at the start of a text.
std::size_t AsciiPrefix(std::string_view iText) noexcept;

std::size_t CountCharacters(std::string_view iText) noexcept;

bool IsWellFormed(std::string_view iText) noexcept;

/// Offset of the character that follows iCount characters after iOffset, a boundary; npos when the text is shorter.
std::size_t SkipCharacters(std::string_view iText, std::size_t iOffset, std::size_t iCount) noexcept;

}  // namespace VYX::Platform
