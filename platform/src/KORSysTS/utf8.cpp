#include "utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace VYX::Platform {

namespace {

constexpr std::size_t kWord = sizeof(std::uint64_t);
constexpr std::uint64_t kHighBits = 0x8080808080808080U;

bool IsAsciiWord(const char* iBytes) noexcept {
  std::uint64_t word = 0;
  std::memcpy(&word, iBytes, kWord);
  return (word & kHighBits) == 0;
}

bool IsAsciiByte(char iByte) noexcept {
  return static_cast<unsigned char>(iByte) < 0x80;
}

// The commonest sequence outside ASCII, for loops that run faster with its length as a constant.
bool StartsWithTwoBytes(std::string_view iText, std::size_t iIndex) noexcept {
  const auto lead = static_cast<unsigned char>(iText[iIndex]);
  return lead >= 0xC2 && lead < 0xE0 && iIndex + 1 < iText.size() &&
         (static_cast<unsigned char>(iText[iIndex + 1]) & 0xC0U) == 0x80U;
}

// How long the sequence of a lead byte is meant to be; 1 for every other byte.
std::size_t AnnouncedLength(char iByte) noexcept {
  const auto lead = static_cast<unsigned char>(iByte);
  if (lead < 0xC2 || lead > 0xF4) {
    return 1;
  }
  return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

}  // namespace

std::size_t EncodeCodePoint(char32_t iCodePoint, char* oBytes) noexcept {
  const auto trail = [iCodePoint](unsigned iShift) {
    return static_cast<char>(0x80U | (static_cast<std::uint32_t>(iCodePoint) >> iShift & 0x3FU));
  };
  if (iCodePoint < 0x80) {
    oBytes[0] = static_cast<char>(iCodePoint);
    return 1;
  }
  if (iCodePoint < 0x800) {
    oBytes[0] = static_cast<char>(0xC0U | iCodePoint >> 6);
    oBytes[1] = trail(0);
    return 2;
  }
  if (iCodePoint < 0x10000) {
    oBytes[0] = static_cast<char>(0xE0U | iCodePoint >> 12);
    oBytes[1] = trail(6);
    oBytes[2] = trail(0);
    return 3;
  }
  oBytes[0] = static_cast<char>(0xF0U | iCodePoint >> 18);
  oBytes[1] = trail(12);
  oBytes[2] = trail(6);
  oBytes[3] = trail(0);
  return 4;
}

std::size_t PreviousCharacter(std::string_view iText, std::size_t iOffset) noexcept {
  const std::size_t furthest = std::min<std::size_t>(iOffset, 4);
  for (std::size_t length = 2; length <= furthest; ++length) {
    // A lead byte never stands inside another character, so that the sequence found is the one before the boundary.
    if (SequenceLength(iText.data() + iOffset - length, length) == length) {
      return iOffset - length;
    }
  }
  return iOffset - 1;
}

bool IsCharacterBoundary(std::string_view iText, std::size_t iOffset) noexcept {
  if (iOffset >= iText.size() || (static_cast<unsigned char>(iText[iOffset]) & 0xC0U) != 0x80U) {
    return true;
  }
  const std::size_t furthest = std::min<std::size_t>(iOffset, 3);
  for (std::size_t distance = 1; distance <= furthest; ++distance) {
    const std::size_t start = iOffset - distance;
    if (SequenceLength(iText.data() + start, iText.size() - start) > distance) {
      return false;
    }
  }
  return true;
}

bool EndsInsideSequence(std::string_view iText) noexcept {
  const std::size_t furthest = std::min<std::size_t>(iText.size(), 3);
  for (std::size_t distance = 1; distance <= furthest; ++distance) {
    if (AnnouncedLength(iText[iText.size() - distance]) > distance) {
      return true;
    }
  }
  return false;
}

std::size_t AsciiPrefix(std::string_view iText) noexcept {
  std::size_t index = 0;
  while (index + 4 * kWord <= iText.size()) {
    std::uint64_t words[4];
    std::memcpy(words, iText.data() + index, sizeof(words));
    if (((words[0] | words[1] | words[2] | words[3]) & kHighBits) != 0) {
      break;
    }
    index += sizeof(words);
  }
  while (index < iText.size() && IsAsciiByte(iText[index])) {
    ++index;
  }
  return index;
}

std::size_t CountCharacters(std::string_view iText) noexcept {
  std::size_t index = 0;
  std::size_t count = 0;
  while (index < iText.size()) {
    if (IsAsciiByte(iText[index])) {
      const std::size_t ascii = AsciiPrefix(iText.substr(index));
      index += ascii;
      count += ascii;
    } else if (StartsWithTwoBytes(iText, index)) {
      index += 2;
      ++count;
    } else {
      index += CharacterLength(iText.data() + index, iText.size() - index);
      ++count;
    }
  }
  return count;
}

bool IsWellFormed(std::string_view iText) noexcept {
  std::size_t index = 0;
  while (index < iText.size()) {
    const std::size_t length = IsAsciiByte(iText[index]) ? AsciiPrefix(iText.substr(index))
                                                         : SequenceLength(iText.data() + index, iText.size() - index);
    if (length == 0) {
      return false;
    }
    index += length;
  }
  return true;
}

std::size_t SkipCharacters(std::string_view iText, std::size_t iOffset, std::size_t iCount) noexcept {
  std::size_t offset = iOffset;
  std::size_t left = iCount;
  while (left > 0) {
    if (offset == iText.size()) {
      return std::string_view::npos;
    }
    if (left >= kWord && offset + kWord <= iText.size() && IsAsciiWord(iText.data() + offset)) {
      offset += kWord;
      left -= kWord;
    } else {
      offset += CharacterLength(iText.data() + offset, iText.size() - offset);
      --left;
    }
  }
  return offset;
}

}  // namespace VYX::Platform
