#include "Quillbase/Paths.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TEST(Paths, AreSplitAtSemicolonsAndColons) {
  struct Row {
    const char* text;
    std::vector<std::string> entries;
  };
  const Row kRows[] = {
      {"", {}},
      {";:;", {}},
      {"/a", {"/a"}},
      {"/a;/b:/c", {"/a", "/b", "/c"}},
      {"C:\\a;D:\\b", {"C:\\a", "D:\\b"}},
      {"/x:C:\\a:/y", {"/x", "C:\\a", "/y"}},
      {"ab:c", {"ab", "c"}},
      {" /a ;/b", {" /a ", "/b"}},
      {"\xff;\xfe", {"\xff", "\xfe"}},
  };
  for (const Row& row : kRows) {
    const QB::Paths paths{KORUnicodeString(row.text)};
    std::vector<std::string> entries;
    for (const QB::StringView entry : paths) {
      entries.emplace_back(entry.ToStringView());
    }
    EXPECT_EQ(entries, row.entries) << row.text;
    EXPECT_EQ(paths.Size(), row.entries.size()) << row.text;
  }
}

TEST(Paths, IteratorStepsByHand) {
  const QB::Paths paths{KORUnicodeString("/a;/b")};
  auto it = paths.begin();
  EXPECT_TRUE(it != paths.end());
  EXPECT_EQ((*it).ToUnicode(), "/a");
  ++it;
  EXPECT_EQ((*it).ToUnicode(), "/b");
  ++it;
  EXPECT_FALSE(it != paths.end());
}

}  // namespace
