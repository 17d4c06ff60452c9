#include "platform/os/native_path.h"

#include <gtest/gtest.h>

#include <string_view>

namespace VYX::Os {
namespace {

using namespace std::string_view_literals;

TEST(NativePath, BothSeparatorsAreSlashesHere) {
  struct Row {
    std::string_view path;
    std::string_view native;
  };
  const Row kRows[] = {{"\\tmp\\x", "/tmp/x"}, {"/tmp/x", "/tmp/x"}, {"a\\b/c\\", "a/b/c/"},  {"", ""},
                       {"\\\\s\\d", "//s/d"},  {"./a:b", "./a:b"},   {"\xff\xfe", "\xff\xfe"}};
  for (const Row& row : kRows) {
    std::string native;
    EXPECT_TRUE(ToNativePath(row.path, native).IsOk()) << row.path;
    EXPECT_EQ(native, row.native);
  }
}

TEST(NativePath, DrivesAndZeroBytesAreRefused) {
  struct Row {
    std::string_view path;
    int number;
  };
  const Row kRows[] = {{"C:\\x", 3}, {"c:", 3}, {"Z:x", 3}, {"/tmp/a\0b"sv, 123}, {"\0"sv, 123}};
  for (const Row& row : kRows) {
    std::string native = "untouched";
    EXPECT_EQ(ToNativePath(row.path, native).ToErrorNumber(), row.number) << row.path;
    EXPECT_EQ(native, "untouched");
  }
}

}  // namespace
}  // namespace VYX::Os
