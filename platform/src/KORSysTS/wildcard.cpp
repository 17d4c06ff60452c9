#include <cstdint>
#include <string>
#include <string_view>

#include "KORSysTS/KORUnicodeString.h"
#include "utf8.h"

namespace {

// One character: its bytes in a number, and how many they are; none at the end of a text.
struct Character {
  std::uint32_t bytes;
  std::size_t size;

  bool operator==(const Character&) const = default;
};

Character CharacterAt(std::string_view iText, std::size_t iOffset) noexcept {
  if (iOffset >= iText.size()) {
    return {0, 0};
  }
  const auto first = static_cast<unsigned char>(iText[iOffset]);
  if (first < 0x80) {
    return {first, 1};
  }
  const std::size_t size = VYX::Platform::CharacterLength(iText.data() + iOffset, iText.size() - iOffset);
  std::uint32_t bytes = 0;
  for (std::size_t index = 0; index < size; ++index) {
    bytes = bytes << 8 | static_cast<unsigned char>(iText[iOffset + index]);
  }
  return {bytes, size};
}

// A pattern and the special characters that it is read with.
struct Pattern {
  std::string_view text;
  Character any;
  Character escape;

  // The literal character that begins at an offset, and the offset behind it.
  Character LiteralAt(std::size_t iOffset, std::size_t& oNext) const noexcept {
    Character literal = CharacterAt(text, iOffset);
    oNext = iOffset + literal.size;
    if (literal == escape && oNext < text.size()) {
      literal = CharacterAt(text, oNext);
      oNext += literal.size;
    }
    return literal;
  }
};

// Only the last run needs to be widened after a mismatch: what an earlier one left open, the last can take as well.
bool Matches(const Pattern& iPattern, std::string_view iText) noexcept {
  constexpr std::size_t kNoRun = std::string_view::npos;
  std::size_t at = 0;
  std::size_t offset = 0;
  std::size_t afterRun = kNoRun;
  std::size_t runEnd = 0;
  for (;;) {
    if (at < iPattern.text.size() && CharacterAt(iPattern.text, at) == iPattern.any) {
      at += iPattern.any.size;
      afterRun = at;
      runEnd = offset;
      if (at == iPattern.text.size()) {
        return true;
      }
      continue;
    }
    const Character character = CharacterAt(iText, offset);
    if (at < iPattern.text.size() && character.size != 0) {
      std::size_t next = 0;
      if (iPattern.LiteralAt(at, next) == character) {
        at = next;
        offset += character.size;
        continue;
      }
    } else if (at == iPattern.text.size() && character.size == 0) {
      return true;
    }
    if (afterRun == kNoRun || runEnd >= iText.size()) {
      return false;
    }
    runEnd += CharacterAt(iText, runEnd).size;
    at = afterRun;
    offset = runEnd;
  }
}

}  // namespace

int KORUnicodeString::WildMatch(const KORUnicodeString& iPattern, const KORUnicodeChar& iAny,
                                const KORUnicodeChar& iEscape) const {
  const std::string any = iAny.ConvertToChar();
  const std::string escape = iEscape.ConvertToChar();
  const Pattern pattern{iPattern.ToStringView(), CharacterAt(any, 0), CharacterAt(escape, 0)};
  return Matches(pattern, ToStringView()) ? 1 : 0;
}
