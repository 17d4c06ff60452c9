#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "VYXInfStringUtil.h"

namespace {

using Util = VYXInfStringUtil;
using namespace std::string_view_literals;

KORUnicodeString Text(std::string_view iBytes) {
  return KORUnicodeString(iBytes);
}

struct PairRow {
  std::string_view left;
  std::string_view right;
  bool exact;
  bool ignoringCase;
};
void PrintTo(const PairRow& iRow, std::ostream* ioStream) {
  *ioStream << '"' << iRow.left << "\" and \"" << iRow.right << '"';
}

class CompareRows : public ::testing::TestWithParam<PairRow> {};
TEST_P(CompareRows, Compare) {
  EXPECT_EQ(Util::Compare(Text(GetParam().left), Text(GetParam().right), true), GetParam().exact);
  EXPECT_EQ(Util::Compare(Text(GetParam().left), Text(GetParam().right), false), GetParam().ignoringCase);
}
INSTANTIATE_TEST_SUITE_P(
    Rows, CompareRows,
    ::testing::Values(PairRow{"", "", true, true}, PairRow{"abc", "abc", true, true},
                      PairRow{"ABC", "abc", false, true}, PairRow{"abc", "abd", false, false},
                      PairRow{"abc", "ab", false, false}, PairRow{"\u00C4\u00D6", "\u00E4\u00F6", false, true},
                      PairRow{"K", "\u212A", false, true}, PairRow{"\U00010400", "\U00010428", false, true},
                      PairRow{"a\0b"sv, "A\0B"sv, false, true}, PairRow{"a\0b"sv, "a\0c"sv, false, false},
                      PairRow{"\xFF", "\xFF", true, true}, PairRow{"\xFF", "\xFE", false, false}));

class StartsWithRows : public ::testing::TestWithParam<PairRow> {};
TEST_P(StartsWithRows, StartsWith) {
  EXPECT_EQ(Util::StartsWith(Text(GetParam().left), Text(GetParam().right), true), GetParam().exact);
  EXPECT_EQ(Util::StartsWith(Text(GetParam().left), Text(GetParam().right), false), GetParam().ignoringCase);
}
INSTANTIATE_TEST_SUITE_P(
    Rows, StartsWithRows,
    ::testing::Values(PairRow{"", "", false, false}, PairRow{"abc", "", false, false}, PairRow{"", "a", false, false},
                      PairRow{"abc", "ab", true, true}, PairRow{"abc", "abc", true, true},
                      PairRow{"abc", "abcd", false, false}, PairRow{"abc", "AB", false, true},
                      PairRow{"ABC", "abd", false, false}, PairRow{"abc", "b", false, false},
                      PairRow{"\u00E9t\u00E9", "\u00E9t", true, true}, PairRow{"\u00C9T\u00C9", "\u00E9t", false, true},
                      PairRow{"\u212Aelvin", "kel", false, true}, PairRow{"kelvin", "\u212AEL", false, true},
                      PairRow{"k", "\u212AEL", false, false}, PairRow{"\U0001F600x", "\U0001F600", true, true},
                      // Bytes inside a character are no prefix, stray ones are characters of their own.
                      PairRow{"\u00E9", "\xC3", false, false}, PairRow{"\xC3x", "\xC3", true, true},
                      PairRow{"\xA9\xA9", "\xA9", true, true}, PairRow{"a\0b"sv, "a\0"sv, true, true}));

class EndsWithRows : public ::testing::TestWithParam<PairRow> {};
TEST_P(EndsWithRows, EndsWith) {
  EXPECT_EQ(Util::EndsWith(Text(GetParam().left), Text(GetParam().right), true), GetParam().exact);
  EXPECT_EQ(Util::EndsWith(Text(GetParam().left), Text(GetParam().right), false), GetParam().ignoringCase);
}
INSTANTIATE_TEST_SUITE_P(
    Rows, EndsWithRows,
    ::testing::Values(PairRow{"", "", false, false}, PairRow{"abc", "", false, false}, PairRow{"", "c", false, false},
                      PairRow{"abc", "bc", true, true}, PairRow{"abc", "abc", true, true},
                      PairRow{"abc", "xabc", false, false}, PairRow{"a.TXT", ".txt", false, true},
                      PairRow{"a.txt", ".tx", false, false}, PairRow{"t\u00C9", "T\u00E9", false, true},
                      PairRow{"t\u00C9", "\u00C9", true, true}, PairRow{"Grad \u212A", "d k", false, true},
                      PairRow{"d k", "\u212A", false, true}, PairRow{"k", "xx\u212A", false, false},
                      PairRow{"x\U0001F600", "\U0001F600", true, true}, PairRow{"\u00E9", "\xA9", false, false},
                      PairRow{"x\xA9", "\xA9", true, true}, PairRow{"b\0a"sv, "\0a"sv, true, true}));

TEST(EndsWithList, AnswersForTheFirstThatFits) {
  KORListValKORUnicodeString suffixes;
  EXPECT_FALSE(Util::EndsWith("a.txt", suffixes, false));
  suffixes.Append("");
  suffixes.Append(".doc");
  EXPECT_FALSE(Util::EndsWith("a.txt", suffixes, false));
  suffixes.Append(".TXT");
  EXPECT_TRUE(Util::EndsWith("a.txt", suffixes, false));
  EXPECT_FALSE(Util::EndsWith("a.txt", suffixes, true));
}

// What the ordering is defined as.
bool LessByLowering(KORUnicodeString iLeft, KORUnicodeString iRight) {
  return iLeft.ToLower() < iRight.ToLower();
}

TEST(LessIgnoreCase, AgreesWithLoweringBothForEveryPair) {
  const std::vector<std::string_view> texts = {
      "",           "a",          "A",       "b",      "ab",     "AB",     "aB",      "abc",     "_",      "Z",
      "z",          "[",          "a[",      "aZ",     "\u00E4", "\u00C4", "a\u00E4", "A\u00C4", "\u212A", "k",
      "K",          "kz",         "\u212Aa", "i",      "\u0130", "I",      "\u0131",  "\xFF",    "a\xFF",  "A\xFF",
      "\U00010400", "\U00010428", "\uFFFD",  "a\0b"sv, "A\0B"sv, "a\0"sv,  "\u03A3",  "\u03C3",  "\u03C2", "~"};
  const Util::VYXStringLessIgnoreCase less;
  for (const std::string_view left : texts) {
    EXPECT_FALSE(less(Text(left), Text(left))) << left;
    for (const std::string_view right : texts) {
      EXPECT_EQ(less(Text(left), Text(right)), LessByLowering(Text(left), Text(right))) << left << " and " << right;
    }
  }
}

TEST(LessIgnoreCase, KeysAContainer) {
  std::map<KORUnicodeString, int, Util::VYXStringLessIgnoreCase> counts;
  ++counts["Key"];
  ++counts["KEY"];
  ++counts["\u00C4rger"];
  ++counts["\u00E4RGER"];
  ASSERT_EQ(counts.size(), 2U);
  EXPECT_EQ(counts.begin()->second, 2);
}

}  // namespace
