#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

#include "VYXInfStringUtil.h"
#include "text_row.h"

namespace {

using Util = VYXInfStringUtil;
using VYX::Test::TextRow;
using namespace std::string_view_literals;

class JsRows : public ::testing::TestWithParam<TextRow> {};
TEST_P(JsRows, EscapeStringForJS) {
  EXPECT_EQ(Util::EscapeStringForJS(KORUnicodeString(GetParam().text)).ToStringView(), GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(
    Rows, JsRows,
    ::testing::Values(TextRow{"", ""}, TextRow{"plain", "plain"}, TextRow{"\\\n", "\\\\\\n"}, TextRow{"a\"b", "a\\\"b"},
                      TextRow{"\\\"\b\f\n\r\t", "\\\\\\\"\\b\\f\\n\\r\\t"}, TextRow{"it's", "it's"},
                      TextRow{"\x0B\x01\x1F\x7F/", "\x0B\x01\x1F\x7F/"},
                      TextRow{"\u2028\u00E9\U0001F600", "\u2028\u00E9\U0001F600"}, TextRow{"\xFF\n\xC3", "\xFF\\n\xC3"},
                      TextRow{"a\0\"b"sv, "a\0\\\"b"sv}, TextRow{"\\n", "\\\\n"},
                      TextRow{"a text of more than twenty-two bytes", "a text of more than twenty-two bytes"},
                      TextRow{"a text of more than twenty-two bytes\r\n",
                              "a text of more than twenty-two bytes\\r\\n"}));

struct EscapeRow {
  std::string_view text;
  KORUnicodeChar character;
  KORUnicodeChar escape;
  std::string_view result;
};
void PrintTo(const EscapeRow& iRow, std::ostream* ioStream) {
  *ioStream << '"' << iRow.text << '"';
}

// The stated steps, one by one.
KORUnicodeString EscapedStepByStep(KORUnicodeString ioText, const KORUnicodeChar& iCharacter,
                                   const KORUnicodeChar& iEscape) {
  for (int i = 0; i < ioText.GetLengthInChar(); ++i) {
    if (ioText[i] == iCharacter && (i == 0 || !(ioText[i - 1] == iEscape))) {
      ioText.Insert(i, KORUnicodeString(iEscape));
    }
  }
  return ioText;
}

class EscapeRows : public ::testing::TestWithParam<EscapeRow> {};
TEST_P(EscapeRows, EscapeChar) {
  const EscapeRow& row = GetParam();
  const KORUnicodeString text(row.text);
  const KORUnicodeString once = Util::EscapeChar(text, row.character, row.escape);
  EXPECT_EQ(once.ToStringView(), row.result);
  EXPECT_EQ(EscapedStepByStep(text, row.character, row.escape).ToStringView(), row.result);
  if (!(row.character == row.escape)) {
    EXPECT_EQ(Util::EscapeChar(once, row.character, row.escape), once);
  }
}
INSTANTIATE_TEST_SUITE_P(
    Rows, EscapeRows,
    ::testing::Values(
        EscapeRow{"", '"', '\\', ""}, EscapeRow{"a\"b\\\"c", '"', '\\', "a\\\"b\\\"c"},
        EscapeRow{"\"", '"', '\\', "\\\""}, EscapeRow{"\"\"", '"', '\\', "\\\"\\\""},
        EscapeRow{"abc", 'x', '\\', "abc"}, EscapeRow{"\\", '"', '\\', "\\"}, EscapeRow{"\\\\\"", '"', '\\', "\\\\\""},
        // Both the same: a run of two is escaped already.
        EscapeRow{"a", 'a', 'a', "aa"}, EscapeRow{"aa", 'a', 'a', "aaa"}, EscapeRow{"aaa", 'a', 'a', "aaaa"},
        EscapeRow{"\u00E9x\u00E9", KORUnicodeChar(U'\u00E9'), KORUnicodeChar(U'\u00E8'), "\u00E8\u00E9x\u00E8\u00E9"},
        EscapeRow{"\u00E8\u00E9", KORUnicodeChar(U'\u00E9'), KORUnicodeChar(U'\u00E8'), "\u00E8\u00E9"},
        EscapeRow{"\U0001F600", KORUnicodeChar(U'\U0001F600'), KORUnicodeChar('\\'), "\\\U0001F600"},
        // The last byte of a character is not an escape byte before the next one.
        EscapeRow{"\u00E9x", 'x', '\xA9', "\u00E9\xA9x"}, EscapeRow{"a\0b"sv, '\0', '\\', "a\\\0b"sv}));

TEST(EscapeChar, AgreesWithTheStepsOnEveryShortText) {
  constexpr std::string_view kCharacters = "aeb";
  for (std::size_t length = 0; length <= 7; ++length) {
    std::size_t count = 1;
    for (std::size_t i = 0; i < length; ++i) {
      count *= kCharacters.size();
    }
    for (std::size_t number = 0; number < count; ++number) {
      std::string text;
      for (std::size_t rest = number; text.size() < length; rest /= kCharacters.size()) {
        text.push_back(kCharacters[rest % kCharacters.size()]);
      }
      const KORUnicodeString whole{std::string_view(text)};
      ASSERT_EQ(Util::EscapeChar(whole, 'a', 'e'), EscapedStepByStep(whole, 'a', 'e')) << text;
      ASSERT_EQ(Util::EscapeChar(whole, 'a', 'a'), EscapedStepByStep(whole, 'a', 'a')) << text;
    }
  }
}

TEST(EscapeChar, AMillionOccurrences) {
  const std::string text(1'000'000, '"');
  EXPECT_EQ(Util::EscapeChar(KORUnicodeString(std::string_view(text)), '"', '\\').GetLengthInByte(), 2'000'000U);
}

}  // namespace
