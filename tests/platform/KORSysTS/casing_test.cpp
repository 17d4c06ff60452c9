#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "KORSysTS/KORUnicodeString.h"
#include "platform/adapters/unicode.h"

namespace {

const char kCaseFolding[] = "/usr/share/unicode/CaseFolding.txt";
const char kUnicodeData[] = "/usr/share/unicode/UnicodeData.txt";

// The version of the Unicode data that the case mappings are made from, as the header line of a data file spells it.
const char kDataVersion[] = "CaseFolding-15.0.0.txt";

KORUnicodeString Text(char32_t iCodePoint) {
  return KORUnicodeString(KORUnicodeChar(iCodePoint));
}

char32_t Hex(const std::string& iDigits) {
  return static_cast<char32_t>(std::stoul(iDigits, nullptr, 16));
}

std::vector<std::string> Fields(const std::string& iLine) {
  std::vector<std::string> fields(1);
  for (const char letter : iLine) {
    if (letter == ';') {
      fields.emplace_back();
    } else if (letter != ' ' || !fields.back().empty()) {
      fields.back() += letter;
    }
  }
  return fields;
}

std::string FirstLine(const char* iPath) {
  std::ifstream file(iPath);
  std::string line;
  std::getline(file, line);
  return line;
}

// Whether the installed files are there and of the version that the mappings have: others differ in new characters.
bool IsDataOfOurVersion() {
  return FirstLine(kCaseFolding) == std::string("# ") + kDataVersion;
}

std::map<char32_t, char32_t> SimpleFoldings() {
  std::map<char32_t, char32_t> foldings;
  std::ifstream file(kCaseFolding);
  for (std::string line; std::getline(file, line);) {
    const std::vector<std::string> fields = Fields(line.substr(0, line.find('#')));
    if (fields.size() >= 3 && (fields[1] == "C" || fields[1] == "S")) {
      foldings[Hex(fields[0])] = Hex(fields[2]);
    }
  }
  return foldings;
}

TEST(CaseFolding, IsUnicodesSimpleOne) {
  if (!IsDataOfOurVersion()) {
    GTEST_SKIP() << kCaseFolding << " is absent or not " << kDataVersion << " (Debian package unicode-data)";
  }
  const std::map<char32_t, char32_t> foldings = SimpleFoldings();
  ASSERT_GT(foldings.size(), 1000u);
  for (char32_t codePoint = 0; codePoint <= 0x10FFFF; ++codePoint) {
    const auto folding = foldings.find(codePoint);
    ASSERT_EQ(VYX::Adapters::FoldCase(codePoint), folding == foldings.end() ? codePoint : folding->second)
        << std::hex << static_cast<std::uint32_t>(codePoint);
  }
}

TEST(CaseFolding, EveryFoldedPairComparesEqualButForCase) {
  if (!IsDataOfOurVersion()) {
    GTEST_SKIP() << kCaseFolding << " is absent or not " << kDataVersion << " (Debian package unicode-data)";
  }
  for (const auto& [from, to] : SimpleFoldings()) {
    EXPECT_EQ(Text(from).Compare(Text(to)), 1) << std::hex << static_cast<std::uint32_t>(from);
    EXPECT_EQ(Text(to).Compare(Text(from)), 1) << std::hex << static_cast<std::uint32_t>(from);
    EXPECT_EQ(("x" + Text(from) + "Y").Compare("X" + Text(to) + "y"), 1)
        << std::hex << static_cast<std::uint32_t>(from);
    EXPECT_EQ(Text(from).Compare("!"), 0);
  }
}

TEST(CaseMapping, IsUnicodesSimpleOne) {
  if (!IsDataOfOurVersion()) {
    GTEST_SKIP() << kUnicodeData << " is absent or of another version (Debian package unicode-data)";
  }
  std::map<char32_t, std::pair<char32_t, char32_t>> mappings;
  std::ifstream file(kUnicodeData);
  for (std::string line; std::getline(file, line);) {
    const std::vector<std::string> fields = Fields(line);
    ASSERT_EQ(fields.size(), 15u) << line;
    const char32_t codePoint = Hex(fields[0]);
    mappings[codePoint] = {fields[12].empty() ? codePoint : Hex(fields[12]),
                           fields[13].empty() ? codePoint : Hex(fields[13])};
  }
  ASSERT_GT(mappings.size(), 30'000u);
  for (char32_t codePoint = 0; codePoint <= 0x10FFFF; ++codePoint) {
    const auto found = mappings.find(codePoint);
    const auto [upper, lower] = found == mappings.end() ? std::pair(codePoint, codePoint) : found->second;
    ASSERT_EQ(VYX::Adapters::UpperCase(codePoint), upper) << std::hex << static_cast<std::uint32_t>(codePoint);
    ASSERT_EQ(VYX::Adapters::LowerCase(codePoint), lower) << std::hex << static_cast<std::uint32_t>(codePoint);
  }
}

TEST(CaseMapping, ValuesThatAreNoCodePointsYieldThemselves) {
  for (const std::uint32_t value : {0xD800U, 0x110000U, 0x80000000U, 0xFFFFFFFFU}) {
    const auto codePoint = static_cast<char32_t>(value);
    EXPECT_EQ(VYX::Adapters::LowerCase(codePoint), codePoint);
    EXPECT_EQ(VYX::Adapters::UpperCase(codePoint), codePoint);
    EXPECT_EQ(VYX::Adapters::FoldCase(codePoint), codePoint);
  }
}

struct CompareRow {
  const char* left;
  const char* right;
  int grade;
};

TEST(Compare, GradesTwoTexts) {
  const CompareRow rows[] = {
      {"abc", "abc", 2},
      {"abc", "ABC", 1},
      {"abc", "abd", 0},
      {"", "", 2},
      {"", "a", 0},
      {"abc", "ab", 0},
      {"abc", "ABCD", 0},
      {"[", "{", 0},
      {"@", "`", 0},
      {"\xC3\xA9", "\xC3\x89", 1},
      {"stra\xC3\x9F"
       "e",
       "STRASSE", 0},
      {"\xC3\x9F", "ss", 0},
      {"\xC3\x9F", "\xE1\xBA\x9E", 1},
      {"\xCF\x83", "\xCF\x82", 1},
      {"\xE2\x84\xAA", "k", 1},
      {"\xE2\x84\xAA", "K", 1},
      {"\xC4\xB0", "i", 0},
      {"\xC4\xB1", "I", 0},
      {"I", "i", 1},
      {"\xF0\x90\x90\x80", "\xF0\x90\x90\xA8", 1},
      {"\xEF\xAC\x81", "fi", 0},
      {"\xFF", "\xFF", 2},
      {"\xFF"
       "A",
       "\xFF"
       "a",
       1},
      {"\xC3", "\xC3\xA9", 0},
      {"\xFF", "\xFE", 0},
      {"a long text in which only the case differs: \xC3\x84", "A Long Text In Which Only The Case Differs: \xC3\xA4",
       1},
  };
  for (const CompareRow& row : rows) {
    EXPECT_EQ(KORUnicodeString(row.left).Compare(row.right), row.grade) << row.left << " / " << row.right;
    EXPECT_EQ(KORUnicodeString(row.right).Compare(row.left), row.grade) << row.right << " / " << row.left;
  }
}

struct CaseRow {
  const char* text;
  const char* lower;
  const char* upper;
};

TEST(ToLowerToUpper, MapEveryCharacter) {
  const CaseRow rows[] = {
      {"", "", ""},
      {"Hello, World 123 [@`{", "hello, world 123 [@`{", "HELLO, WORLD 123 [@`{"},
      {"\xC3\x84\xC3\xB6", "\xC3\xA4\xC3\xB6", "\xC3\x84\xC3\x96"},
      {"\xC3\x9F", "\xC3\x9F", "\xC3\x9F"},
      {"\xC4\xB0", "i", "\xC4\xB0"},
      {"\xC4\xB1", "\xC4\xB1", "I"},
      {"\xC8\xBA", "\xE2\xB1\xA5", "\xC8\xBA"},
      {"\xF0\x90\x90\x80\xF0\x90\x90\xA8", "\xF0\x90\x90\xA8\xF0\x90\x90\xA8", "\xF0\x90\x90\x80\xF0\x90\x90\x80"},
      {"A\xFF\xC3z", "a\xFF\xC3z", "A\xFF\xC3Z"},
      {"A Text That Needs An Allocation Of Its Own", "a text that needs an allocation of its own",
       "A TEXT THAT NEEDS AN ALLOCATION OF ITS OWN"},
      {"A Text That Needs An Allocation Of Its Own \xC3\x84z", "a text that needs an allocation of its own \xC3\xA4z",
       "A TEXT THAT NEEDS AN ALLOCATION OF ITS OWN \xC3\x84Z"},
  };
  for (const CaseRow& row : rows) {
    EXPECT_EQ(KORUnicodeString(row.text).ToLower(), row.lower) << row.text;
    EXPECT_EQ(KORUnicodeString(row.text).ToUpper(), row.upper) << row.text;
  }
}

TEST(ToLowerToUpper, TextsMayGrowAndPositionsStayRight) {
  KORUnicodeString text(KORUnicodeChar(U'\u023A'), 1000);
  EXPECT_TRUE(text[999] == U'\u023A');
  text.ToLower();
  EXPECT_EQ(text.GetLengthInByte(), 3000u);
  EXPECT_EQ(text.GetLengthInChar(), 1000);
  EXPECT_TRUE(text[999] == U'\u2C65');
}

}  // namespace
