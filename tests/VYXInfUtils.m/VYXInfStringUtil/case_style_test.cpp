#include <gtest/gtest.h>

#include <cstdint>
#include <regex>
#include <string>
#include <string_view>

#include "VYXInfStringUtil.h"
#include "text_row.h"

namespace {

using Util = VYXInfStringUtil;
using VYX::Test::TextRow;
using namespace std::string_view_literals;

class CapitalizeRows : public ::testing::TestWithParam<TextRow> {};
TEST_P(CapitalizeRows, Capitalize) {
  EXPECT_EQ(Util::Capitalize(KORUnicodeString(GetParam().text)).ToStringView(), GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(Rows, CapitalizeRows,
                         ::testing::Values(TextRow{"", ""}, TextRow{"a", "A"}, TextRow{"ab", "A"},
                                           TextRow{"abc", "Abc"}, TextRow{"ABC", "ABC"}, TextRow{"aBC dEF", "ABC dEF"},
                                           TextRow{"1ab", "1ab"}, TextRow{"\u00E9", "\u00C9"},
                                           TextRow{"\u00E9t", "\u00C9"}, TextRow{"\u00E9t\u00E9", "\u00C9t\u00E9"},
                                           TextRow{"\U00010428ab", "\U00010400ab"}, TextRow{"\u00FFab", "\u0178ab"},
                                           TextRow{"\u0131ab", "Iab"}, TextRow{"\u00DFab", "\u00DFab"},
                                           TextRow{"\xFF"
                                                   "ab",
                                                   "\xFF"
                                                   "ab"},
                                           TextRow{"\0ab"sv, "\0ab"sv}));

class CamelRows : public ::testing::TestWithParam<TextRow> {};
TEST_P(CamelRows, ConvertCamelToSnake) {
  EXPECT_EQ(Util::ConvertCamelToSnake(KORUnicodeString(GetParam().text)).ToStringView(), GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(Rows, CamelRows,
                         ::testing::Values(TextRow{"", ""}, TextRow{"a", "a"}, TextRow{"A", "A"},
                                           TextRow{"myVariableName", "my_Variable_Name"},
                                           TextRow{"getXMLValue", "get_XMLValue"}, TextRow{"HTML", "H_TML"},
                                           TextRow{"a_B", "a__B"}, TextRow{"AB", "A_B"},
                                           TextRow{"aB CD eF", "a_B C_D e_F"}, TextRow{"9Lives", "9_Lives"},
                                           TextRow{"-Ab", "-Ab"}, TextRow{"\u00E9Ab", "\u00E9Ab"},
                                           TextRow{"a\u00C9", "a\u00C9"}, TextRow{"\u00E9XY", "\u00E9X_Y"},
                                           TextRow{"a\0Bc\0dE"sv, "a\0Bc\0d_E"sv},
                                           TextRow{"\xFF"
                                                   "aB",
                                                   "\xFF"
                                                   "a_B"}));

// Every text of up to six characters of a small alphabet, against the rule in its own words.
TEST(ConvertCamelToSnake, AgreesWithTheRegularExpression) {
  constexpr std::string_view kCharacters = "aB_ 7\xC3";
  const std::regex rule("\\B[A-Z]+", std::regex::ECMAScript);
  for (std::size_t length = 0; length <= 6; ++length) {
    std::size_t count = 1;
    for (std::size_t i = 0; i < length; ++i) {
      count *= kCharacters.size();
    }
    for (std::size_t number = 0; number < count; ++number) {
      std::string text;
      for (std::size_t rest = number; text.size() < length; rest /= kCharacters.size()) {
        text.push_back(kCharacters[rest % kCharacters.size()]);
      }
      const std::string expected = std::regex_replace(text, rule, "_$&");
      ASSERT_EQ(Util::ConvertCamelToSnake(KORUnicodeString(std::string_view(text))).ToStringView(), expected) << text;
    }
  }
}

TEST(ConvertCamelToSnake, AMillionCapitals) {
  const std::string text(1'000'000, 'A');
  EXPECT_EQ(Util::ConvertCamelToSnake(KORUnicodeString(std::string_view(text))).GetLengthInByte(), 1'000'001U);
}

class SnakeRows : public ::testing::TestWithParam<TextRow> {};
TEST_P(SnakeRows, ConvertSnakeToCamel) {
  EXPECT_EQ(Util::ConvertSnakeToCamel(KORUnicodeString(GetParam().text)).ToStringView(), GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(
    Rows, SnakeRows,
    ::testing::Values(TextRow{"", ""}, TextRow{"_", ""}, TextRow{"___", ""}, TextRow{"Hello", "hello"},
                      TextRow{"HELLO", "hELLO"}, TextRow{"_HELLO_", "hELLO"}, TextRow{"H", "h"},
                      TextRow{"my_variable_NAME", "myVariableNAME"}, TextRow{"HELLO_world", "helloWorld"},
                      TextRow{"a__b", "aB"}, TextRow{"_a_b_", "aB"}, TextRow{"a_9_b", "a9B"},
                      TextRow{"\u00C9T\u00C9_\u00E9t\u00E9", "\u00E9t\u00E9\u00C9t\u00E9"},
                      TextRow{"\u00C9T\u00C9", "\u00E9T\u00C9"}, TextRow{"x_\U00010428y", "x\U00010400y"},
                      TextRow{"A\0B_c\0d"sv, "a\0bC\0d"sv}));

}  // namespace
