#include "KORSysTS/KORString.h"

#include <gtest/gtest.h>

#include <string_view>

namespace {

TEST(KORString, HoldsANarrowText) {
  const KORString text("abc");
  EXPECT_STREQ(text.CastToCharPtr(), "abc");
  EXPECT_STREQ(text, "abc");
  EXPECT_EQ(text.GetLengthInByte(), 3u);
  EXPECT_TRUE(text == "abc");
  EXPECT_FALSE(text == "abd");
}

TEST(KORString, NullIsEmpty) {
  const KORString text(static_cast<const char*>(nullptr));
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_STREQ(text.CastToCharPtr(), "");
  EXPECT_TRUE(text == KORString());
}

TEST(KORString, KeepsZeroBytes) {
  const KORString text(std::string_view("a\0b", 3));
  EXPECT_EQ(text.GetLengthInByte(), 3u);
  EXPECT_FALSE(text == "a");
}

}  // namespace
