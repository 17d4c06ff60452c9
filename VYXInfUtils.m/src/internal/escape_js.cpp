#include "internal/escape_js.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace VYX::Internal {

namespace {

// What follows the backslash; 0 for a byte that stays as it is.
constexpr std::array<char, 256> kEscapes = [] {
  std::array<char, 256> escapes{};
  escapes['\\'] = '\\';
  escapes['"'] = '"';
  escapes['\b'] = 'b';
  escapes['\f'] = 'f';
  escapes['\n'] = 'n';
  escapes['\r'] = 'r';
  escapes['\t'] = 't';
  return escapes;
}();

char EscapeOf(char iChar) noexcept {
  return kEscapes[static_cast<unsigned char>(iChar)];
}

constexpr std::uint64_t kLowBits = 0x0101010101010101U;
constexpr std::uint64_t kHighBits = 0x8080808080808080U;

// Has its high bit set in some byte if, and only if, a byte of iWord is below iLimit (at most 0x80).
constexpr std::uint64_t BytesBelow(std::uint64_t iWord, std::uint64_t iLimit) noexcept {
  return (iWord - kLowBits * iLimit) & ~iWord & kHighBits;
}

// True if one of eight bytes is a control character, a double quote or a backslash.
constexpr bool MayNeedEscape(std::uint64_t iWord) noexcept {
  return (BytesBelow(iWord, 0x20) | BytesBelow(iWord ^ (kLowBits * '"'), 1) |
          BytesBelow(iWord ^ (kLowBits * '\\'), 1)) != 0;
}

}  // namespace

std::size_t FindEscapedForJS(std::string_view iText, std::size_t iFrom) noexcept {
  std::size_t position = iFrom;
  while (position + sizeof(std::uint64_t) <= iText.size()) {
    std::uint64_t word = 0;
    std::memcpy(&word, iText.data() + position, sizeof word);
    if (MayNeedEscape(word)) {
      const std::size_t end = position + sizeof word;
      for (; position < end; ++position) {
        if (EscapeOf(iText[position]) != 0) {
          return position;
        }
      }
    } else {
      position += sizeof word;
    }
  }
  while (position < iText.size() && EscapeOf(iText[position]) == 0) {
    ++position;
  }
  return position;
}

void AppendEscapedForJS(std::string& ioOut, std::string_view iText) {
  std::size_t start = 0;
  for (;;) {
    const std::size_t found = FindEscapedForJS(iText, start);
    ioOut.append(iText.substr(start, found - start));
    if (found == iText.size()) {
      return;
    }
    const char escape[2] = {'\\', EscapeOf(iText[found])};
    ioOut.append(escape, sizeof escape);
    start = found + 1;
  }
}

}  // namespace VYX::Internal
