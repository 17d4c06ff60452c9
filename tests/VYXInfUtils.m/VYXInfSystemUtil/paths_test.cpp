#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "KORSysBase/KORResult.h"
#include "KORSysTS/KORThreads.h"
#include "VYXInfLog.h"
#include "VYXInfSystemUtil.h"
#include "support/captured_stdout.h"
#include "support/host.h"
#include "support/settled_clock.h"
#include "support/temporary_folder.h"

namespace VYX::Test {
namespace {

using Util = VYXInfSystemUtil;
using ::testing::ElementsAre;

struct Row {
  const char* input;
  const char* first;
  const char* second;
};

TEST(SplitFileNameExt, CutsAtTheLastDot) {
  const Row kRows[] = {{"noext", "noext", ""},
                       {"a.", "a", ""},
                       {".profile", "", "profile"},
                       {"archive.tar.gz", "archive.tar", "gz"},
                       {"", "", ""},
                       {".", "", ""},
                       {"..", ".", ""},
                       {"\xc3\xa4.\xc3\xb6", "\xc3\xa4", "\xc3\xb6"}};
  for (const Row& row : kRows) {
    KORUnicodeString name("x");
    KORUnicodeString extension("y");
    EXPECT_EQ(Util::SplitFileNameExt(row.input, name, extension), S_OK);
    EXPECT_EQ(name, row.first) << row.input;
    EXPECT_EQ(extension, row.second) << row.input;
  }
}

TEST(SplitFileNameExt, OutputMayBeTheInput) {
  KORUnicodeString text("a.b");
  KORUnicodeString extension;
  EXPECT_EQ(Util::SplitFileNameExt(text, text, extension), S_OK);
  EXPECT_EQ(text, "a");
  EXPECT_EQ(extension, "b");
}

TEST(SplitFilePath, GivesFolderNameAndExtension) {
  CapturedStdout captured;
  KORUnicodeString directory;
  KORUnicodeString name;
  KORUnicodeString extension;
  EXPECT_EQ(Util::SplitFilePath("C:/a\\b/file.tar.gz", directory, name, extension), S_OK);
  EXPECT_EQ(directory, "C:\\a\\b");
  EXPECT_EQ(name, "file.tar");
  EXPECT_EQ(extension, "gz");
  EXPECT_EQ(captured.Text(), "");
}

TEST(SplitFilePath, FailureIsTracedAndLeavesTheOutputs) {
  CapturedStdout captured;
  KORUnicodeString directory("d");
  KORUnicodeString name("n");
  KORUnicodeString extension("e");
  EXPECT_EQ(Util::SplitFilePath("", directory, name, extension), E_INVALIDARG);
  EXPECT_EQ(directory, "d");
  EXPECT_EQ(name, "n");
  EXPECT_EQ(extension, "e");
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("ERROR", "Cannot split the path '': it is empty"), FailureReturnIn("VYXInfSystemUtil")));
}

TEST(SplitFilePath, PointerFormIsSilentAndTakesNull) {
  CapturedStdout captured;
  KORUnicodeString part;
  EXPECT_EQ(Util::SplitFilePath("a/b\\c.d", &part, nullptr), S_OK);
  EXPECT_EQ(part, "a\\b");
  EXPECT_EQ(Util::SplitFilePath("a/b\\c.d", nullptr, &part), S_OK);
  EXPECT_EQ(part, "c.d");
  EXPECT_LT(Util::SplitFilePath("", nullptr, nullptr), 0);
  EXPECT_EQ(captured.Text(), "");
}

TEST(Paths, FileNameIsWhatFollowsTheLastSeparator) {
  CapturedStdout captured;
  EXPECT_EQ(Util::GetFileNameFromPath("C:/a/b.c"), "b.c");
  EXPECT_EQ(Util::GetFileNameFromPath("a\\"), "");
  EXPECT_EQ(Util::GetFileNameFromPath(""), "");
  EXPECT_EQ(captured.Text(), "");
}

TEST(Paths, LastNameSkipsSeparatorsAtTheEnd) {
  const Row kRows[] = {{"C:\\a\\b\\", "b", ""}, {"dir/sub/", "sub", ""},          {"\\/\\", "", ""}, {"", "", ""},
                       {"a", "a", ""},          {"a\\\xc3\xa4//", "\xc3\xa4", ""}};
  for (const Row& row : kRows) {
    EXPECT_EQ(Util::GetLastNameFromPath(row.input), row.first) << row.input;
  }
}

TEST(Paths, LastNameTellsItsStepsAtTrace) {
  const ConsoleLevel level(TRACE);
  CapturedStdout captured;
  Util::GetLastNameFromPath("dir/sub/");
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("TRACE", "analyzing full path : 'dir/sub/' "),
                                               Line("TRACE", "=> got last name 'sub'. ")));
}

TEST(Paths, ParentIsWhatStandsBeforeTheLastSeparator) {
  const Row kRows[] = {
      {"C:/a/b", "C:\\a", ""}, {"C:\\a\\", "C:\\a", ""}, {"noseparator", "", ""}, {"\\a", "", ""}, {"", "", ""},
      {"a//b", "a\\", ""}};
  for (const Row& row : kRows) {
    EXPECT_EQ(Util::GetParentDir(row.input), row.first) << row.input;
  }
}

TEST(Paths, PartsAreJoinedAsTheyStand) {
  EXPECT_EQ(Util::ConcatenateAsPath({}), "");
  EXPECT_EQ(Util::ConcatenateAsPath({"a"}), "a");
  EXPECT_EQ(Util::ConcatenateAsPath({"a", "b", "c"}), "a\\b\\c");
  EXPECT_EQ(Util::ConcatenateAsPath({"a\\", "", "/c"}), "a\\\\\\/c");
}

TEST(Paths, FixedPathHasBackslashes) {
  EXPECT_EQ(Util::FixFilePath("a//b"), "a\\\\b");
  EXPECT_EQ(Util::FixFilePath("/a\\b/"), "\\a\\b\\");
  EXPECT_EQ(Util::FixFilePath(""), "");
}

TEST(Paths, ResolvedPathHasSingleBackslashes) {
  struct ResolveRow {
    const char* path;
    bool withSeparator;
    const char* result;
  };
  const ResolveRow kRows[] = {{"C:/a//b/", false, "C:\\a\\b"},
                              {"C:/a//b/", true, "C:\\a\\b\\"},
                              {"", true, ""},
                              {"", false, ""},
                              {"\\\\server/x", true, "\\server\\x\\"},
                              {"///", false, ""},
                              {"///", true, "\\"},
                              {"a/./..", false, "a\\.\\.."},
                              {"a", true, "a\\"}};
  for (const ResolveRow& row : kRows) {
    EXPECT_EQ(Util::ResolvePath(row.path, row.withSeparator), row.result) << row.path;
  }
}

TEST(Paths, UniquePathNamesTimeProcessAndThread) {
  const std::string ids = std::to_string(OwnProcess()) + "_" + std::to_string(KORThreads::GetCurrentThreadId()) + "\\";
  const SettledClock clock({1'741'010'709, 0});
  const std::string time(Util::GetCurrentDateTimeString("%Y-%m-%d_%H-%M-%S").ToStringView());
  const std::string end = "n_" + time + "_" + ids;
  EXPECT_EQ(Util::CreateUniquePath("n", "C:\\T\\"), ("C:\\T\\" + end).c_str());
  EXPECT_EQ(Util::CreateUniquePath("n", "C:\\T"), ("C:\\T\\" + end).c_str());
  EXPECT_EQ(Util::CreateUniquePath("n", ""), end.c_str());
}

TEST(FileNames, IllegalCharactersAreTheNine) {
  EXPECT_EQ(Util::ReplaceFileNameIllegalChars("a:b*c"), "a_b_c");
  EXPECT_EQ(Util::RemoveFileNameIllegalChars("a<b>"), "ab");
  EXPECT_EQ(Util::ReplaceFileNameIllegalCharsWith("\\/:*?\"<>|", "[]"), "[][][][][][][][][]");
  EXPECT_EQ(Util::ReplaceFileNameIllegalChars(" spaced name "), " spaced name ");
  EXPECT_EQ(Util::ReplaceFileNameIllegalCharsWith("a|b", "|"), "a|b") << "the replacement is not searched again";
  EXPECT_FALSE(Util::DoesFileNameContainIllegalChars("file.txt"));
  EXPECT_FALSE(Util::DoesFileNameContainIllegalChars(""));
  EXPECT_TRUE(Util::DoesFileNameContainIllegalChars("x|y"));
  for (const char illegal : std::string("\\/:*?\"<>|")) {
    EXPECT_TRUE(Util::DoesFileNameContainIllegalChars(KORUnicodeString(KORUnicodeChar(illegal)))) << illegal;
  }
}

TEST(Paths, FixedTexts) {
  EXPECT_STREQ(Util::GetPathSeparator(), "\\");
  EXPECT_EQ(Util::GetExecutableSuffix(), ".exe");
}

TEST(Paths, ResourceIsFoundUnderTheInstallationFolders) {
  const TemporaryFolder folder;
  folder.MakeFolder("app/resources");
  folder.MakeFile("app/resources/x.json", "{}");
  SetVariable("KORInstallPath", nullptr);
  EXPECT_EQ(Util::GetAbsoluteResourcePath("resources\\x.json"), "");
  SetVariable("KORInstallPath", ("/nowhere;" + folder.Native("app")).c_str());
  EXPECT_EQ(Util::GetAbsoluteResourcePath("resources\\x.json"), folder.Native("app/resources/x.json").c_str());
  EXPECT_EQ(Util::GetAbsoluteResourcePath("resources\\y.json"), "");
  EXPECT_EQ(Util::GetAbsoluteResourcePath(KORUnicodeString(std::string_view("resources\0x", 11))), "");
  SetVariable("KORInstallPath", nullptr);
}

}  // namespace
}  // namespace VYX::Test
