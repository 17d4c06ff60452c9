#include "platform/os/folders.h"

#include <gtest/gtest.h>

#include <map>

#include "platform/os/files.h"
#include "platform/os/windows/file_calls.h"
#include "platform/os/windows/path_text.h"
#include "support/temporary_folder.h"
#include "support/windows/process_faults.h"

namespace VYX::Os {
namespace {

using VYX::Test::TemporaryFolder;
using Windows::gFileCalls;

constexpr std::uint32_t kReadOnly = 1;
constexpr std::uint32_t kDeviceFault = 1117;

void MakeReadOnly(const std::string& iPath) {
  std::wstring path;
  ASSERT_TRUE(Windows::ToWidePath(iPath, path).IsOk());
  ASSERT_TRUE(gFileCalls.ChangeAttributes(path.c_str(), kReadOnly));
}

TEST(WindowsFolders, ListingGivesEveryNameAndItsKind) {
  const TemporaryFolder folder;
  folder.MakeFile("f", "");
  folder.MakeFolder("d");
  folder.MakeFile("\xE6\xBC\xA2\xF0\x9F\x98\x80", "");
  std::map<std::string, EntryKind> entries;
  FolderReader reader;
  ASSERT_TRUE(reader.Open(folder.Native()).IsOk());
  FolderEntry entry;
  bool isAtEnd = false;
  while (reader.Read(entry, isAtEnd).IsOk() && !isAtEnd) {
    entries.emplace(entry.name, entry.kind);
  }
  const std::map<std::string, EntryKind> expected = {{".", EntryKind::Folder},
                                                     {"..", EntryKind::Folder},
                                                     {"d", EntryKind::Folder},
                                                     {"f", EntryKind::Regular},
                                                     {"\xE6\xBC\xA2\xF0\x9F\x98\x80", EntryKind::Regular}};
  EXPECT_EQ(entries, expected);
  EXPECT_TRUE(reader.Read(entry, isAtEnd).IsOk());
  EXPECT_TRUE(isAtEnd);
}

TEST(WindowsFolders, FailuresCarryTheHostsNumbers) {
  const TemporaryFolder folder;
  FolderReader reader;
  FolderEntry entry;
  bool isAtEnd = false;
  EXPECT_EQ(reader.Read(entry, isAtEnd).ToErrorNumber(), 6);
  EXPECT_TRUE(reader.Open(folder.Native("none")).IsNotThere());
  EXPECT_EQ(reader.Open(folder.MakeFile("f", "")).ToErrorNumber(), 267);
  EXPECT_TRUE(CreateFolder(folder.Native("a")).IsOk());
  EXPECT_TRUE(CreateFolder(folder.Native("a")).IsOk());
  EXPECT_TRUE(CreateFolder("C:\\").IsOk());
  EXPECT_EQ(CreateFolder(folder.Native("f")).ToErrorNumber(), 183);
  EXPECT_EQ(CreateFolder(folder.Native("x\\y")).ToErrorNumber(), 3);
}

TEST(WindowsFolders, PrivateFolderIsTheUsersOwn) {
  const TemporaryFolder folder;
  EXPECT_TRUE(CreatePrivateFolder(folder.Native("own\\")).IsOk());
  EXPECT_TRUE(CreatePrivateFolder(folder.Native("own")).IsOk());
  EXPECT_EQ(CreatePrivateFolder(folder.MakeFolder("open")).ToErrorNumber(), 183);
}

TEST(WindowsRemoveTree, RemovesWhatIsReadOnly) {
  const TemporaryFolder folder;
  folder.MakeFolder("t\\a\\b");
  folder.MakeFile("t\\f", "1");
  folder.MakeFile("t\\a\\b\\f", "2");
  MakeReadOnly(folder.Native("t\\f"));
  MakeReadOnly(folder.Native("t\\a\\b\\f"));
  RemovalReport report;
  EXPECT_TRUE(RemoveTree(folder.Native("t\\"), report).IsOk());
  EXPECT_EQ(report.removed, 5U);
  EXPECT_EQ(report.failed, 0U);
  EXPECT_TRUE(folder.Names().empty());
}

TEST(WindowsRemoveTree, RefusesPlacesThatAreNeverMeant) {
  const TemporaryFolder folder;
  folder.MakeFile("f", "kept");
  for (const std::string& path : {std::string(), std::string("\\"), std::string("C:\\"), std::string("C:"),
                                  folder.Native("."), folder.Native(".."), folder.Native("none"), folder.Native("f")}) {
    RemovalReport report;
    EXPECT_FALSE(RemoveTree(path, report).IsOk()) << path;
    EXPECT_EQ(report.failed, 1U) << path;
    EXPECT_EQ(report.removed, 0U) << path;
  }
  EXPECT_EQ(VYX::Test::ContentOf(folder.Native("f")), "kept");
}

TEST(WindowsRemoveTree, EveryFailingCallIsReportedOrHarmless) {
  static int gNumber;
  static int gFailing;
  static Windows::FileCalls gReal;
  gReal = gFileCalls;
  const auto isFailing = [] {
    VYX::Test::FailWith(kDeviceFault);
    return ++gNumber == gFailing;
  };
  int total = 0;
  for (int k = 0; k <= total; ++k) {  // 0 counts the calls
    const TemporaryFolder folder;
    folder.MakeFolder("t\\a");
    folder.MakeFile("t\\a\\f", "");
    gNumber = 0;
    gFailing = k;
    static const auto gIsFailing = isFailing;
    gFileCalls.RemoveFile = [](const wchar_t* iPath) { return !gIsFailing() && gReal.RemoveFile(iPath); };
    gFileCalls.RemoveFolder = [](const wchar_t* iPath) { return !gIsFailing() && gReal.RemoveFolder(iPath); };
    gFileCalls.DescribeFile = [](void* iFile, void* oInfo) {
      return !gIsFailing() && gReal.DescribeFile(iFile, oInfo);
    };
    gFileCalls.FindFirst = [](const wchar_t* iPath, void* oData) {
      return gIsFailing() ? nullptr : gReal.FindFirst(iPath, oData);
    };
    RemovalReport report;
    const Status status = RemoveTree(folder.Native("t"), report);
    total = k == 0 ? gNumber : total;
    gFileCalls = gReal;
    const bool isGone = !TestExistence(folder.Native("t")).IsOk();
    EXPECT_EQ(report.failed == 0, isGone) << "call " << k << " of " << total;
    EXPECT_EQ(status.IsOk(), isGone) << "call " << k << " of " << total;
  }
  EXPECT_GT(total, 5);
}

TEST(WindowsFolders, CurrentFolderIsAbsolute) {
  std::string path;
  ASSERT_TRUE(CurrentFolder(path).IsOk());
  FileInfo info;
  ASSERT_TRUE(DescribePath(path, info).IsOk());
  EXPECT_TRUE(info.IsFolder());
  EXPECT_EQ(path.substr(1, 2), ":\\");
}

}  // namespace
}  // namespace VYX::Os
