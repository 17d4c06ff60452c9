#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>
#include <unordered_set>

#include "VYXInfLog.h"
#include "VYXInfStringUtil.h"
#include "support/captured_stdout.h"

namespace {

using Util = VYXInfStringUtil;
using Condition = VYXInfStringUtil::CompareStringCondition;
using VYX::Test::CapturedStdout;
using VYX::Test::ConsoleLevel;
using VYX::Test::Line;
using namespace std::string_view_literals;

struct CriterionRow {
  Condition condition;
  std::string_view criterion;
  std::string_view examined;
  bool answer;
};
void PrintTo(const CriterionRow& iRow, std::ostream* ioStream) {
  *ioStream << static_cast<int>(iRow.condition) << " \"" << iRow.criterion << "\" on \"" << iRow.examined << '"';
}

class CriterionRows : public ::testing::TestWithParam<CriterionRow> {};
TEST_P(CriterionRows, AnswersInSilence) {
  CapturedStdout captured;
  EXPECT_EQ(Util::StringMatchesByCriterion(GetParam().condition, KORUnicodeString(GetParam().criterion),
                                           KORUnicodeString(GetParam().examined)),
            GetParam().answer);
  EXPECT_EQ(captured.Text(), "");
}
INSTANTIATE_TEST_SUITE_P(Contains, CriterionRows,
                         ::testing::Values(CriterionRow{Condition::Contains, "bc", "abcd", true},
                                           CriterionRow{Condition::Contains, "", "", true},
                                           CriterionRow{Condition::Contains, "", "x", true},
                                           CriterionRow{Condition::Contains, "bd", "abcd", false},
                                           CriterionRow{Condition::Contains, "B", "abc", false},
                                           CriterionRow{Condition::Contains, "a*d", "xabcdx", true},
                                           CriterionRow{Condition::Contains, "\\*", "a*b", true},
                                           CriterionRow{Condition::Contains, "\\*", "ab", false},
                                           CriterionRow{Condition::Contains, "\u00E9", "\u00E8\u00E9", true},
                                           CriterionRow{Condition::Contains, "?", "a", false}));
INSTANTIATE_TEST_SUITE_P(Ends, CriterionRows,
                         ::testing::Values(CriterionRow{Condition::StartsWith, "ab", "abc", true},
                                           CriterionRow{Condition::StartsWith, "abc", "ab", false},
                                           CriterionRow{Condition::StartsWith, "AB", "abc", false},
                                           CriterionRow{Condition::StartsWith, "", "abc", false},
                                           CriterionRow{Condition::StartsWith, "*", "abc", false},
                                           CriterionRow{Condition::EndsWith, "bc", "abc", true},
                                           CriterionRow{Condition::EndsWith, "abc", "bc", false},
                                           CriterionRow{Condition::EndsWith, "BC", "abc", false},
                                           CriterionRow{Condition::EndsWith, "", "abc", false}));
INSTANTIATE_TEST_SUITE_P(Whole, CriterionRows,
                         ::testing::Values(CriterionRow{Condition::Equal, "abc", "abc", true},
                                           CriterionRow{Condition::Equal, "", "", true},
                                           CriterionRow{Condition::Equal, "ABC", "abc", false},
                                           CriterionRow{Condition::Equal, "a*", "abc", false},
                                           CriterionRow{Condition::Equal, "a"sv, "a\0"sv, false},
                                           CriterionRow{Condition::WildMatch, "a*c", "abc", true},
                                           CriterionRow{Condition::WildMatch, "a*c", "abd", false},
                                           CriterionRow{Condition::WildMatch, "b", "abc", false},
                                           CriterionRow{Condition::WildMatch, "*", "", true},
                                           CriterionRow{Condition::WildMatch, "a\\*c", "a*c", true},
                                           CriterionRow{Condition::WildMatch, "a\\*c", "abc", false},
                                           // The criterion comes first: a pattern in the examined text is none.
                                           CriterionRow{Condition::WildMatch, "abc", "a*c", false}));

TEST(StringMatchesByCriterion, AnUnknownConditionIsReported) {
  for (const int value : {5, -1, 1000}) {
    CapturedStdout captured;
    EXPECT_FALSE(Util::StringMatchesByCriterion(static_cast<Condition>(value), "a", "a"));
    EXPECT_THAT(captured.LogLines(), ::testing::ElementsAre(Line("ERROR", "Unknown condition.")));
  }
}

TEST(StringMatchesByCriterion, AnUnknownConditionIsSilentWhereErrorsAreFiltered) {
  const ConsoleLevel level(FATAL);
  CapturedStdout captured;
  EXPECT_FALSE(Util::StringMatchesByCriterion(static_cast<Condition>(5), "a", "a"));
  EXPECT_EQ(captured.Text(), "");
}

TEST(StringContainsAnyOf, LooksCharactersUp) {
  const std::unordered_set<char> characters = {'x', '\0'};
  EXPECT_FALSE(Util::StringContainsAnyOf("", characters));
  EXPECT_FALSE(Util::StringContainsAnyOf("abc", characters));
  EXPECT_TRUE(Util::StringContainsAnyOf("abx", characters));
  EXPECT_TRUE(Util::StringContainsAnyOf("\u00E9\U0001F600x", characters));
  EXPECT_TRUE(Util::StringContainsAnyOf(KORUnicodeString("a\0b"sv), characters));
  EXPECT_FALSE(Util::StringContainsAnyOf("abx", {}));
}

TEST(StringContainsAnyOf, NarrowsAsThePlatformDoes) {
  const std::unordered_set<char> substitute = {'\x1A'};
  EXPECT_TRUE(Util::StringContainsAnyOf("a\u00E9", substitute));
  EXPECT_TRUE(Util::StringContainsAnyOf("a\x1A", substitute));
  EXPECT_FALSE(Util::StringContainsAnyOf("a\xFF", substitute));
  const std::unordered_set<char> bytes = {'\xC3', '\xA9', '\xFF'};
  EXPECT_FALSE(Util::StringContainsAnyOf("a\u00E9", bytes));
  EXPECT_TRUE(Util::StringContainsAnyOf("a\xFF", bytes));
  EXPECT_TRUE(Util::StringContainsAnyOf("\xC3", bytes));
}

TEST(StringContainsAnyOf, AgreesWithTheCharacterWalkForEveryByteOfTheSet) {
  const KORUnicodeString text("a\u00E9\xC3\x7F\U0001F600\x80z");
  for (int value = 0; value < 256; ++value) {
    const char wanted = static_cast<char>(value);
    bool expected = false;
    for (int position = 0; position < text.GetLengthInChar(); ++position) {
      expected = expected || static_cast<char>(text[position]) == wanted;
    }
    EXPECT_EQ(Util::StringContainsAnyOf(text, {wanted}), expected) << value;
  }
}

TEST(IsXssSafe, RefusesElevenCharactersOnly) {
  constexpr std::string_view kUnsafe = "|;&$><'\"\\!#";
  EXPECT_TRUE(Util::IsXssSafe(""));
  EXPECT_TRUE(Util::IsXssSafe("a(b)"));
  EXPECT_FALSE(Util::IsXssSafe("a#b"));
  EXPECT_FALSE(Util::IsXssSafe("a<b"));
  EXPECT_TRUE(Util::IsXssSafe("\u00E9\U0001F600\xFF"));
  for (int value = 0; value < 256; ++value) {
    const char text[] = {'a', static_cast<char>(value), 'b'};
    EXPECT_EQ(Util::IsXssSafe(KORUnicodeString(std::string_view(text, 3))),
              kUnsafe.find(text[1]) == std::string_view::npos)
        << value;
  }
}

}  // namespace
