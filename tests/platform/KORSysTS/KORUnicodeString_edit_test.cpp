#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <string_view>

#include "KORSysTS/KORUnicodeString.h"

namespace {

using namespace std::string_view_literals;

const std::string kLong(60, 'l');

struct CutRow {
  const char* text;
  int start;
  int count;
  const char* result;
};

TEST(SubString, CutsByCharacters) {
  const CutRow rows[] = {
      {"abcdef", 0, 6, "abcdef"},
      {"abcdef", 2, 3, "cde"},
      {"abcdef", 4, 100, "ef"},
      {"abcdef", 4, INT_MAX, "ef"},
      {"abcdef", 6, 1, ""},
      {"abcdef", 7, 1, ""},
      {"abcdef", -1, 3, ""},
      {"abcdef", 2, -1, ""},
      {"abcdef", 2, 0, ""},
      {"abcdef", INT_MAX, INT_MAX, ""},
      {"abcdef", INT_MIN, INT_MIN, ""},
      {"", 0, 1, ""},
      {"a\xC3\xA9\xE2\x82\xACz", 1, 2, "\xC3\xA9\xE2\x82\xAC"},
      {"\xF0\x9F\x98\x80\xF0\x9F\x98\x81", 1, 1, "\xF0\x9F\x98\x81"},
      {"\xE2\x82z", 1, 1, "\x82"},
  };
  for (const CutRow& row : rows) {
    EXPECT_EQ(KORUnicodeString(row.text).SubString(row.start, row.count), row.result)
        << row.text << ", " << row.start << ", " << row.count;
  }
}

struct ReplaceRow {
  const char* text;
  int start;
  int count;
  const char* replacement;
  const char* result;
};

TEST(ReplaceSubString, ReplacesByCharacters) {
  const ReplaceRow rows[] = {
      {"abcdef", 1, 2, "X", "aXdef"},
      {"abcdef", 1, 2, "XYZ", "aXYZdef"},
      {"abcdef", 1, 2, "", "adef"},
      {"abcdef", 4, 9, "X", "abcdX"},
      {"abcdef", 6, 0, "X", "abcdefX"},
      {"abcdef", 6, 3, "X", "abcdefX"},
      {"abcdef", 7, 0, "X", "abcdef"},
      {"abcdef", -1, 2, "X", "abcdef"},
      {"abcdef", 1, -1, "X", "abcdef"},
      {"abcdef", 0, INT_MAX, "X", "X"},
      {"\xC3\xA9\xC3\xA9\xC3\xA9", 1, 1, "e",
       "\xC3\xA9"
       "e\xC3\xA9"},
      {"abcdef", 3, 0, "a text that needs an allocation", "abca text that needs an allocationdef"},
  };
  for (const ReplaceRow& row : rows) {
    KORUnicodeString text(row.text);
    text.ReplaceSubString(row.start, row.count, row.replacement);
    EXPECT_EQ(text, row.result) << row.text << ", " << row.start << ", " << row.count << ", " << row.replacement;
  }
}

TEST(ReplaceSubString, TakesTheTextItself) {
  for (const std::string& content : {std::string("abcdef"), kLong}) {
    KORUnicodeString text(content);
    text.ReplaceSubString(1, 2, text);
    EXPECT_EQ(text.ConvertToChar(), content.substr(0, 1) + content + content.substr(3));
  }
}

TEST(Insert, PutsATextBeforeAPosition) {
  const ReplaceRow rows[] = {
      {"abc", 0, 0, "X", "Xabc"}, {"abc", 2, 0, "X", "abXc"}, {"abc", 3, 0, "X", "abcX"}, {"abc", 4, 0, "X", "abc"},
      {"abc", -1, 0, "X", "abc"}, {"", 0, 0, "X", "X"},       {"abc", 1, 0, "", "abc"},
  };
  for (const ReplaceRow& row : rows) {
    KORUnicodeString text(row.text);
    text.Insert(row.start, row.replacement);
    EXPECT_EQ(text, row.result) << row.text << ", " << row.start;
  }
}

TEST(Insert, TakesTheTextItselfAlsoWhereThereIsRoom) {
  KORUnicodeString text("abc");
  text.Insert(1, text);
  EXPECT_EQ(text, "aabcbc");
  KORUnicodeString roomy(kLong);
  roomy.Reserve(1000);
  roomy.Insert(30, roomy);
  EXPECT_EQ(roomy.ConvertToChar(), kLong + kLong);
}

TEST(Remove, RemovesByCharacters) {
  const CutRow rows[] = {
      {"abcdef", 1, 2, "adef"},
      {"abcdef", 4, 9, "abcd"},
      {"abcdef", 0, 6, ""},
      {"abcdef", 6, 1, "abcdef"},
      {"abcdef", -1, 1, "abcdef"},
      {"abcdef", 1, -1, "abcdef"},
      {"\xC3\xA9x\xC3\xA9", 0, 2, "\xC3\xA9"},
  };
  for (const CutRow& row : rows) {
    KORUnicodeString text(row.text);
    text.Remove(row.start, row.count);
    EXPECT_EQ(text, row.result) << row.text << ", " << row.start << ", " << row.count;
  }
}

// Every character of the text is one byte, until removing brings a lead and its continuation together.
TEST(Remove, CountsAnewWhereWhatIsLeftJoinsToACharacter) {
  KORUnicodeString text((kLong + "\xE2-\x82\xAC" + kLong).c_str());
  EXPECT_EQ(text.GetLengthInChar(), 124);
  text.Remove(61, 1);
  EXPECT_EQ(text.GetLengthInChar(), 121);
  EXPECT_TRUE(text[60] == U'\u20AC' && text[61] == 'l' && text[120] == 'l' && text[121] == U'\0');
  EXPECT_EQ(text.SearchSubString("\xE2\x82\xACl"), 60);
}

TEST(ReplaceSubString, ChangesInPlaceKeepPositionsRight) {
  KORUnicodeString text(KORUnicodeChar(U'\u20AC'), 100);
  EXPECT_TRUE(text[50] == U'\u20AC');
  text.ReplaceSubString(48, 3, "xyz");
  EXPECT_TRUE(text[47] == U'\u20AC' && text[48] == 'x' && text[50] == 'z' && text[51] == U'\u20AC');
  EXPECT_EQ(text.GetLengthInChar(), 100);
  KORUnicodeString ascii(kLong);
  EXPECT_EQ(ascii.GetLengthInChar(), 60);
  ascii.ReplaceSubString(10, 1, "\xC3\xA9");
  EXPECT_EQ(ascii.GetLengthInChar(), 60);
  EXPECT_TRUE(ascii[10] == U'\u00E9' && ascii[11] == 'l');
}

struct ReplaceAllRow {
  const char* text;
  const char* what;
  const char* with;
  const char* result;
};

TEST(ReplaceAll, ReplacesFromLeftToRightOnce) {
  const ReplaceAllRow rows[] = {
      {"abcabc", "b", "X", "aXcaXc"},
      {"abcabc", "bc", "", "aa"},
      {"aaaa", "aa", "a", "aa"},
      {"aaa", "aa", "b", "ba"},
      {"aaa", "a", "aa", "aaaaaa"},
      {"abc", "", "X", "abc"},
      {"", "a", "b", ""},
      {"abc", "abcd", "X", "abc"},
      {"abc", "abc", "", ""},
      {"abc", "x", "y", "abc"},
      {"\xC3\xA9-\xC3\xA9", "\xC3\xA9", "e", "e-e"},
      {"\xE2\x82\xAC\x82", "\x82", "!", "\xE2\x82\xAC!"},
      {"\xE2\x82\xAC\xE2\x82", "\xE2\x82", "!", "\xE2\x82\xAC!"},
  };
  for (const ReplaceAllRow& row : rows) {
    KORUnicodeString text(row.text);
    text.ReplaceAll(row.what, row.with);
    EXPECT_EQ(text, row.result) << row.text << ", " << row.what << ", " << row.with;
  }
}

TEST(ReplaceAll, TakesTheTextItself) {
  KORUnicodeString text("abab");
  text.ReplaceAll(text, "x");
  EXPECT_EQ(text, "x");
  text = "abab";
  text.ReplaceAll("a", text);
  EXPECT_EQ(text, "ababbababb");
  text.ReplaceAll(text, text);
  EXPECT_EQ(text, "ababbababb");
}

TEST(ReplaceAll, ShrinksAndGrowsLongTexts) {
  KORUnicodeString text('a', 100'000);
  text.ReplaceAll("a", "bcd");
  EXPECT_EQ(text.GetLengthInByte(), 300'000u);
  text.ReplaceAll("bcd", "");
  EXPECT_TRUE(text.IsEmpty());
}

TEST(Append, TakesTheTextItselfAndItsParts) {
  for (const std::string& content : {std::string("abc"), std::string(15, 'm'), kLong}) {
    KORUnicodeString text(content);
    text.Append(text);
    EXPECT_EQ(text.ConvertToChar(), content + content);
    text.Append(text.CastToCharPtr() + 1);
    EXPECT_EQ(text.ConvertToChar(), content + content + (content + content).substr(1));
  }
}

TEST(Append, CompletesACharacterThatTheTextEndedIn) {
  KORUnicodeString text(kLong + "\xE2\x82");
  EXPECT_EQ(text.GetLengthInChar(), 62);
  EXPECT_TRUE(text[61] == '\x82');
  text += '\xAC';
  EXPECT_EQ(text.GetLengthInChar(), 61);
  EXPECT_TRUE(text[60] == U'\u20AC');
  EXPECT_TRUE(text[61] == KORUnicodeChar());
}

TEST(Append, KeepsCountsRightWhileGrowing) {
  KORUnicodeString text(kLong);
  for (int count = 61; count < 400; ++count) {
    text += count % 2 == 0 ? KORUnicodeChar('x') : KORUnicodeChar(U'\u20AC');
    ASSERT_EQ(text.GetLengthInChar(), count);
    ASSERT_TRUE(text[count - 1] == (count % 2 == 0 ? U'x' : U'\u20AC'));
    ASSERT_TRUE(text[59] == 'l');
  }
}

TEST(Append, NullAndEmptyChangeNothing) {
  KORUnicodeString text("abc");
  text.Append(static_cast<const char*>(nullptr)).Append("").Append(KORUnicodeString());
  EXPECT_EQ(text, "abc");
}

TEST(Reserve, MakesRoomOnce) {
  KORUnicodeString text("abc");
  text.Reserve(10'000);
  const char* const before = text.CastToCharPtr();
  for (int index = 0; index < 9'997; ++index) {
    text += 'x';
  }
  EXPECT_EQ(text.CastToCharPtr(), before);
  EXPECT_EQ(text.GetLengthInChar(), 10'000);
}

}  // namespace
