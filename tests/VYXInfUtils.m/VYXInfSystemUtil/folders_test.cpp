#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include "KORSysBase/KORResult.h"
#include "VYXInfLog.h"
#include "VYXInfSystemUtil.h"
#include "support/captured_stdout.h"
#include "support/injected_faults.h"
#include "support/pending_error.h"
#include "support/settled_clock.h"
#include "support/temporary_folder.h"
#include "support/unprivileged.h"

namespace VYX::Test {
namespace {

using Util = VYXInfSystemUtil;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::UnorderedElementsAre;

constexpr char kProfileLine[] =
    "[PROFILE]  PROFILE:  @VYXInfSystemUtil::ListFileNamesFromDirectory:\t\ttook 0.000000s ";

std::vector<std::string> Texts(const KORListValKORUnicodeString& iList) {
  std::vector<std::string> texts;
  for (const KORUnicodeString& text : iList) {
    texts.emplace_back(text.ToStringView());
  }
  return texts;
}

std::vector<std::string> Texts(const std::vector<KORUnicodeString>& iList) {
  std::vector<std::string> texts;
  for (const KORUnicodeString& text : iList) {
    texts.emplace_back(text.ToStringView());
  }
  return texts;
}

class Folders : public ::testing::Test {
 protected:
  TemporaryFolder _folder;
};

class CreateDirectoryRecursively : public Folders {};
class ListFileNames : public Folders {};
class EnumDirectories : public Folders {};

TEST_F(CreateDirectoryRecursively, MakesEveryFolderOnTheWay) {
  const ConsoleLevel level(DEBUG);
  _folder.MakeFolder("a");
  CapturedStdout captured;
  EXPECT_EQ(Util::CreateDirectoryRecursively(_folder.Path("a/b/c")), S_OK);
  EXPECT_EQ(Util::CreateDirectoryRecursively(_folder.Path("a/b/c")), S_OK);
  EXPECT_EQ(_folder.Names("a/b"), std::vector<std::string>{"c"});
  const std::string parent(Util::FixFilePath(_folder.Path("a")).ToStringView());
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("DEBUG", "Directory already exist: " + parent),
                                               Line("DEBUG", "Directory already exist: " + _folder.Native("a/b/c"))));
}

TEST_F(CreateDirectoryRecursively, TakesSeparatorsAtTheEnd) {
  EXPECT_EQ(Util::CreateDirectoryRecursively(_folder.Path("x/y\\/")), S_OK);
  EXPECT_EQ(_folder.Names("x"), std::vector<std::string>{"y"});
}

TEST_F(CreateDirectoryRecursively, NameWithoutSeparatorFails) {
  CapturedStdout captured;
  EXPECT_EQ(Util::CreateDirectoryRecursively("vyx_no_such_folder"), E_FAIL);
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn("VYXInfSystemUtil")));
}

TEST_F(CreateDirectoryRecursively, EveryLevelReportsTheFailureOfTheOneAbove) {
  CapturedStdout captured;
  EXPECT_EQ(Util::CreateDirectoryRecursively("vyx_no_such_folder\\a\\b"), E_FAIL);
  EXPECT_EQ(Util::CreateDirectoryRecursively(""), E_FAIL);
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(FailureReturnIn("VYXInfSystemUtil"), FailureReturnIn("VYXInfSystemUtil"),
                          FailureReturnIn("VYXInfSystemUtil"), FailureReturnIn("VYXInfSystemUtil")));
}

TEST_F(CreateDirectoryRecursively, RefusalOfTheHostIsTold) {
  _folder.MakeFile("f", "x");
  CapturedStdout captured;
  EXPECT_EQ(Util::CreateDirectoryRecursively(_folder.Path("f/a")), E_FAIL);
  const std::string path = _folder.Native("f/a");
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("ERROR", "Cannot create the folder '" + path + "': Not a directory"),
                          FailureReturnIn("VYXInfSystemUtil")));
  EXPECT_EQ(TakePendingError(E_FAIL), "(none)");
}

TEST_F(CreateDirectoryRecursively, EndlessPathsEndSoon) {
  CapturedStdout captured;
  EXPECT_EQ(Util::CreateDirectoryRecursively(_folder.Path(std::string(1 << 20, '/') + "x")), E_FAIL);
  EXPECT_EQ(Util::CreateDirectoryRecursively(_folder.Path(std::string(20'000, '/') + std::string(300, 'n'))), E_FAIL);
}

TEST_F(ListFileNames, GivesFilesAndFolders) {
  _folder.MakeFile("b.txt", "");
  _folder.MakeFile("a.JSON", "");
  _folder.MakeFile("notjson", "");
  _folder.MakeFile("not_\xff_utf8", "");
  _folder.MakeFolder("d");
  _folder.MakeLink("to_d", "d");
  _folder.MakeLink("to_f", "b.txt");
  _folder.MakeLink("dangling", "nowhere");
  ASSERT_EQ(::mkfifo(_folder.Native("pipe").c_str(), 0600), 0);
  KORListValKORUnicodeString folders;
  folders.Append("former");
  CapturedStdout captured;
  EXPECT_THAT(Texts(Util::ListFileNamesFromDirectory(_folder.Path(), {}, &folders)),
              UnorderedElementsAre("a.JSON", "b.txt", "notjson", "not_\xff_utf8", "to_f"));
  EXPECT_THAT(Texts(folders), UnorderedElementsAre("d", "to_d"));
  EXPECT_EQ(captured.Text(), "");
  EXPECT_EQ(TakePendingError(E_FAIL), "(none)") << "an entry that is passed over is no failure";
}

TEST_F(ListFileNames, ExtensionsArePlainEndings) {
  _folder.MakeFile("a.JSON", "");
  _folder.MakeFile("notjson", "");
  _folder.MakeFile("c.txt", "");
  KORListValKORUnicodeString extensions;
  extensions.Append(".json");
  EXPECT_THAT(Texts(Util::ListFileNamesFromDirectory(_folder.Path(), extensions, nullptr)), ElementsAre("a.JSON"));
  extensions.RemoveAll();
  extensions.Append("json");
  EXPECT_THAT(Texts(Util::ListFileNamesFromDirectory(_folder.Path(), extensions, nullptr)),
              UnorderedElementsAre("a.JSON", "notjson"));
  extensions.RemoveAll();
  extensions.Append("");
  EXPECT_THAT(Texts(Util::ListFileNamesFromDirectory(_folder.Path(), extensions, nullptr)), ElementsAre());
}

TEST_F(ListFileNames, TellsEveryEntryAtTrace) {
  const ConsoleLevel level(TRACE);
  const SettledClock clock({0, 0});
  _folder.MakeFile("only.txt", "");
  KORListValKORUnicodeString extensions;
  extensions.Append(".txt");
  const std::string path = _folder.Native();
  CapturedStdout captured;
  Util::ListFileNamesFromDirectory(_folder.Path(), extensions, nullptr);
  auto lines = captured.LogLines();
  ASSERT_EQ(lines.size(), 6U);
  EXPECT_THAT(lines[0], Line("TRACE", "READING DIRECTORY: '" + path + "' "));
  EXPECT_THAT(lines[4], Line("TRACE", "Found 1 FILES from \"" + path + "\" "));
  EXPECT_THAT(lines[5], Line("TRACE", kProfileLine));
  std::vector<std::string> entries;
  for (int number = 1; number <= 3; ++number) {
    std::string& text = lines[static_cast<std::size_t>(number)].text;
    const std::string mark = "#" + std::to_string(number) + " ";
    ASSERT_THAT(text, HasSubstr(mark));
    entries.push_back(text.replace(text.find(mark), mark.size(), "#n "));
  }
  EXPECT_THAT(entries, UnorderedElementsAre(
                           "                     --> found folder #n (endOfDir 0, file info status 0):  \".\" ",
                           "                     --> found folder #n (endOfDir 0, file info status 0):  \"..\" ",
                           "                     --> found file #n (endOfDir 0, file info status 0):  \"only.txt\" "));
}

TEST_F(ListFileNames, TellsWhyEntriesAreIgnored) {
  const ConsoleLevel level(TRACE);
  struct Row {
    std::string name;
    std::string text;
  };
  _folder.MakeFile("f.txt", "");
  _folder.MakeLink("dangling", "nowhere");
  ASSERT_EQ(::mkfifo(_folder.Native("pipe").c_str(), 0600), 0);
  _folder.MakeFile("back\\slash", "");
  const Row kRows[] = {
      {"f.txt", " [EXTENSION NOT SUPPORTED]  (endOfDir 0, file info status 0):  \"f.txt\" "},
      {"dangling", " [NOT A REGULAR FILE] (endOfDir 0, file info status -2147024894):  \"dangling\" "},
      {"pipe", " [NOT A REGULAR FILE] (endOfDir 0, file info status 0):  \"pipe\" "},
      {"back\\slash", " [NAME CANNOT BE PART OF A PATH] (endOfDir 0, file info status 0):  \"back\\slash\" "},
  };
  KORListValKORUnicodeString extensions;
  extensions.Append(".json");
  CapturedStdout captured;
  EXPECT_EQ(Util::ListFileNamesFromDirectory(_folder.Path(), extensions, nullptr).Size(), 0);
  const auto lines = captured.LogLines();
  for (const Row& row : kRows) {
    EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [&row](const LogLine& iLine) {
      return iLine.text.starts_with("                     --> IGNORING file #") && iLine.text.ends_with(row.text);
    })) << row.name;
  }
}

TEST_F(ListFileNames, FolderThatCannotBeOpenedIsLoggedAndEmpty) {
  KORListValKORUnicodeString folders;
  folders.Append("untouched");
  CapturedStdout captured;
  EXPECT_EQ(Util::ListFileNamesFromDirectory(_folder.Path("none"), {}, &folders).Size(), 0);
  EXPECT_THAT(Texts(folders), ElementsAre("untouched"));
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("ERROR", "Cannot open the folder '" + _folder.Native("none") +
                                                                 "': No such file or directory"),
                                               FailureLogIn("VYXInfSystemUtil")));
}

TEST_F(ListFileNames, EveryFailingCallLeavesALogAndLeaksNothing) {
  _folder.MakeFile("f", "");
  _folder.MakeLink("l", "f");
  const int descriptors = CountOpenDescriptors();
  int total = 0;
  int silent = 0;
  for (int k = 0; k <= total; ++k) {
    CapturedStdout captured;
    KORListValKORUnicodeString files;
    {
      const InjectedFaults faults(k, EIO, true);
      files = Util::ListFileNamesFromDirectory(_folder.Path(), {}, nullptr);
      total = k == 0 ? faults.Count() : total;
    }
    EXPECT_LE(files.Size(), 2);
    if (captured.Text().empty()) {
      ++silent;
      EXPECT_GE(files.Size(), k == 0 ? 2 : 1) << "call " << k;
    } else {
      EXPECT_THAT(captured.LogLines(), ElementsAre(::testing::_, FailureLogIn("VYXInfSystemUtil"))) << "call " << k;
    }
  }
  EXPECT_LE(silent, 3) << "only what asks for one entry is passed over in silence";
  EXPECT_EQ(CountOpenDescriptors(), descriptors);
}

TEST_F(EnumDirectories, NeedsSomethingToReport) {
  _folder.MakeFile("f", "");
  EXPECT_TRUE(Util::EnumDirectories(_folder.Path(), "", 0, nullptr).empty());
  EXPECT_TRUE(Util::EnumDirectories(_folder.Path(), "", Util::ENUM_RECURSIVE | Util::ENUM_RELATIVE, nullptr).empty());
  EXPECT_TRUE(Util::EnumDirectories("", "", Util::ENUM_FILES, nullptr).empty());
  CapturedStdout captured;
  EXPECT_TRUE(Util::EnumDirectories(_folder.Path("none"), "", Util::ENUM_FILES, nullptr).empty());
  EXPECT_EQ(captured.Text(), "");
}

TEST_F(EnumDirectories, FindsFilesAndFoldersInDiscoveryOrder) {
  _folder.MakeFolder("d/e");
  _folder.MakeFile("f", "");
  _folder.MakeFile("d/g", "");
  _folder.MakeFile("d/e/h", "");
  constexpr unsigned int kBoth = Util::ENUM_FILES | Util::ENUM_FOLDERS;
  const std::string root = _folder.Native() + "\\";
  EXPECT_THAT(Texts(Util::EnumDirectories(_folder.Path(), "", kBoth, nullptr)), ElementsAre(root + "f", root + "d\\"));
  EXPECT_THAT(
      Texts(Util::EnumDirectories(_folder.Path(), "", kBoth | Util::ENUM_RECURSIVE | Util::ENUM_RELATIVE, nullptr)),
      ElementsAre("f", "d\\", "d\\g", "d\\e\\", "d\\e\\h"));
  EXPECT_THAT(Texts(Util::EnumDirectories(_folder.Path(), "", Util::ENUM_FILES | Util::ENUM_RECURSIVE, nullptr)),
              ElementsAre(root + "f", root + "d\\g", root + "d\\e\\h"));
  EXPECT_THAT(Texts(Util::EnumDirectories(_folder.Path(), "", Util::ENUM_FOLDERS | Util::ENUM_RECURSIVE, nullptr)),
              ElementsAre(root + "d\\", root + "d\\e\\"));
  for (const char* subFolder : {"d", "\\d", "d\\", "\\d\\"}) {
    EXPECT_THAT(Texts(Util::EnumDirectories(_folder.Path(), subFolder, kBoth, nullptr)),
                ElementsAre(root + "d\\g", root + "d\\e\\"))
        << subFolder;
  }
}

TEST_F(EnumDirectories, FileOfTwoEntriesComesOnceAndFolderTwice) {
  for (const char* entry : {"one/d", "two/d"}) {
    _folder.MakeFolder(entry);
    _folder.MakeFile(std::string(entry) + "/f", "");
  }
  _folder.MakeFile("two/only", "");
  const KORUnicodeString paths = _folder.Path("one") + ";" + _folder.Path("two");
  const unsigned int kAll = Util::ENUM_FILES | Util::ENUM_FOLDERS | Util::ENUM_RECURSIVE;
  EXPECT_THAT(Texts(Util::EnumDirectories(paths, "", kAll | Util::ENUM_RELATIVE, nullptr)),
              ElementsAre("d\\", "d\\f", "only", "d\\"));
  const std::string one = _folder.Native("one") + "\\";
  const std::string two = _folder.Native("two") + "\\";
  EXPECT_THAT(Texts(Util::EnumDirectories(paths, "", kAll, nullptr)),
              ElementsAre(one + "d\\", one + "d\\f", two + "only", two + "d\\"));
}

TEST_F(EnumDirectories, FilterSeesTheBareNamesOfFiles) {
  _folder.MakeFolder("d");
  _folder.MakeFile("d/a.txt", "");
  _folder.MakeFile("d/b.bin", "");
  std::vector<std::string> asked;
  const auto filter = [&asked](const KORUnicodeString& iName) {
    asked.emplace_back(iName.ToStringView());
    return iName == "a.txt";
  };
  EXPECT_THAT(Texts(Util::EnumDirectories(_folder.Path(), "", 15, filter)), ElementsAre("d\\", "d\\a.txt"));
  EXPECT_THAT(asked, UnorderedElementsAre("a.txt", "b.bin"));
}

TEST_F(EnumDirectories, LinksAreFollowedButNeverRoundInCircles) {
  _folder.MakeFolder("a/b");
  _folder.MakeFolder("other");
  _folder.MakeFile("other/f", "");
  _folder.MakeLink("a/b/up", "../..");
  _folder.MakeLink("a/self", ".");
  _folder.MakeLink("a/other", "../other");
  EXPECT_THAT(Texts(Util::EnumDirectories(_folder.Path("a"), "", 15, nullptr)),
              UnorderedElementsAre("b\\", "b\\up\\", "b\\up\\other\\", "b\\up\\other\\f", "b\\up\\a\\", "self\\",
                                   "other\\", "other\\f"));
}

TEST_F(EnumDirectories, DeepFoldersEndWherePathsDo) {
  std::string relative;
  for (int depth = 0; depth < 300; ++depth) {
    relative += "d/";
  }
  _folder.MakeFolder(relative);
  EXPECT_EQ(Util::EnumDirectories(_folder.Path(), "", Util::ENUM_FOLDERS | Util::ENUM_RECURSIVE, nullptr).size(), 300U);
}

TEST_F(EnumDirectories, FolderThatMayNotBeReadIsLoggedAndTheWalkGoesOn) {
  ASSERT_EQ(::chmod(_folder.Native().c_str(), 0755), 0);
  _folder.MakeFolder("locked");
  _folder.MakeFolder("open");
  _folder.MakeFile("open/f", "");
  ASSERT_EQ(::chmod(_folder.Native("locked").c_str(), 0), 0);
  ASSERT_EQ(::chmod(_folder.Native("open").c_str(), 0755), 0);
  CapturedStdout captured;
  EXPECT_TRUE(HoldsForOrdinaryUser([this] {
    auto found = Texts(Util::EnumDirectories(_folder.Path(), "", 15, nullptr));
    std::sort(found.begin(), found.end());
    return found == std::vector<std::string>{"locked\\", "open\\", "open\\f"};
  }));
  const auto lines = captured.LogLines();
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_THAT(lines[0].text, HasSubstr("Permission denied"));
  EXPECT_THAT(lines[1], FailureLogIn("VYXInfSystemUtil"));
}

}  // namespace
}  // namespace VYX::Test
