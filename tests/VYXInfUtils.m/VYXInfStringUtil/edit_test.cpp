#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <string_view>

#include "VYXInfStringUtil.h"
#include "text_row.h"

namespace {

using Util = VYXInfStringUtil;
using VYX::Test::TextRow;
using namespace std::string_view_literals;

KORUnicodeString Text(std::string_view iBytes) {
  return KORUnicodeString(iBytes);
}

class TrimRows : public ::testing::TestWithParam<TextRow> {};
TEST_P(TrimRows, RemovesEverySpace) {
  EXPECT_EQ(Util::Trim(Text(GetParam().text)).ToStringView(), GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(Rows, TrimRows,
                         ::testing::Values(TextRow{"", ""}, TextRow{"   ", ""}, TextRow{" a b ", "ab"},
                                           TextRow{"a\t b\n", "a\tb\n"},
                                           TextRow{"\u00E9 \u00A0\u3000", "\u00E9\u00A0\u3000"},
                                           TextRow{" \0 "sv, "\0"sv}, TextRow{"\xC3 \xA9", "\xC3\xA9"}));

struct CropRow {
  std::string_view text;
  std::uint64_t length;
  std::string_view result;
};
void PrintTo(const CropRow& iRow, std::ostream* ioStream) {
  *ioStream << '"' << iRow.text << "\" to " << iRow.length;
}

class CropRows : public ::testing::TestWithParam<CropRow> {};
TEST_P(CropRows, KeepsTheFirstCharacters) {
  EXPECT_EQ(Util::Crop(Text(GetParam().text), GetParam().length).ToStringView(), GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(Rows, CropRows,
                         ::testing::Values(CropRow{"", 0, ""}, CropRow{"", 5, ""}, CropRow{"abc", 0, ""},
                                           CropRow{"abc", 2, "ab"}, CropRow{"abc", 3, "abc"}, CropRow{"abc", 4, "abc"},
                                           CropRow{"abc", UINT64_MAX, "abc"}, CropRow{"abc", 0x100000001U, "abc"},
                                           CropRow{"\u00E9t\u00E9", 1, "\u00E9"},
                                           CropRow{"\U0001F600x", 1, "\U0001F600"}, CropRow{"\xC3\xC3", 1, "\xC3"},
                                           CropRow{"a\0b"sv, 2, "a\0"sv}));

struct SubRow {
  std::string_view text;
  std::int32_t start;
  std::int32_t count;
  std::string_view result;
};
void PrintTo(const SubRow& iRow, std::ostream* ioStream) {
  *ioStream << '"' << iRow.text << "\" from " << iRow.start << " count " << iRow.count;
}

class SubStringRows : public ::testing::TestWithParam<SubRow> {};
TEST_P(SubStringRows, SubString) {
  EXPECT_EQ(Util::SubString(Text(GetParam().text), GetParam().start, GetParam().count).ToStringView(),
            GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(
    Rows, SubStringRows,
    ::testing::Values(SubRow{"abc", 1, -1, "bc"}, SubRow{"abc", 3, 1, ""}, SubRow{"abc", 0, 0, ""},
                      SubRow{"abc", 0, 2, "ab"}, SubRow{"abc", 1, 100, "bc"}, SubRow{"abc", 0, INT32_MIN, "abc"},
                      SubRow{"abc", 2, INT32_MAX, "c"}, SubRow{"abc", INT32_MAX, 1, ""}, SubRow{"", 0, -1, ""},
                      SubRow{"abc", -1, 2, ""}, SubRow{"abc", -1, -1, ""}, SubRow{"abc", INT32_MIN, INT32_MIN, ""},
                      SubRow{"\u00E9t\U0001F600!", 2, 1, "\U0001F600"}, SubRow{"\u00E9t\u00E9", 1, -5, "t\u00E9"},
                      SubRow{"a\xFF\xFE", 1, 1, "\xFF"}));

struct ReplaceRow {
  std::string_view text;
  std::string_view characters;
  std::string_view replacement;
  std::string_view result;
};
void PrintTo(const ReplaceRow& iRow, std::ostream* ioStream) {
  *ioStream << '"' << iRow.text << "\": \"" << iRow.characters << "\" by \"" << iRow.replacement << '"';
}

class ReplaceRows : public ::testing::TestWithParam<ReplaceRow> {};
TEST_P(ReplaceRows, ReplaceCharacters) {
  const ReplaceRow& row = GetParam();
  EXPECT_EQ(Util::ReplaceCharacters(Text(row.text), Text(row.characters), Text(row.replacement)).ToStringView(),
            row.result);
}
INSTANTIATE_TEST_SUITE_P(
    Rows, ReplaceRows,
    ::testing::Values(ReplaceRow{"", "a", "b", ""}, ReplaceRow{"abc", "", "x", "abc"},
                      ReplaceRow{"abcabc", "ac", "-", "-b--b-"}, ReplaceRow{"abc", "b", "", "ac"},
                      ReplaceRow{"abc", "b", "bb", "abbc"}, ReplaceRow{"aaa", "a", "aa", "aaaaaa"},
                      ReplaceRow{"a/b:c", "/\\:*?\"<>|", "__", "a__b__c"},
                      ReplaceRow{"h\u00E9\u00E8", "\u00E8", "e", "h\u00E9e"},
                      ReplaceRow{"\U0001F600a\U0001F601", "\U0001F601a", "\u00E9", "\U0001F600\u00E9\u00E9"},
                      // A byte of a character is not that character, a stray byte is a character of its own.
                      ReplaceRow{"\u00E9", "\xC3\xC3\xA9\xA9", "x", "x"}, ReplaceRow{"\u00E9", "\xC3", "x", "\u00E9"},
                      ReplaceRow{"\xC3z", "\xC3", "x", "xz"}, ReplaceRow{"a\0b"sv, "\0"sv, "0", "a0b"},
                      ReplaceRow{"ABC", "abc", "x", "ABC"}));

TEST(ReplaceCharacters, TheArgumentMayBeTheReplacement) {
  const KORUnicodeString text("ab");
  EXPECT_EQ(Util::ReplaceCharacters(text, text, text), "abab");
}

}  // namespace
