#include <utf8proc.h>

#include <cstdint>

#include "platform/adapters/unicode.h"

namespace VYX::Adapters {

namespace {

constexpr char32_t kLastCodePoint = 0x10FFFF;
constexpr char32_t kSharpS = 0xDF;
constexpr char32_t kCapitalIWithDot = 0x130;

utf8proc_int32_t Signed(char32_t iCodePoint) noexcept {
  return static_cast<utf8proc_int32_t>(iCodePoint);
}

}  // namespace

char32_t LowerCase(char32_t iCodePoint) noexcept {
  return iCodePoint > kLastCodePoint ? iCodePoint : static_cast<char32_t>(utf8proc_tolower(Signed(iCodePoint)));
}

char32_t UpperCase(char32_t iCodePoint) noexcept {
  // The library maps sharp s to its capital, which Unicode's simple mapping does not.
  if (iCodePoint > kLastCodePoint || iCodePoint == kSharpS) {
    return iCodePoint;
  }
  return static_cast<char32_t>(utf8proc_toupper(Signed(iCodePoint)));
}

char32_t FoldCase(char32_t iCodePoint) noexcept {
  // The capital I with dot folds to itself: only the full and the Turkic folding map it.
  if (iCodePoint > kLastCodePoint || iCodePoint == kCapitalIWithDot) {
    return iCodePoint;
  }
  if (utf8proc_get_property(Signed(iCodePoint))->casefold_seqindex == UINT16_MAX) {
    return iCodePoint;
  }
  utf8proc_int32_t folded[4] = {};
  int boundaryClass = UTF8PROC_BOUNDCLASS_START;
  const utf8proc_ssize_t count =
      utf8proc_decompose_char(Signed(iCodePoint), folded, 4, UTF8PROC_CASEFOLD, &boundaryClass);
  if (count == 1) {
    return static_cast<char32_t>(folded[0]);
  }
  // The full folding has several characters: the simple one, where there is one, is the lower case.
  return LowerCase(iCodePoint);
}

}  // namespace VYX::Adapters
