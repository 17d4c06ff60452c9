#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "KORSysTS/KORUnicodeString.h"

namespace {

struct Row {
  const char* pattern;
  const char* text;
  int result;
};

TEST(WildMatch, MatchesTheWholeText) {
  const Row rows[] = {
      {"", "", 1},
      {"", "a", 0},
      {"a", "", 0},
      {"a", "a", 1},
      {"a", "A", 0},
      {"a", "ab", 0},
      {"*", "", 1},
      {"*", "anything", 1},
      {"**", "", 1},
      {"***a***", "a", 1},
      {"*.txt", "name.txt", 1},
      {"*.txt", ".txt", 1},
      {"*.txt", "name.txt.bak", 0},
      {"*.txt", "name.txt.txt", 1},
      {"a*c", "ac", 1},
      {"a*c", "abc", 1},
      {"a*c", "abcb", 0},
      {"a*b*c", "a-b-b-c", 1},
      {"a*b*c", "acb", 0},
      {"*aab", "aaaaab", 1},
      {"?", "a", 0},
      {"?", "?", 1},
      {"\\*", "*", 1},
      {"\\*", "a", 0},
      {"\\**", "*abc", 1},
      {"a\\*b", "a*b", 1},
      {"a\\*b", "axb", 0},
      {"\\\\", "\\", 1},
      {"\\a", "a", 1},
      {"\\a", "\\a", 0},
      {"a\\", "a\\", 1},
      {"a\\", "a", 0},
      {"*\\", "xyz\\", 1},
      {"*\\*", "abc*", 1},
      {"*\\*", "abc", 0},
      {"C:\\\\dir\\\\*", "C:\\dir\\file", 1},
      {"\xC3\xA9*", "\xC3\xA9t\xC3\xA9", 1},
      {"*\xC3\xA9", "\xC3\xA9t\xC3\xA9", 1},
      {"\\\xC3\xA9", "\xC3\xA9", 1},
      {"*\xAC", "\xE2\x82\xAC", 0},
      {"\xE2*", "\xE2\x82\xAC", 0},
      {"*\xAC", "\xE2\x82\xAC\xAC", 1},
      {"\xE2\x82*", "\xE2\x82", 1},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(KORUnicodeString(row.text).WildMatch(row.pattern, '*', '\\'), row.result)
        << row.pattern << " / " << row.text;
  }
}

TEST(WildMatch, TakesOtherSpecialCharacters) {
  const KORUnicodeChar euro(U'\u20AC');
  EXPECT_EQ(KORUnicodeString("abc").WildMatch("a%", '%', '!'), 1);
  EXPECT_EQ(KORUnicodeString("a%").WildMatch("a!%", '%', '!'), 1);
  EXPECT_EQ(KORUnicodeString("abc").WildMatch("a!%", '%', '!'), 0);
  EXPECT_EQ(KORUnicodeString("a*").WildMatch("a*", '%', '!'), 1);
  EXPECT_EQ(KORUnicodeString("abc").WildMatch("a\xE2\x82\xAC", euro, '!'), 1);
  EXPECT_EQ(KORUnicodeString("a*c").WildMatch("a\xE2\x82\xAC*c", '*', euro), 1);
  EXPECT_EQ(KORUnicodeString("abc").WildMatch("a\xE2\x82\xAC*c", '*', euro), 0);
}

TEST(WildMatch, OneCharacterInBothRolesMatchesAnyRun) {
  EXPECT_EQ(KORUnicodeString("abc").WildMatch("a*", '*', '*'), 1);
}

// The definition, by filling the table of all prefixes.
bool MatchesByTable(const std::string& iPattern, const std::string& iText) {
  std::vector<std::pair<char, bool>> items;
  for (std::size_t index = 0; index < iPattern.size(); ++index) {
    const bool isEscape = iPattern[index] == '\\' && index + 1 < iPattern.size();
    index += isEscape ? 1 : 0;
    items.emplace_back(iPattern[index], !isEscape && iPattern[index] == '*');
  }
  std::vector<char> reach(iText.size() + 1, 0);
  reach[0] = 1;
  for (const auto& [letter, isAny] : items) {
    std::vector<char> next(iText.size() + 1, 0);
    for (std::size_t end = 0; end <= iText.size(); ++end) {
      const bool isStep = end > 0 && reach[end - 1] != 0 && iText[end - 1] == letter;
      const bool isRun = reach[end] != 0 || (end > 0 && next[end - 1] != 0);
      next[end] = static_cast<char>((isAny ? isRun : isStep) ? 1 : 0);
    }
    reach = next;
  }
  return reach.back() != 0;
}

TEST(WildMatch, AgreesWithTheDefinition) {
  std::mt19937 random(11);
  const std::string letters = "ab*\\";
  for (int round = 0; round < 100'000; ++round) {
    std::string pattern(random() % 10, 'a');
    std::string text(random() % 12, 'a');
    for (char& letter : pattern) {
      letter = letters[random() % letters.size()];
    }
    for (char& letter : text) {
      letter = letters[random() % 8 < 7 ? random() % 2 : 2 + random() % 2];
    }
    ASSERT_EQ(KORUnicodeString(text).WildMatch(pattern.c_str(), '*', '\\') == 1, MatchesByTable(pattern, text))
        << pattern << " / " << text;
  }
}

// Trying every division of the text among the runs would never end.
TEST(WildMatch, ManyRunsTakeAtMostPatternTimesText) {
  KORUnicodeString pattern;
  for (int index = 0; index < 1000; ++index) {
    pattern += "*a";
  }
  pattern += "*b";
  EXPECT_EQ(KORUnicodeString('a', 20'000).WildMatch(pattern, '*', '\\'), 0);
  EXPECT_EQ((KORUnicodeString('a', 20'000) + "b").WildMatch(pattern, '*', '\\'), 1);
  EXPECT_EQ(KORUnicodeString('a', 1'000'000).WildMatch(KORUnicodeString('*', 1'000'000), '*', '\\'), 1);
}

}  // namespace
