#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "KORSysTS/KORUnicodeString.h"
#include "fuzz/support/characters.h"
#include "fuzz/support/fuzz_input.h"
#include "fuzz/support/require.h"

// Wildcard patterns against a matcher that follows every possibility at once.

namespace {

using namespace VYX::Fuzz;

struct PatternItem {
  bool isAny;
  char32_t character;
};

std::vector<PatternItem> ParsePattern(const std::u32string& iPattern, char32_t iAny, char32_t iEscape) {
  std::vector<PatternItem> items;
  for (std::size_t at = 0; at < iPattern.size(); ++at) {
    if (iPattern[at] == iAny) {
      items.push_back({true, 0});
    } else if (iPattern[at] == iEscape && at + 1 < iPattern.size()) {
      items.push_back({false, iPattern[++at]});
    } else {
      items.push_back({false, iPattern[at]});
    }
  }
  return items;
}

// reached[i] says whether the first i items can match what was read so far.
bool ModelMatches(const std::vector<PatternItem>& iItems, const std::u32string& iText) {
  std::vector<char> reached(iItems.size() + 1, 0);
  reached[0] = 1;
  for (std::size_t item = 0; item < iItems.size() && iItems[item].isAny; ++item) {
    reached[item + 1] = 1;
  }
  for (const char32_t character : iText) {
    std::vector<char> next(reached.size(), 0);
    for (std::size_t item = 0; item < iItems.size(); ++item) {
      const bool isAny = iItems[item].isAny;
      next[item + 1] =
          isAny ? reached[item + 1] != 0 || next[item] != 0 : reached[item] != 0 && iItems[item].character == character;
    }
    reached = next;
  }
  return reached.back() != 0;
}

KORUnicodeChar CharacterOf(char32_t iCharacter) {
  return iCharacter >= kFirstByte ? KORUnicodeChar(static_cast<char>(iCharacter - kFirstByte))
                                  : KORUnicodeChar(iCharacter);
}

// Mostly the usual ones; else whatever stands in the input.
char32_t SpecialCharacter(FuzzInput& ioInput, char32_t iUsual) {
  const std::u32string own = Characters(ioInput.Piece(4));
  return own.empty() ? iUsual : own.front();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  FuzzInput input(iData, iSize);
  const char32_t any = SpecialCharacter(input, U'*');
  const char32_t escape = SpecialCharacter(input, U'\\');
  const std::string_view pattern = input.Piece(60);
  const std::string_view text = input.Rest();
  const bool expected = ModelMatches(ParsePattern(Characters(pattern), any, escape), Characters(text));
  const int actual = KORUnicodeString(text).WildMatch(KORUnicodeString(pattern), CharacterOf(any), CharacterOf(escape));
  Require(actual == (expected ? 1 : 0), "a pattern matches exactly what the plain matcher says");
  return 0;
}
