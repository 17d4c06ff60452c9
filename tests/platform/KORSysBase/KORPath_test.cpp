#include "KORSysBase/KORPath.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "KORSysBase/KOREnvironment.h"
#include "support/pending_error.h"
#include "support/temporary_folder.h"

namespace VYX::Test {
namespace {

constexpr long Code(unsigned int iNumber) {
  return static_cast<long>(static_cast<int>(0x80070000U + iNumber));
}

TEST(KORPath, SplitsBehindTheLastSeparator) {
  struct Row {
    const char* path;
    const char* directory;
    const char* fileName;
  };
  const Row kRows[] = {
      {"C:\\a\\b.txt", "C:\\a", "b.txt"},
      {"C:\\b", "C:\\", "b"},
      {"C:b", "C:", "b"},
      {"C:", "C:", ""},
      {"C:\\", "C:\\", ""},
      {"\\b", "\\", "b"},
      {"/a/b", "/a", "b"},
      {"/b", "/", "b"},
      {"b", "", "b"},
      {"a\\b/c", "a\\b", "c"},
      {"a\\b\\", "a\\b", ""},
      {"a\\\\b", "a\\", "b"},
      {"\\", "\\", ""},
      {"\\\\server\\share\\f", "\\\\server\\share\\", "f"},
      {"\\\\server\\share\\d\\f", "\\\\server\\share\\d", "f"},
      {"\\\\server\\share", "\\\\server\\share", ""},
      {"\xff\\\xfe", "\xff", "\xfe"},
  };
  for (const Row& row : kRows) {
    const KORUnicodeString path(row.path);
    KORUnicodeString directory("x");
    KORUnicodeString fileName("y");
    EXPECT_EQ(KORSplitPathEx(&path, &directory, &fileName), 0) << row.path;
    EXPECT_EQ(directory, row.directory) << row.path;
    EXPECT_EQ(fileName, row.fileName) << row.path;
  }
}

TEST(KORPath, SplitTakesNullAndItsOwnInput) {
  KORUnicodeString path("a\\b");
  EXPECT_EQ(KORSplitPathEx(&path, nullptr, nullptr), 0);
  KORUnicodeString fileName;
  EXPECT_EQ(KORSplitPathEx(&path, &path, &fileName), 0);
  EXPECT_EQ(path, "a");
  EXPECT_EQ(fileName, "b");
}

TEST(KORPath, SplitRefusesWhatIsNoPath) {
  const KORUnicodeString empty;
  const KORUnicodeString zero(std::string_view("a\0b", 3));
  KORUnicodeString output("untouched");
  EXPECT_EQ(KORSplitPathEx(&empty, &output, &output), Code(87));
  EXPECT_EQ(TakePendingError(Code(87)), "Cannot split the path '': it is empty");
  EXPECT_EQ(KORSplitPathEx(nullptr, &output, &output), Code(87));
  EXPECT_EQ(KORSplitPathEx(&zero, &output, &output), Code(123));
  EXPECT_EQ(output, "untouched");
}

TEST(KORPath, FindsInTheFirstFolderThatHasIt) {
  const TemporaryFolder folder;
  folder.MakeFolder("a/res");
  folder.MakeFolder("b/res");
  folder.MakeFile("b/res/x", "");
  folder.MakeFile("a/res/y", "");
  folder.MakeFile("b/res/y", "");
  const std::string semicolons = folder.Native("a") + ";;C:\\none;" + folder.Native("b") + "/";
  const std::string colons = folder.Native("none") + ":" + folder.Native("a") + ":" + folder.Native("b");
  EXPECT_EQ(KORFindPath("res\\x", semicolons.c_str()), folder.Native("b/res/x").c_str());
  EXPECT_EQ(KORFindPath("res/y", semicolons.c_str()), folder.Native("a/res/y").c_str());
  EXPECT_EQ(KORFindPath("\\res\\y", colons.c_str()), folder.Native("a/res/y").c_str());
  EXPECT_EQ(KORFindPath("res/z", colons.c_str()), "");
  EXPECT_EQ(KORFindPath("", colons.c_str()), "");
  EXPECT_EQ(KORFindPath(nullptr, colons.c_str()), "");
  EXPECT_EQ(KORFindPath("res/x", nullptr), "");
}

TEST(KORPath, FoundPathIsAbsolute) {
  const std::string current = std::filesystem::current_path().string();
  EXPECT_EQ(KORFindPath(".", "."), (current + "/./.").c_str());
}

TEST(KORPath, NativePathIsTheHostsOwnSpelling) {
  KORUnicodeString native("untouched");
  EXPECT_EQ(KORNativePath("C:\\x", native), Code(3));
  EXPECT_EQ(TakePendingError(Code(3)), "Cannot use the path 'C:\\x': No such device");
  EXPECT_EQ(KORNativePath(KORUnicodeString(std::string_view("a\0b", 3)), native), Code(123));
  EXPECT_EQ(native, "untouched");
  EXPECT_EQ(KORNativePath("\\a\\b", native), 0);
  EXPECT_EQ(native, "/a/b");
}

TEST(KOREnvironment, GivesTheValueOrNull) {
  ::setenv("VYX_TEST_VARIABLE", "value=with=signs", 1);
  EXPECT_STREQ(KORGetEnv("VYX_TEST_VARIABLE"), "value=with=signs");
  ::unsetenv("VYX_TEST_VARIABLE");
  EXPECT_EQ(KORGetEnv("VYX_TEST_VARIABLE"), nullptr);
  EXPECT_EQ(KORGetEnv(nullptr), nullptr);
}

}  // namespace
}  // namespace VYX::Test
