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

// Takes the next character of a text, folded.
char32_t NextFolded(std::string_view& ioText) noexcept {
  const auto lead = static_cast<unsigned char>(ioText.front());
  if (lead < 0x80) {
    ioText.remove_prefix(1);
    return LowerAscii(lead);
  }
  const std::size_t length = SequenceLength(ioText.data(), ioText.size());
  if (length == 0) {
    ioText.remove_prefix(1);
    return kFirstByte + lead;
  }
  const char32_t folded = VYX::Adapters::FoldCase(DecodeSequence(ioText.data(), length));
  ioText.remove_prefix(length);
  return folded;
}

bool EqualFolded(std::string_view iLeft, std::string_view iRight) noexcept {
  while (!iLeft.empty() && !iRight.empty()) {
    if (NextFolded(iLeft) != NextFolded(iRight)) {
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
