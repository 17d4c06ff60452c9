#include <climits>
#include <cwchar>
#include <string>

#include "KORSysTS/KORUnicodeString.h"
#include "utf8.h"

namespace {

constexpr bool kIsUtf16 = sizeof(wchar_t) == 2;
constexpr char32_t kReplacement = 0xFFFD;

constexpr bool IsSurrogate(char32_t iValue) noexcept {
  return iValue >= 0xD800 && iValue <= 0xDFFF;
}

char32_t Unit(const wchar_t* iText) noexcept {
  return static_cast<char32_t>(static_cast<std::make_unsigned_t<wchar_t>>(*iText));
}

// Takes the next code point of a zero-terminated wide text; false where it is ill-formed.
bool TakeCodePoint(const wchar_t*& ioText, char32_t& oCodePoint) noexcept {
  char32_t value = Unit(ioText++);
  if (kIsUtf16 && value >= 0xD800 && value <= 0xDBFF) {
    const char32_t low = Unit(ioText);
    if (low < 0xDC00 || low > 0xDFFF) {
      return false;
    }
    ++ioText;
    value = 0x10000 + ((value - 0xD800) << 10) + (low - 0xDC00);
  }
  oCodePoint = value;
  return value <= 0x10FFFF && !IsSurrogate(value);
}

// Writes a code point behind iCount wide characters, unless there is no buffer, and answers the new count.
std::size_t PutCodePoint(char32_t iCodePoint, wchar_t* oBuffer, std::size_t iCount) noexcept {
  if (!kIsUtf16 || iCodePoint < 0x10000) {
    if (oBuffer != nullptr) {
      oBuffer[iCount] = static_cast<wchar_t>(iCodePoint);
    }
    return iCount + 1;
  }
  if (oBuffer != nullptr) {
    oBuffer[iCount] = static_cast<wchar_t>(0xD800 + ((iCodePoint - 0x10000) >> 10));
    oBuffer[iCount + 1] = static_cast<wchar_t>(0xDC00 + ((iCodePoint - 0x10000) & 0x3FF));
  }
  return iCount + 2;
}

}  // namespace

int KORUnicodeString::BuildFromWChar(const wchar_t* iText) {
  std::string bytes;
  const wchar_t* rest = iText == nullptr ? L"" : iText;
  bytes.reserve(std::wcslen(rest));
  while (*rest != L'\0') {
    char32_t codePoint = 0;
    if (!TakeCodePoint(rest, codePoint)) {
      Reset();
      return 1;
    }
    char sequence[4];
    bytes.append(sequence, VYX::Platform::EncodeCodePoint(codePoint, sequence));
  }
  Assign(bytes);
  return 0;
}

int KORUnicodeString::ConvertToWChar(wchar_t* oBuffer) const {
  const std::string_view bytes = ToStringView();
  std::size_t count = 0;
  for (std::size_t offset = 0; offset < bytes.size();) {
    const std::size_t length = VYX::Platform::SequenceLength(bytes.data() + offset, bytes.size() - offset);
    const char32_t codePoint =
        length == 0 ? kReplacement : VYX::Platform::DecodeSequence(bytes.data() + offset, length);
    count = PutCodePoint(codePoint, oBuffer, count);
    offset += length == 0 ? 1 : length;
  }
  if (oBuffer != nullptr) {
    oBuffer[count] = L'\0';
  }
  return count > INT_MAX ? INT_MAX : static_cast<int>(count);
}
