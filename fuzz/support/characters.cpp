#include "fuzz/support/characters.h"

#include <algorithm>
#include <cstddef>

namespace VYX::Fuzz {

namespace {

std::string EncodedOne(char32_t iCharacter) {
  const auto tail = [iCharacter](int iShift) { return static_cast<char>(0x80 | (iCharacter >> iShift & 0x3F)); };
  if (iCharacter >= kFirstByte) {
    return {static_cast<char>(iCharacter - kFirstByte)};
  }
  if (iCharacter < 0x80) {
    return {static_cast<char>(iCharacter)};
  }
  if (iCharacter < 0x800) {
    return {static_cast<char>(0xC0 | iCharacter >> 6), tail(0)};
  }
  if (iCharacter < 0x10000) {
    return {static_cast<char>(0xE0 | iCharacter >> 12), tail(6), tail(0)};
  }
  return {static_cast<char>(0xF0 | iCharacter >> 18), tail(12), tail(6), tail(0)};
}

// What the bits say if the first byte begins a sequence of iLength bytes.
char32_t DecodedAs(std::string_view iBytes, std::size_t iLength) {
  constexpr unsigned kLeadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
  char32_t value = static_cast<unsigned char>(iBytes[0]) & kLeadBits[iLength];
  for (std::size_t index = 1; index < iLength; ++index) {
    value = value << 6 | (static_cast<unsigned char>(iBytes[index]) & 0x3FU);
  }
  return value;
}

bool IsScalarValue(char32_t iValue) {
  return iValue < 0xD800 || (iValue > 0xDFFF && iValue <= 0x10FFFF);
}

}  // namespace

std::u32string Characters(std::string_view iBytes) {
  std::u32string characters;
  while (!iBytes.empty()) {
    std::size_t length = std::min<std::size_t>(4, iBytes.size());
    while (length > 0) {
      const char32_t value = DecodedAs(iBytes, length);
      if (IsScalarValue(value) && EncodedOne(value) == iBytes.substr(0, length)) {
        characters += value;
        break;
      }
      --length;
    }
    if (length == 0) {
      characters += kFirstByte + static_cast<unsigned char>(iBytes[0]);
      length = 1;
    }
    iBytes.remove_prefix(length);
  }
  return characters;
}

std::string Encoded(std::u32string_view iCharacters) {
  std::string bytes;
  for (const char32_t character : iCharacters) {
    bytes += EncodedOne(character);
  }
  return bytes;
}

bool AreWellFormed(std::u32string_view iCharacters) {
  return std::all_of(iCharacters.begin(), iCharacters.end(),
                     [](char32_t iCharacter) { return iCharacter < kFirstByte; });
}

}  // namespace VYX::Fuzz
