#include "Quillbase/StringView.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace {

const KORUnicodeString& AsText(const KORUnicodeString& iText) {
  return iText;
}

TEST(StringView, StandsForATextWithoutACopy) {
  const std::string bytes = "viewed bytes that a text would hold in an allocation";
  const QB::StringView view{std::string_view(bytes)};
  EXPECT_EQ(AsText(view).CastToCharPtr(), bytes.c_str());
  EXPECT_EQ(AsText(view), bytes.c_str());
  EXPECT_EQ(AsText(view).GetLengthInByte(), bytes.size());
  EXPECT_EQ(view.ToStringView(), bytes);
}

TEST(StringView, ATextMadeFromItOwnsItsBytes) {
  for (std::string bytes : {std::string("short"), std::string(100, 'l')}) {
    const std::string before = bytes;
    const QB::StringView view{std::string_view(bytes)};
    const KORUnicodeString text = view.ToUnicode();
    KORUnicodeString copied(AsText(view));
    KORUnicodeString assigned;
    assigned = view;
    KORUnicodeString appended("x");
    appended += view;
    const KORUnicodeString sum = AsText(view) + "y";
    bytes.assign(bytes.size(), '#');
    EXPECT_EQ(text.ConvertToChar(), before);
    EXPECT_EQ(copied.ConvertToChar(), before);
    EXPECT_EQ(assigned.ConvertToChar(), before);
    EXPECT_EQ(appended.ConvertToChar(), "x" + before);
    EXPECT_EQ(sum.ConvertToChar(), before + "y");
    copied += "z";
    EXPECT_EQ(copied.ConvertToChar(), before + "z");
  }
}

TEST(StringView, ReadsLikeAText) {
  const QB::StringView view{std::string_view("a\xC3\xA9\xE2\x82\xACz")};
  const KORUnicodeString& text = view;
  EXPECT_EQ(text.GetLengthInChar(), 4);
  EXPECT_TRUE(text[2] == U'\u20AC');
  EXPECT_TRUE(text[4] == KORUnicodeChar());
  EXPECT_EQ(text.SearchSubString("z"), 3);
  EXPECT_EQ(text.SubString(1, 2), "\xC3\xA9\xE2\x82\xAC");
  EXPECT_EQ(text.Compare("A\xC3\x89\xE2\x82\xACZ"), 1);
  EXPECT_EQ(text.WildMatch("a*z", '*', '\\'), 1);
}

TEST(StringView, CopiesAreViewsOfTheSameBytes) {
  const std::string bytes(50, 'b');
  const QB::StringView view{std::string_view(bytes)};
  const QB::StringView copy(view);
  QB::StringView assigned;
  assigned = view;
  QB::StringView& same = assigned;
  assigned = same;
  EXPECT_EQ(copy.ToStringView().data(), bytes.data());
  EXPECT_EQ(assigned.ToStringView().data(), bytes.data());
  EXPECT_TRUE(assigned == copy);
}

TEST(StringView, ViewOfNothingIsTheEmptyText) {
  const QB::StringView nothing;
  const QB::StringView null{std::string_view()};
  EXPECT_TRUE(AsText(nothing).IsEmpty());
  EXPECT_STREQ(AsText(nothing).CastToCharPtr(), "");
  EXPECT_STREQ(AsText(null).CastToCharPtr(), "");
  EXPECT_TRUE(null.ToUnicode().IsEmpty());
}

TEST(StringView, KeepsZeroBytes) {
  const QB::StringView view{std::string_view("a\0b", 3)};
  EXPECT_EQ(view.ToUnicode().GetLengthInByte(), 3u);
}

}  // namespace
