#include "KORSysTS/text_bytes.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string_view>

namespace {

using namespace std::string_view_literals;

constexpr std::size_t kNone = std::string_view::npos;

struct FindRow {
  std::string_view text;
  std::string_view what;
  std::size_t from;
  std::size_t found;
};
void PrintTo(const FindRow& iRow, std::ostream* ioStream) {
  *ioStream << '"' << iRow.what << "\" in \"" << iRow.text << "\" from " << iRow.from;
}

class FindRows : public ::testing::TestWithParam<FindRow> {};
TEST_P(FindRows, Find) {
  EXPECT_EQ(VYX::Text::Find(GetParam().text, GetParam().what, GetParam().from), GetParam().found);
}
INSTANTIATE_TEST_SUITE_P(Rows, FindRows,
                         ::testing::Values(FindRow{"abcabc", "c", 0, 2}, FindRow{"abcabc", "c", 3, 5},
                                           FindRow{"abc", "d", 0, kNone}, FindRow{"abc", "", 0, kNone},
                                           FindRow{"", "a", 0, kNone}, FindRow{"abc", "c", 3, kNone},
                                           FindRow{"abc", "a", 4, kNone}, FindRow{"ab", "abc", 0, kNone},
                                           FindRow{"a\0b"sv, "\0"sv, 0, 1}, FindRow{"x\u00E9", "\u00E9", 0, 1},
                                           FindRow{"x\u00E9", "\xA9", 0, kNone}, FindRow{"x\u00E9", "\xC3", 0, kNone},
                                           FindRow{"\u00E9\xA9", "\xA9", 0, 2},
                                           FindRow{"\U0001F600\x9F", "\x9F", 0, 4}));

TEST(TextBytes, WellFormedIsUtf8Throughout) {
  for (const std::string_view text : {""sv, "a"sv, "\0"sv, "\u00E9\u20AC\U0001F600"sv}) {
    EXPECT_TRUE(VYX::Text::IsWellFormed(text)) << text;
  }
  for (const std::string_view text : {"\xC3", "a\x80", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\u00E9\xFF"}) {
    EXPECT_FALSE(VYX::Text::IsWellFormed(text)) << text;
  }
}

TEST(TextBytes, CharactersAreSequencesOrSingleBytes) {
  constexpr std::string_view kText = "a\u00E9\u20AC\U0001F600\xC3\xF0\x9F\x98";
  constexpr std::size_t kLengths[] = {1, 2, 3, 4, 1, 1, 1, 1};
  std::size_t offset = 0;
  for (const std::size_t length : kLengths) {
    EXPECT_TRUE(VYX::Text::IsCharacterBoundary(kText, offset)) << offset;
    ASSERT_EQ(VYX::Text::CharacterLength(kText, offset), length) << offset;
    for (std::size_t inside = 1; inside < length; ++inside) {
      EXPECT_FALSE(VYX::Text::IsCharacterBoundary(kText, offset + inside)) << offset + inside;
    }
    offset += length;
  }
  EXPECT_EQ(offset, kText.size());
  EXPECT_TRUE(VYX::Text::IsCharacterBoundary(kText, offset));
}

}  // namespace
