#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "VYXInfStringUtil.h"

namespace {

using Util = VYXInfStringUtil;
using namespace std::string_view_literals;
using Pieces = std::vector<std::string_view>;

struct SplitRow {
  std::string_view text;
  std::string_view separator;
  Pieces all;
  Pieces filled;
};
void PrintTo(const SplitRow& iRow, std::ostream* ioStream) {
  *ioStream << '"' << iRow.text << "\" at \"" << iRow.separator << '"';
}

template <class Texts>
Pieces Views(const Texts& iTexts) {
  Pieces views;
  for (const KORUnicodeString& text : iTexts) {
    views.push_back(text.ToStringView());
  }
  return views;
}

class SplitRows : public ::testing::TestWithParam<SplitRow> {};
TEST_P(SplitRows, AllForms) {
  const KORUnicodeString text(GetParam().text);
  const KORUnicodeString separator(GetParam().separator);
  const auto all = Util::SplitV(text, separator, false);
  const auto filled = Util::SplitV(text, separator, true);
  const auto list = Util::Split(text, separator);
  EXPECT_EQ(Views(all), GetParam().all);
  EXPECT_EQ(Views(filled), GetParam().filled);
  EXPECT_EQ(Views(list), GetParam().filled);
}
INSTANTIATE_TEST_SUITE_P(
    Rows, SplitRows,
    ::testing::Values(SplitRow{"", ",", {}, {}}, SplitRow{"a", ",", {"a"}, {"a"}},
                      SplitRow{"a,b", ",", {"a", "b"}, {"a", "b"}}, SplitRow{"a,,b", ",", {"a", "", "b"}, {"a", "b"}},
                      SplitRow{",a,", ",", {"", "a"}, {"a"}}, SplitRow{",a", ",", {"", "a"}, {"a"}},
                      SplitRow{"a,", ",", {"a"}, {"a"}}, SplitRow{",", ",", {""}, {}},
                      SplitRow{",,", ",", {"", ""}, {}}, SplitRow{"a::b:c::", "::", {"a", "b:c"}, {"a", "b:c"}},
                      SplitRow{"aaaa", "aa", {"", ""}, {}}, SplitRow{"aaa", "aa", {"", "a"}, {"a"}},
                      SplitRow{"ab", "abc", {"ab"}, {"ab"}}, SplitRow{"A,B", "a", {"A,B"}, {"A,B"}},
                      SplitRow{"x\u00E9y\u00E9z", "\u00E9", {"x", "y", "z"}, {"x", "y", "z"}},
                      SplitRow{"\u00E9,\U0001F600", ",", {"\u00E9", "\U0001F600"}, {"\u00E9", "\U0001F600"}},
                      SplitRow{"1\U0001F6002", "\U0001F600", {"1", "2"}, {"1", "2"}},
                      // Part of a character is no separator, a stray byte is one.
                      SplitRow{"x\u00E9y", "\xA9", {"x\u00E9y"}, {"x\u00E9y"}},
                      SplitRow{"x\xA9y", "\xA9", {"x", "y"}, {"x", "y"}},
                      SplitRow{"a\0b,c"sv, ",", {"a\0b"sv, "c"}, {"a\0b"sv, "c"}},
                      SplitRow{"a\0b\0c"sv, "\0"sv, {"a", "b", "c"}, {"a", "b", "c"}},
                      // An empty separator is found nowhere.
                      SplitRow{"abc", "", {"abc"}, {"abc"}}, SplitRow{"", "", {}, {}}));

TEST(Split, LongTextAgainstARepeatingSeparatorIsLinear) {
  const std::string text(2'000'000, 'a');
  const std::string separator = std::string(100'000, 'a') + "b";
  EXPECT_EQ(Util::Split(KORUnicodeString(std::string_view(text)), KORUnicodeString(std::string_view(separator))).Size(),
            1);
}

TEST(Split, ListPositionsCountFromOne) {
  const KORListValKORUnicodeString pieces = Util::Split("a,b", ",");
  EXPECT_EQ(pieces[1], "a");
  EXPECT_EQ(pieces[2], "b");
}

struct JoinRow {
  std::vector<KORUnicodeString> texts;
  std::string_view separator;
  std::string_view joined;
};
void PrintTo(const JoinRow& iRow, std::ostream* ioStream) {
  *ioStream << '"' << iRow.joined << '"';
}

class JoinRows : public ::testing::TestWithParam<JoinRow> {};
TEST_P(JoinRows, AllForms) {
  const KORUnicodeString separator(GetParam().separator);
  KORListValKORUnicodeString list;
  for (const KORUnicodeString& text : GetParam().texts) {
    list.Append(text);
  }
  EXPECT_EQ(Util::Join(GetParam().texts, separator).ToStringView(), GetParam().joined);
  EXPECT_EQ(Util::Concatenate(GetParam().texts, separator).ToStringView(), GetParam().joined);
  EXPECT_EQ(Util::Join(list, separator).ToStringView(), GetParam().joined);
}
INSTANTIATE_TEST_SUITE_P(Rows, JoinRows,
                         ::testing::Values(JoinRow{{}, ",", ""}, JoinRow{{"a"}, ",", "a"}, JoinRow{{""}, ",", ""},
                                           JoinRow{{"a", "b", "c"}, ", ", "a, b, c"}, JoinRow{{"", "", ""}, ",", ",,"},
                                           JoinRow{{"a", "b"}, "", "ab"},
                                           JoinRow{{"\u00E9", "\U0001F600"}, "\u2192", "\u00E9\u2192\U0001F600"},
                                           JoinRow{{"x", "y"}, "\0"sv, "x\0y"sv}));

}  // namespace
