#include "VYXInfFormat.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "KORSysBase/KORResult.h"

namespace {

TEST(Format, TextsTakeTheSpecificationsOfTexts) {
  const KORUnicodeString text = "text";
  EXPECT_EQ(fmt::format("{}", text), "text");
  EXPECT_EQ(fmt::format("{:>6}|{:.2}|{:-^8}", text, text, text), "  text|te|--text--");
  EXPECT_EQ(fmt::format("{}", KORUnicodeString("{}\xFF")), "{}\xFF");
  EXPECT_EQ(fmt::format("{}", KORUnicodeString(std::string_view("a\0b", 3))), std::string("a\0b", 3));
  EXPECT_EQ(fmt::format("{:5}|", KORString("abc")), "abc  |");
  EXPECT_EQ(fmt::format("{:>5}", QB::StringView(std::string_view("view"))), " view");
  EXPECT_EQ(fmt::format("{}{}", KORUnicodeString("e\u00E9")[1], text[0]), "\u00E9t");
}

TEST(Format, ValuesAreWrittenAsInStreams) {
  EXPECT_EQ(fmt::format("{:>22}", KORTime(0)), "1970-01-01T00:00:00.000000000Z");
  EXPECT_EQ(fmt::format("{}", KORUuid()).size(), KORUuid::kTextLength);
  EXPECT_EQ(fmt::format("<{:16}>", VYXInfUri("http://h/p")), "<http://h/p      >");
  EXPECT_EQ(fmt::format("{}", VYXInfError(E_FAIL)), "Unknown error with code -2147467259 (0x80004005)");
  VYXPropertyTree tree;
  VYXListAccess list;
  tree.GetListAccess("l", list, true);
  list.AddBoolean(true);
  EXPECT_EQ(fmt::format("{} {} {}", tree, list, VYXPropertyAccess()), "{\"l\":[true]} [true] null");
}

}  // namespace
