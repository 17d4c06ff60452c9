#include "KORSysBase/KORDirectory.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <set>
#include <string>

#include "support/injected_faults.h"
#include "support/pending_error.h"
#include "support/temporary_folder.h"
#include "support/unprivileged.h"

namespace VYX::Test {
namespace {

constexpr long Code(unsigned int iNumber) {
  return static_cast<long>(static_cast<int>(0x80070000U + iNumber));
}

class KORDirectory : public ::testing::Test {
 protected:
  TemporaryFolder _folder;
};

TEST_F(KORDirectory, ListsEveryName) {
  _folder.MakeFile("f", "x");
  _folder.MakeFile("not_\xff_utf8", "x");
  _folder.MakeFolder("d");
  KORDirectoryHandle handle;
  ASSERT_EQ(KOROpenDirectory(_folder.Path(), &handle), 0);
  std::set<std::string> names;
  KORDirectoryEntry entry;
  int isAtEnd = 0;
  while (KORReadDirectory(&handle, &entry, &isAtEnd) == 0 && isAtEnd == 0) {
    names.insert(entry.name);
  }
  EXPECT_EQ(isAtEnd, 1);
  EXPECT_EQ(names, (std::set<std::string>{".", "..", "d", "f", "not_\xff_utf8"}));
  EXPECT_EQ(KORCloseDirectory(&handle), 0);
  EXPECT_EQ(KORCloseDirectory(&handle), Code(6)) << "it is closed already";
}

TEST_F(KORDirectory, HandleThatGoesAwayClosesItsFolder) {
  const int descriptors = CountOpenDescriptors();
  {
    KORDirectoryHandle handle;
    ASSERT_EQ(KOROpenDirectory(_folder.Path(), &handle), 0);
    ASSERT_EQ(KOROpenDirectory(_folder.Path(), &handle), 0) << "opened again without a close";
  }
  EXPECT_EQ(CountOpenDescriptors(), descriptors);
}

TEST_F(KORDirectory, FailuresNameTheFolder) {
  KORDirectoryHandle handle;
  KORDirectoryEntry entry;
  int isAtEnd = 0;
  EXPECT_EQ(KOROpenDirectory(_folder.Path("none"), &handle), Code(2));
  EXPECT_EQ(TakePendingError(Code(2)),
            "Cannot open the folder '" + _folder.Native("none") + "': No such file or directory");
  _folder.MakeFile("f", "x");
  EXPECT_EQ(KOROpenDirectory(_folder.Path("f"), &handle), Code(267));
  EXPECT_EQ(KOROpenDirectory(nullptr, &handle), Code(2));
  EXPECT_EQ(KORReadDirectory(&handle, &entry, &isAtEnd), Code(6));
  ASSERT_EQ(KOROpenDirectory(_folder.Path(), &handle), 0);
  {
    const InjectedFaults faults(1, EIO, true);
    EXPECT_EQ(KORReadDirectory(&handle, &entry, &isAtEnd), Code(1117));
  }
  EXPECT_EQ(TakePendingError(Code(1117)), "Cannot read the folder '" + _folder.Native() + "': Input/output error");
}

TEST_F(KORDirectory, FileInfoFollowsLinks) {
  _folder.MakeFile("f", "abc");
  _folder.MakeFolder("d");
  _folder.MakeLink("to_f", "f");
  _folder.MakeLink("dangling", "nowhere");
  KORFileInfo info;
  KORFileInfo same;
  EXPECT_EQ(KORGetFileInfo(_folder.Path("to_f"), &info), 0);
  EXPECT_EQ(KORGetFileInfo(_folder.Path("f"), &same), 0);
  EXPECT_EQ(info.mode, KORFileInfo::kRegularFile);
  EXPECT_EQ(info.size, 3U);
  EXPECT_EQ(info.device, same.device);
  EXPECT_EQ(info.file, same.file);
  EXPECT_EQ(KORGetFileInfo(_folder.Path("d"), &info), 0);
  EXPECT_EQ(info.mode, KORFileInfo::kFolder);
  EXPECT_EQ(KORGetFileInfo("/dev/null", &info), 0);
  EXPECT_EQ(info.mode, 0U);
  EXPECT_EQ(KORGetFileInfo(_folder.Path("dangling"), &info), Code(2));
  EXPECT_EQ(TakePendingError(Code(2)), "Cannot query '" + _folder.Native("dangling") + "': No such file or directory");
}

TEST_F(KORDirectory, CreatesOneFolder) {
  EXPECT_EQ(KORCreateDirectory(_folder.Path("d")), 0);
  EXPECT_EQ(KORCreateDirectory(_folder.Path("d")), 0) << "it exists";
  EXPECT_EQ(KORCreateDirectory(_folder.Path("d/")), 0);
  EXPECT_EQ(KORCreateDirectory(_folder.Path("a/b")), 2);
  EXPECT_EQ(TakePendingError(Code(2)),
            "Cannot create the folder '" + _folder.Native("a/b") + "': No such file or directory");
  _folder.MakeFile("f", "x");
  EXPECT_EQ(KORCreateDirectory(_folder.Path("f")), 183);
}

TEST_F(KORDirectory, CreatesFoldersOnTheWay) {
  EXPECT_EQ(KORCreateDirectoryR(_folder.Path("a/b\\c//d/")), 0);
  EXPECT_EQ(KORCreateDirectoryR(_folder.Path("a/b/c/d")), 0);
  EXPECT_EQ(_folder.Names("a/b/c"), std::vector<std::string>{"d"});
  _folder.MakeFile("f", "x");
  EXPECT_NE(KORCreateDirectoryR(_folder.Path("f/x/y")), 0);
  EXPECT_EQ(ContentOf(_folder.Native("f")), "x");
}

TEST_F(KORDirectory, RemovesATreeAndCountsWhatIsLeft) {
  ASSERT_EQ(::chmod(_folder.Native().c_str(), 0777), 0);
  _folder.MakeFolder("t/locked");
  _folder.MakeFile("t/locked/1", "");
  _folder.MakeFile("t/locked/2", "");
  ASSERT_EQ(::chmod(_folder.Native("t").c_str(), 0777), 0);
  ASSERT_EQ(::chmod(_folder.Native("t/locked").c_str(), 0555), 0);
  EXPECT_TRUE(HoldsForOrdinaryUser([this] {
    const bool isRefused = KORRemoveDirectoryR(_folder.Path("t")) == Code(5);
    const std::string message = TakePendingError(Code(5));
    return isRefused && message.starts_with("Cannot remove '" + _folder.Native("t/locked/")) &&
           message.ends_with(": Permission denied (and 1 more)");
  }));
  ASSERT_EQ(::chmod(_folder.Native("t/locked").c_str(), 0755), 0);
  EXPECT_EQ(KORRemoveDirectoryR(_folder.Path("t\\")), 0);
  EXPECT_TRUE(_folder.Names().empty());
  EXPECT_EQ(KORRemoveDirectoryR(_folder.Path("t")), Code(2));
  EXPECT_EQ(KORRemoveDirectoryR(""), Code(87));
  EXPECT_EQ(KORRemoveDirectoryR("\\"), Code(87));
  EXPECT_EQ(KORRemoveDirectoryR(nullptr), Code(87));
}

}  // namespace
}  // namespace VYX::Test
