#include <cstdint>
#include <cstring>
#include <string>

#include "KORSysTS/KORUnicodeString.h"
#include "platform/adapters/unicode.h"
#include "text_storage.h"
#include "utf8.h"

namespace {

using VYX::Platform::AsciiPrefix;
using VYX::Platform::DecodeSequence;
using VYX::Platform::EncodeCodePoint;
using VYX::Platform::SequenceLength;

using CaseMapping = char32_t (*)(char32_t) noexcept;

// Bytes of ill-formed text are told apart from all code points by this offset.
constexpr char32_t kFirstByte = 0x110000;

constexpr unsigned char LowerAscii(unsigned char iByte) noexcept {
  return static_cast<unsigned char>(iByte + ((iByte >= 'A' && iByte <= 'Z') ? 'a' - 'A' : 0));
}
constexpr unsigned char UpperAscii(unsigned char iByte) noexcept {
  return static_cast<unsigned char>(iByte - ((iByte >= 'a' && iByte <= 'z') ? 'a' - 'A' : 0));
}

template <unsigned char (*Map)(unsigned char) noexcept>
void MapAscii(char* ioBytes, std::size_t iSize) noexcept {
  for (std::size_t index = 0; index < iSize; ++index) {
    ioBytes[index] = static_cast<char>(Map(static_cast<unsigned char>(ioBytes[index])));
  }
}

// A text with every code point from iFrom on mapped and all before as they are.
std::string MapCodePoints(std::string_view iText, std::size_t iFrom, CaseMapping iMap) {
  std::string mapped;
  mapped.reserve(iText.size() + iText.size() / 8);
  mapped.append(iText.substr(0, iFrom));
  for (std::size_t offset = iFrom; offset < iText.size();) {
    const std::size_t length = SequenceLength(iText.data() + offset, iText.size() - offset);
    if (length == 0) {
      mapped.push_back(iText[offset++]);
      continue;
    }
    char bytes[4];
    mapped.append(bytes, EncodeCodePoint(iMap(DecodeSequence(iText.data() + offset, length)), bytes));
    offset += length;
  }
  return mapped;
}

// Takes the next character of a text.
char32_t TakeCharacter(std::string_view& ioText) noexcept {
  const auto lead = static_cast<unsigned char>(ioText.front());
  const std::size_t length = lead < 0x80 ? 1 : SequenceLength(ioText.data(), ioText.size());
  const char32_t character = length == 0 ? kFirstByte + lead : DecodeSequence(ioText.data(), length);
  ioText.remove_prefix(length == 0 ? 1 : length);
  return character;
}

char32_t Folded(char32_t iCharacter) noexcept {
  return iCharacter < 0x80 ? LowerAscii(static_cast<unsigned char>(iCharacter)) : VYX::Adapters::FoldCase(iCharacter);
}

using Word = std::uint64_t;
constexpr Word kOnes = 0x0101010101010101U;
constexpr Word kHighBits = 0x80 * kOnes;

Word LoadWord(std::string_view iText) noexcept {
  Word word = 0;
  std::memcpy(&word, iText.data(), sizeof(word));
  return word;
}

// The lower case of eight ASCII bytes: a sum of bytes below 0x80 shows in the byte's high bit what it is greater than.
constexpr Word LowerAscii(Word iBytes) noexcept {
  const Word fromA = iBytes + (0x80 - 'A') * kOnes;
  const Word beyondZ = iBytes + (0x7F - 'Z') * kOnes;
  return iBytes | (fromA & ~beyondZ & kHighBits) >> 2;
}

bool EqualFolded(std::string_view iLeft, std::string_view iRight) noexcept {
  while (!iLeft.empty() && !iRight.empty()) {
    if (iLeft.size() >= sizeof(Word) && iRight.size() >= sizeof(Word)) {
      const Word left = LoadWord(iLeft);
      const Word right = LoadWord(iRight);
      if (((left | right) & kHighBits) == 0) {
        if (LowerAscii(left) != LowerAscii(right)) {
          return false;
        }
        iLeft.remove_prefix(sizeof(Word));
        iRight.remove_prefix(sizeof(Word));
        continue;
      }
    }
    const char32_t left = TakeCharacter(iLeft);
    const char32_t right = TakeCharacter(iRight);
    if (left != right && Folded(left) != Folded(right)) {
      return false;
    }
  }
  return iLeft.empty() && iRight.empty();
}

}  // namespace

KORUnicodeString& KORUnicodeString::ToLower() {
  const std::size_t ascii = AsciiPrefix(ToStringView());
  if (ascii < ByteCount()) {
    const std::string mapped = MapCodePoints(ToStringView(), ascii, &VYX::Adapters::LowerCase);
    Assign(mapped);
  }
  MapAscii<LowerAscii>(Access::Bytes(*this), ascii);
  return *this;
}

KORUnicodeString& KORUnicodeString::ToUpper() {
  const std::size_t ascii = AsciiPrefix(ToStringView());
  if (ascii < ByteCount()) {
    const std::string mapped = MapCodePoints(ToStringView(), ascii, &VYX::Adapters::UpperCase);
    Assign(mapped);
  }
  MapAscii<UpperAscii>(Access::Bytes(*this), ascii);
  return *this;
}

int KORUnicodeString::Compare(const KORUnicodeString& iOther) const noexcept {
  if (ToStringView() == iOther.ToStringView()) {
    return 2;
  }
  return EqualFolded(ToStringView(), iOther.ToStringView()) ? 1 : 0;
}
