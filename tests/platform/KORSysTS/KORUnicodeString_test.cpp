#include "KORSysTS/KORUnicodeString.h"

#include <gtest/gtest.h>

#include <climits>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace {

using namespace std::string_view_literals;

const std::string kLong(100, 'l');
const char kMixed[] = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z";

TEST(KORUnicodeString, IsSmallAndMovesWithoutThrowing) {
  static_assert(sizeof(KORUnicodeString) <= 24);
  static_assert(std::is_nothrow_move_constructible_v<KORUnicodeString>);
  static_assert(std::is_nothrow_move_assignable_v<KORUnicodeString>);
  static_assert(std::is_nothrow_swappable_v<KORUnicodeString>);
  static_assert(std::is_nothrow_default_constructible_v<KORUnicodeString>);
}

TEST(KORUnicodeString, EmptyText) {
  const KORUnicodeString empty;
  EXPECT_TRUE(empty.IsEmpty());
  EXPECT_EQ(empty.GetLengthInChar(), 0);
  EXPECT_EQ(empty.GetLengthInByte(), 0u);
  EXPECT_STREQ(empty.CastToCharPtr(), "");
  EXPECT_TRUE(empty == "");
  EXPECT_TRUE(empty[0] == KORUnicodeChar());
  EXPECT_TRUE(KORUnicodeString(static_cast<const char*>(nullptr)).IsEmpty());
}

TEST(KORUnicodeString, KeepsEveryLengthAroundTheInlineLimit) {
  for (std::size_t length = 0; length < 70; ++length) {
    const std::string expected(length, 'x');
    const KORUnicodeString text(expected.c_str());
    const KORUnicodeString copy(text);
    EXPECT_EQ(text.GetLengthInByte(), length);
    EXPECT_EQ(copy.ConvertToChar(), expected);
    EXPECT_STREQ(copy.CastToCharPtr(), expected.c_str());
  }
}

TEST(KORUnicodeString, CopiesAreDeep) {
  KORUnicodeString original(kLong);
  KORUnicodeString copy(original);
  KORUnicodeString assigned;
  assigned = original;
  original += "!";
  EXPECT_EQ(copy.ConvertToChar(), kLong);
  EXPECT_EQ(assigned.ConvertToChar(), kLong);
  copy = "short";
  EXPECT_EQ(copy, "short");
  copy = assigned;
  EXPECT_EQ(copy, assigned);
}

TEST(KORUnicodeString, MovesLeaveTheEmptyText) {
  for (const std::string& content : {std::string("short"), kLong}) {
    KORUnicodeString source(content);
    KORUnicodeString target(std::move(source));
    EXPECT_TRUE(source.IsEmpty());
    EXPECT_EQ(target.ConvertToChar(), content);
    KORUnicodeString assigned(kLong);
    assigned = std::move(target);
    EXPECT_TRUE(target.IsEmpty());
    EXPECT_EQ(assigned.ConvertToChar(), content);
    source = "alive";
    EXPECT_EQ(source, "alive");
  }
}

TEST(KORUnicodeString, AssignsItselfAndItsParts) {
  for (const std::string& content : {std::string("content"), kLong + "tail"}) {
    KORUnicodeString text(content);
    KORUnicodeString& same = text;
    text = same;
    EXPECT_EQ(text.ConvertToChar(), content);
    text = std::move(same);
    EXPECT_EQ(text.ConvertToChar(), content);
    text = text.CastToCharPtr() + 3;
    EXPECT_EQ(text.ConvertToChar(), content.substr(3));
  }
}

TEST(KORUnicodeString, ResetMakesEmpty) {
  KORUnicodeString text(kLong);
  text.Reset();
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_STREQ(text, "");
}

TEST(KORUnicodeString, RepeatsACharacter) {
  EXPECT_EQ(KORUnicodeString(KORUnicodeChar('x')), "x");
  EXPECT_EQ(KORUnicodeString('x', 0), "");
  EXPECT_EQ(KORUnicodeString('x', 5), "xxxxx");
  EXPECT_EQ(KORUnicodeString('x', 50).ConvertToChar(), std::string(50, 'x'));
  EXPECT_EQ(KORUnicodeString(KORUnicodeChar(U'\u20AC'), 3), "\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC");
  EXPECT_EQ(KORUnicodeString(KORUnicodeChar(U'\u20AC'), 20).GetLengthInChar(), 20);
  EXPECT_EQ(KORUnicodeString('\xFF', 2), "\xFF\xFF");
  EXPECT_THROW(KORUnicodeString(KORUnicodeChar(U'\u20AC'), SIZE_MAX / 2), std::bad_alloc);
  EXPECT_THROW(KORUnicodeString('x', SIZE_MAX), std::bad_alloc);
}

TEST(KORUnicodeString, CountsCodePointsAndBytes) {
  const KORUnicodeString text(kMixed);
  EXPECT_EQ(text.GetLengthInChar(), 5);
  EXPECT_EQ(text.GetLengthInByte(), 11u);
  EXPECT_TRUE(text[0] == 'a');
  EXPECT_TRUE(text[1] == U'\u00E9');
  EXPECT_TRUE(text[2] == U'\u20AC');
  EXPECT_TRUE(text[3] == U'\U0001F600');
  EXPECT_TRUE(text[4] == 'z');
}

TEST(KORUnicodeString, PositionsOutsideYieldTheZeroCharacter) {
  for (const std::string& content : {std::string(kMixed), kMixed + kLong, kLong}) {
    const KORUnicodeString text(content);
    EXPECT_TRUE(text[text.GetLengthInChar()] == KORUnicodeChar());
    EXPECT_TRUE(text[-1] == KORUnicodeChar());
    EXPECT_TRUE(text[INT_MIN] == KORUnicodeChar());
    EXPECT_TRUE(text[INT_MAX] == KORUnicodeChar());
    EXPECT_TRUE(text[SIZE_MAX] == KORUnicodeChar());
  }
}

TEST(KORUnicodeString, IllFormedBytesAreKeptAndCountOneEach) {
  const KORUnicodeString text("x\xE2\x82y\xFF\xED\xA0\x80");
  EXPECT_EQ(text.GetLengthInChar(), 8);
  EXPECT_STREQ(text, "x\xE2\x82y\xFF\xED\xA0\x80");
  EXPECT_TRUE(text[1] == '\xE2');
  EXPECT_TRUE(text[2] == '\x82');
  EXPECT_TRUE(text[3] == 'y');
  EXPECT_TRUE(text[4] == '\xFF');
}

TEST(KORUnicodeString, ZeroBytesAreKept) {
  const KORUnicodeString text("a\0b"sv);
  EXPECT_EQ(text.GetLengthInByte(), 3u);
  EXPECT_EQ(text.GetLengthInChar(), 3);
  EXPECT_TRUE(text[2] == 'b');
  EXPECT_FALSE(text == "a");
  EXPECT_TRUE(text == KORUnicodeString("a\0b"sv));
  EXPECT_EQ(text + text, KORUnicodeString("a\0ba\0b"sv));
  EXPECT_EQ(text.ConvertToChar(), "a\0b"sv);
}

TEST(KORUnicodeString, OrderIsThatOfCodePoints) {
  // In UTF-16 code units the last two would change places.
  const char* const ascending[] = {"", "A", "a", "aa", "b", "\xC3\xA9", "\xEF\xBF\xBD", "\xF0\x9F\x98\x80"};
  for (std::size_t left = 0; left < std::size(ascending); ++left) {
    for (std::size_t right = 0; right < std::size(ascending); ++right) {
      EXPECT_EQ(KORUnicodeString(ascending[left]) < KORUnicodeString(ascending[right]), left < right)
          << ascending[left] << " < " << ascending[right];
    }
  }
  EXPECT_LT(KORUnicodeString("a"), KORUnicodeString("a\0"sv));
}

TEST(KORUnicodeString, EqualTextsHashAlike) {
  KORUnicodeString grown;
  for (const char byte : kLong) {
    grown += byte;
  }
  EXPECT_EQ(std::hash<KORUnicodeString>()(grown), std::hash<KORUnicodeString>()(KORUnicodeString(kLong)));
}

// A walk that searched each character from one end would take hours here.
TEST(KORUnicodeString, WalksFourMillionCharactersBothWays) {
  constexpr int kCount = 4'000'000;
  const KORUnicodeString text(KORUnicodeChar(U'\u20AC'), kCount);
  ASSERT_EQ(text.GetLengthInChar(), kCount);
  int seen = 0;
  for (int position = 0; position < kCount; ++position) {
    seen += text[position] == U'\u20AC' ? 1 : 0;
  }
  for (int position = kCount - 1; position >= 0; --position) {
    seen += text[position] == U'\u20AC' ? 1 : 0;
  }
  EXPECT_EQ(seen, 2 * kCount);
}

TEST(KORUnicodeString, SearchingAndCuttingAlongALongTextIsLinear) {
  constexpr int kCount = 300'000;
  KORUnicodeString text;
  for (int index = 0; index < kCount; ++index) {
    text += "\xC3\xA9;";
  }
  int pieces = 0;
  int start = 0;
  for (int end = text.SearchSubString(";"); end >= 0; end = text.SearchSubString(";", start)) {
    pieces += text.SubString(start, end - start) == "\xC3\xA9" ? 1 : 0;
    start = end + 1;
  }
  EXPECT_EQ(pieces, kCount);
}

}  // namespace
