#include <string>
#include <string_view>

#include "KORSysTS/KORUnicodeString.h"
#include "utf8.h"

namespace {

// The character at an offset; nothing at the end.
std::string_view CharacterAt(std::string_view iText, std::size_t iOffset) noexcept {
  if (iOffset >= iText.size()) {
    return {};
  }
  return iText.substr(iOffset, VYX::Platform::CharacterLength(iText.data() + iOffset, iText.size() - iOffset));
}

// A pattern and the special characters that it is read with.
struct Pattern {
  std::string_view text;
  std::string_view any;
  std::string_view escape;

  bool IsAnyAt(std::size_t iOffset) const noexcept {
    return iOffset < text.size() && CharacterAt(text, iOffset) == any;
  }

  // The literal character at an offset, and the offset behind it.
  std::string_view LiteralAt(std::size_t iOffset, std::size_t& oNext) const noexcept {
    std::string_view literal = CharacterAt(text, iOffset);
    oNext = iOffset + literal.size();
    if (literal == escape && oNext < text.size()) {
      literal = CharacterAt(text, oNext);
      oNext += literal.size();
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
    if (iPattern.IsAnyAt(at)) {
      at += iPattern.any.size();
      afterRun = at;
      runEnd = offset;
      if (at == iPattern.text.size()) {
        return true;
      }
      continue;
    }
    const std::string_view character = CharacterAt(iText, offset);
    if (at < iPattern.text.size() && !character.empty()) {
      std::size_t next = 0;
      if (iPattern.LiteralAt(at, next) == character) {
        at = next;
        offset += character.size();
        continue;
      }
    } else if (at == iPattern.text.size() && character.empty()) {
      return true;
    }
    if (afterRun == kNoRun || runEnd >= iText.size()) {
      return false;
    }
    runEnd += CharacterAt(iText, runEnd).size();
    at = afterRun;
    offset = runEnd;
  }
}

}  // namespace

int KORUnicodeString::WildMatch(const KORUnicodeString& iPattern, const KORUnicodeChar& iAny,
                                const KORUnicodeChar& iEscape) const {
  const std::string any = iAny.ConvertToChar();
  const std::string escape = iEscape.ConvertToChar();
  return Matches({iPattern.ToStringView(), any, escape}, ToStringView()) ? 1 : 0;
}
