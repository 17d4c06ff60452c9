#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <functional>
#include <map>
#include <ranges>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_set>
#include <utility>
#include <vector>

#include "KORSysTS/KORUnicodeString.h"
#include "Quillbase/StringView.h"

// The text converts to a pointer by itself: these expressions have to stay unambiguous, and to mean what they say.

namespace {

using ::testing::ElementsAre;

std::size_t NarrowLength(const char* iText) {
  return std::strlen(iText);
}
std::string TakenAsText(const KORUnicodeString& iText) {
  return iText.ConvertToChar();
}

TEST(EverydayExpressions, PositionOfAnyIntegralType) {
  const KORUnicodeString s = "abc";
  const long asLong = 1;
  const unsigned asUnsigned = 2;
  const std::size_t asSize = 1;
  const short asShort = 2;
  EXPECT_TRUE(s[0] == 'a');
  EXPECT_TRUE('a' == s[0]);
  EXPECT_TRUE(s[asLong] == 'b');
  EXPECT_TRUE(s[asUnsigned] == 'c');
  EXPECT_TRUE(s[asSize] == 'b');
  EXPECT_TRUE(s[asShort] == 'c');
  EXPECT_TRUE(s[0] != 'b');
  EXPECT_TRUE(s[0] != s[1]);
  EXPECT_TRUE(s[0] < 'b');
  EXPECT_TRUE(s[0] >= '0' && s[0] <= 'z');
  EXPECT_TRUE(s[0] == U'a');
}

TEST(EverydayExpressions, CharacterBecomesChar) {
  const KORUnicodeString s = "abc";
  const char c = s[1];
  EXPECT_EQ(c, 'b');
  bool isSwitched = false;
  switch (s[2]) {
    case 'c':
      isSwitched = true;
      break;
    default:
      break;
  }
  EXPECT_TRUE(isSwitched);
}

TEST(EverydayExpressions, EqualityWithTextAndLiteral) {
  const KORUnicodeString s = "x";
  KORUnicodeString t = "y";
  EXPECT_TRUE(s == "x");
  EXPECT_TRUE("x" == s);
  EXPECT_FALSE(s == t);
  EXPECT_TRUE(s != t);
  EXPECT_TRUE(s != "y");
  EXPECT_TRUE("y" != s);
  EXPECT_FALSE(t == "x");
  EXPECT_EQ(s, "x");
  EXPECT_EQ("x", s);
  EXPECT_NE(s, t);
  EXPECT_STREQ(s, "x");
}

TEST(EverydayExpressions, OrderWithTextAndLiteral) {
  const KORUnicodeString s = "m";
  const KORUnicodeString t = "n";
  EXPECT_TRUE(s < t);
  EXPECT_TRUE(s < "n");
  EXPECT_TRUE("a" < s);
  EXPECT_TRUE(s <= t);
  EXPECT_TRUE(s <= "m");
  EXPECT_TRUE("m" <= s);
  EXPECT_TRUE(t > s);
  EXPECT_TRUE(t > "m");
  EXPECT_TRUE("z" > t);
  EXPECT_TRUE(t >= s);
  EXPECT_TRUE(t >= "n");
  EXPECT_TRUE("n" >= t);
  EXPECT_TRUE((s <=> t) < 0);
  EXPECT_TRUE((s <=> "a") > 0);
  EXPECT_LT(s, t);
}

TEST(EverydayExpressions, Sums) {
  const KORUnicodeString s = "s";
  const KORUnicodeString t = "t";
  const KORUnicodeChar c = 'c';
  EXPECT_EQ(s + t, "st");
  EXPECT_EQ(s + "x", "sx");
  EXPECT_EQ("x" + s, "xs");
  EXPECT_EQ("x" + s + "y", "xsy");
  EXPECT_EQ(s + "-" + t + "-" + s, "s-t-s");
  EXPECT_EQ((s + t) + (t + s), "stts");
  EXPECT_EQ(s + c, "sc");
  EXPECT_EQ(s + 'd', "sd");
  EXPECT_EQ(s + t[0], "st");
  EXPECT_EQ(s + "x" + c + 'd', "sxcd");
}

template <class Left, class Right>
concept Adds = requires(Left iLeft, Right iRight) {
  iLeft + iRight;
};

TEST(EverydayExpressions, NumbersDoNotAdd) {
  static_assert(!Adds<KORUnicodeString, int>);
  static_assert(!Adds<const KORUnicodeString&, std::size_t>);
  static_assert(!Adds<int, KORUnicodeString>);
  static_assert(Adds<KORUnicodeString, char>);
}

TEST(EverydayExpressions, Growing) {
  KORUnicodeString s;
  s += "a";
  s += 'b';
  s += KORUnicodeString("c");
  s += KORUnicodeChar('d');
  s += s[0];
  s += std::string("e");
  s.Append("f").Append(std::string_view("g")).Append(KORUnicodeChar('h')).Append(s[1]);
  EXPECT_EQ(s, "abcdaefghb");
}

TEST(EverydayExpressions, Conditional) {
  const KORUnicodeString s = "text";
  KORUnicodeString m = "mutable";
  for (const bool isText : {true, false}) {
    EXPECT_EQ(KORUnicodeString(isText ? s : "x"), isText ? "text" : "x");
    EXPECT_EQ(KORUnicodeString(isText ? "x" : s), isText ? "x" : "text");
    EXPECT_EQ(KORUnicodeString(isText ? m : "x"), isText ? "mutable" : "x");
    const KORUnicodeString chosen = isText ? s : "x";
    EXPECT_EQ(chosen, isText ? "text" : "x");
  }
  static_assert(std::is_same_v<decltype(true ? s : "x"), const KORUnicodeString> ||
                std::is_same_v<decltype(true ? s : "x"), KORUnicodeString>);
  static_assert(std::is_same_v<decltype(true ? "x" : m), KORUnicodeString>);
}

TEST(EverydayExpressions, WhereOtherTextTypesAreWanted) {
  const KORUnicodeString s = "text";
  EXPECT_EQ(std::string(s), "text");
  EXPECT_EQ(NarrowLength(s), 4u);
  EXPECT_EQ(TakenAsText("literal"), "literal");
  const std::string copy = s.ConvertToChar();
  EXPECT_EQ(copy, "text");
  EXPECT_EQ(KORUnicodeString(copy), s);
  EXPECT_EQ(KORUnicodeString(std::string_view("view")), "view");
  KORUnicodeString assigned;
  assigned = "literal";
  EXPECT_EQ(assigned, "literal");
  assigned = copy;
  EXPECT_EQ(assigned, s);
  assigned = {};
  EXPECT_TRUE(assigned.IsEmpty());
}

TEST(EverydayExpressions, ViewStandsForText) {
  const KORUnicodeString s = "view";
  const QB::StringView view(s.ToStringView());
  EXPECT_TRUE(s == view);
  EXPECT_TRUE(view == s);
  EXPECT_EQ(TakenAsText(view), "view");
  EXPECT_EQ(s + view, "viewview");
}

TEST(EverydayExpressions, Streams) {
  std::ostringstream stream;
  const KORUnicodeString s = "text";
  stream << s << '|' << s[0];
  stream.width(6);
  stream << s << KORUnicodeString("e\xC3\xA9")[1];
  EXPECT_EQ(stream.str(), "text|t  text\xC3\xA9");
}

TEST(EverydayExpressions, Containers) {
  std::map<KORUnicodeString, int> map;
  map["b"] = 2;
  map["a"] = 1;
  EXPECT_EQ(map.begin()->first, "a");
  EXPECT_EQ(map["b"], 2);

  std::unordered_set<KORUnicodeString> set;
  set.insert("one");
  set.insert(KORUnicodeString("one"));
  EXPECT_EQ(set.size(), 1u);
  EXPECT_TRUE(set.contains("one"));

  std::vector<KORUnicodeString> list{"c", "a", "b"};
  std::sort(list.begin(), list.end());
  EXPECT_THAT(list, ElementsAre("a", "b", "c"));
}

// A transparent comparator compares addresses where it finds no operator<: texts long enough to live in blocks of their
// own, and in the wrong order of addresses, would show it.
TEST(EverydayExpressions, TransparentComparatorsCompareTexts) {
  const std::string tail(100, '-');
  std::vector<KORUnicodeString> list;
  for (const char* head : {"d", "a", "c", "b"}) {
    list.push_back(head + KORUnicodeString(tail));
  }
  std::vector<KORUnicodeString> sorted = list;
  std::sort(sorted.begin(), sorted.end(), std::less<>());
  EXPECT_TRUE(sorted[0][0] == 'a' && sorted[3][0] == 'd');
  sorted = list;
  std::ranges::sort(sorted);
  EXPECT_TRUE(sorted[0][0] == 'a' && sorted[3][0] == 'd');
  sorted = list;
  std::sort(sorted.begin(), sorted.end(), std::greater<>());
  EXPECT_TRUE(sorted[0][0] == 'd' && sorted[3][0] == 'a');

  std::set<KORUnicodeString, std::less<>> set(list.begin(), list.end());
  EXPECT_TRUE(set.contains(("c" + tail).c_str()));
  EXPECT_FALSE(set.contains("c"));
}

TEST(EverydayExpressions, Swap) {
  KORUnicodeString s = "short";
  KORUnicodeString t(std::string(100, 't'));
  swap(s, t);
  EXPECT_EQ(t, "short");
  std::swap(s, t);
  EXPECT_EQ(s, "short");
  EXPECT_EQ(t.GetLengthInChar(), 100);
}

}  // namespace
