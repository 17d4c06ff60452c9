#include "KORSysTS/text_characters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ranges>
#include <string_view>
#include <type_traits>
#include <vector>

namespace {

using ::testing::ElementsAre;
using VYX::Text::Characters;

static_assert(std::ranges::bidirectional_range<Characters>);
static_assert(std::ranges::common_range<Characters>);
static_assert(std::ranges::view<Characters>);
static_assert(std::ranges::borrowed_range<Characters>);
static_assert(!std::is_constructible_v<Characters, KORUnicodeString&&>);

std::vector<char32_t> Forwards(const Characters& iCharacters) {
  std::vector<char32_t> values;
  for (const KORUnicodeChar character : iCharacters) {
    values.push_back(character.IsByte() ? static_cast<unsigned char>(character) : character.GetCodePoint());
  }
  return values;
}

TEST(Characters, AreCodePointsAndLoneBytes) {
  const KORUnicodeString text = "a\u00E9\u20AC\U0001F600\xC3\xF0\x9F\x98";
  EXPECT_THAT(Forwards(Characters(text)), ElementsAre(U'a', 0xE9, 0x20AC, 0x1F600, 0xC3, 0xF0, 0x9F, 0x98));
  EXPECT_THAT(Forwards(Characters(std::string_view("x\0y", 3))), ElementsAre(U'x', 0, U'y'));
  EXPECT_THAT(Forwards(Characters()), ElementsAre());
  EXPECT_TRUE(Characters().empty());
}

TEST(Characters, AreThoseOfThePositions) {
  const KORUnicodeString text = "\xFF\u00E9z\xE2\x82\u20AC\xE2\x82";
  const Characters characters(text);
  int position = 0;
  for (auto place = characters.begin(); place != characters.end(); place++) {
    EXPECT_TRUE(*place == text[position++]);
  }
  EXPECT_EQ(position, text.GetLengthInChar());
  for (auto place = characters.end(); place != characters.begin();) {
    EXPECT_TRUE(*--place == text[--position]);
  }
  EXPECT_EQ(position, 0);
}

TEST(Characters, WorkWithTheStandardAlgorithms) {
  const KORUnicodeString text = "d\u00E9j\u00E0 vu";
  const Characters characters(text);
  EXPECT_EQ(std::ranges::count(characters, KORUnicodeChar(U'\u00E9')), 1);
  const auto found = std::ranges::find(characters, KORUnicodeChar('v'));
  EXPECT_EQ(found.Offset(), 7u);
  KORUnicodeString reversed;
  for (auto place = characters.end(); place != characters.begin();) {
    reversed += *--place;
  }
  EXPECT_EQ(reversed, "uv \u00E0j\u00E9d");
}

}  // namespace
