#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <string>
#include <string_view>

#include "KORSysTS/KORUnicodeString.h"
#include "platform/src/KORSysTS/byte_search.h"

namespace {

using Mode = KORUnicodeString::KORSearchMode;
using VYX::Platform::FindFirst;
using VYX::Platform::FindLast;

struct Row {
  const char* text;
  const char* what;
  int start;
  int forward;
  int backward;
};

TEST(SearchSubString, FindsPositionsInCharacters) {
  const Row rows[] = {
      {"abcabc", "abc", 0, 0, 3},
      {"abcabc", "abc", 1, 3, 3},
      {"abcabc", "abc", 3, 3, 3},
      {"abcabc", "abc", 4, -1, -1},
      {"abcabc", "c", 6, -1, -1},
      {"abcabc", "c", 7, -1, -1},
      {"abcabc", "c", -1, -1, -1},
      {"abcabc", "c", INT_MAX, -1, -1},
      {"abcabc", "", 0, -1, -1},
      {"", "", 0, -1, -1},
      {"", "a", 0, -1, -1},
      {"aaaa", "aa", 0, 0, 2},
      {"aaaa", "aa", 1, 1, 2},
      {"abc", "ABC", 0, -1, -1},
      {"\xC3\xA9\xE2\x82\xAC\xC3\xA9x", "\xC3\xA9", 0, 0, 2},
      {"\xC3\xA9\xE2\x82\xAC\xC3\xA9x", "x", 0, 3, 3},
      {"\xC3\xA9\xE2\x82\xAC\xC3\xA9x", "\xC3\xA9", 1, 2, 2},
      // Whole characters only.
      {"\xE2\x82\xAC", "\x82", 0, -1, -1},
      {"\xE2\x82\xAC", "\xE2\x82", 0, -1, -1},
      {"\xE2\x82\xAC\x82", "\x82", 0, 1, 1},
      {"\x82\xE2\x82\xAC", "\x82", 0, 0, 0},
      {"\xE2\x82\xAC\xE2\x82", "\xE2\x82", 0, 1, 1},
  };
  for (const Row& row : rows) {
    const KORUnicodeString text(row.text);
    EXPECT_EQ(text.SearchSubString(row.what, row.start), row.forward)
        << row.text << ", " << row.what << ", " << row.start;
    EXPECT_EQ(text.SearchSubString(row.what, row.start, Mode::Backward), row.backward)
        << row.text << ", " << row.what << ", " << row.start;
  }
}

TEST(SearchSubString, FindsTheTextInItself) {
  const KORUnicodeString text("self");
  EXPECT_EQ(text.SearchSubString(text), 0);
  EXPECT_EQ(text.SearchSubString(text, 1), -1);
}

TEST(SearchSubString, FindsBehindAZeroCharacter) {
  const KORUnicodeString text(std::string_view("a\0b\0c", 5));
  EXPECT_EQ(text.SearchSubString("c"), 4);
  EXPECT_EQ(text.SearchSubString(KORUnicodeString('\0', 1), 2), 3);
}

// Small alphabets and periodic needles make long partial matches, which send the search down its second way.
TEST(ByteSearch, AgreesWithThePlainSearch) {
  std::mt19937 random(20260823);
  for (int round = 0; round < 20'000; ++round) {
    const auto letters = 1 + random() % 3;
    std::string text(random() % 300, 'a');
    std::string needle(1 + random() % 40, 'a');
    for (char& letter : text) {
      letter = static_cast<char>('a' + random() % letters);
    }
    const std::size_t period = 1 + random() % needle.size();
    for (std::size_t index = 0; index < needle.size(); ++index) {
      needle[index] = index < period ? static_cast<char>('a' + random() % letters) : needle[index - period];
    }
    const std::size_t from = random() % (text.size() + 2);
    ASSERT_EQ(FindFirst(text, needle, from), text.find(needle, from)) << text << " / " << needle << " / " << from;
    ASSERT_EQ(FindLast(text, needle), text.rfind(needle)) << text << " / " << needle;
  }
}

TEST(ByteSearch, LongTextsWithFewLettersTakeTheLinearWay) {
  std::mt19937 random(7);
  for (int round = 0; round < 300; ++round) {
    std::string text(5'000 + random() % 5'000, 'a');
    for (std::size_t count = random() % 6; count > 0; --count) {
      text[random() % text.size()] = 'b';
    }
    std::string needle(200 + random() % 300, 'a');
    needle[random() % needle.size()] = random() % 2 == 0 ? 'b' : 'a';
    ASSERT_EQ(FindFirst(text, needle, 0), text.find(needle)) << round;
    ASSERT_EQ(FindLast(text, needle), text.rfind(needle)) << round;
  }
}

// Comparing at every place anew would take 10^12 steps here.
TEST(ByteSearch, HostileNeedlesTakeLinearTime) {
  const std::string text(2'000'000, 'a');
  const std::string needle = std::string(500'000, 'a') + "b" + std::string(500'000, 'a');
  EXPECT_EQ(FindFirst(text, needle, 0), std::string::npos);
  EXPECT_EQ(FindLast(text, needle), std::string::npos);
  EXPECT_EQ(FindFirst(text + needle, needle, 0), text.size());
  EXPECT_EQ(FindLast(needle + text, needle), 0u);
}

}  // namespace
