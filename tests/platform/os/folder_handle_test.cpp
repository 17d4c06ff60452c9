#include "platform/os/folder_handle.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/os/folders.h"
#include "platform/os/random_access.h"
#include "support/temporary_folder.h"

namespace {

using ::testing::ElementsAre;
using VYX::Os::FileDescriptor;
using VYX::Os::FolderHandle;
using VYX::Test::ContentOf;

class FolderHandleTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(_handle.Open(_folder.Native()).IsOk()); }

  FolderHandle::Kind KindOf(const std::string& iName) const {
    FolderHandle::Kind kind = FolderHandle::Kind::Missing;
    EXPECT_TRUE(_handle.Query(iName, kind).IsOk());
    return kind;
  }

  VYX::Test::TemporaryFolder _folder;
  FolderHandle _handle;
};

TEST_F(FolderHandleTest, CreatesMovesAndRemoves) {
  FolderHandle sub;
  FileDescriptor file = 0;
  ASSERT_TRUE(_handle.CreateFolder("sub", true).IsOk());
  ASSERT_TRUE(_handle.OpenFolder("sub", sub).IsOk());
  ASSERT_TRUE(sub.CreateFile("f", false, file).IsOk());
  EXPECT_TRUE(VYX::Os::WriteAt(file, 0, "new", 3).IsOk());
  EXPECT_TRUE(VYX::Os::CloseFile(file).IsOk());
  _folder.MakeFile("old", "old");
  EXPECT_TRUE(sub.MoveFile("f", _handle, "old").IsOk());
  EXPECT_EQ(ContentOf(_folder.Native("old")), "new");
  EXPECT_TRUE(_handle.RemoveFolder("sub").IsOk());
  EXPECT_TRUE(_handle.RemoveFile("old").IsOk());
  EXPECT_THAT(_folder.Names(), ElementsAre());
}

TEST_F(FolderHandleTest, FollowsNoLink) {
  _folder.MakeFolder("real");
  _folder.MakeLink("folder_link", _folder.Native("real"));
  _folder.MakeLink("dangling", _folder.Native("real/new"));
  FolderHandle sub;
  FileDescriptor file = 0;
  EXPECT_FALSE(_handle.OpenFolder("folder_link", sub).IsOk());
  EXPECT_FALSE(_handle.CreateFile("dangling", false, file).IsOk());
  EXPECT_FALSE(_handle.CreateFolder("folder_link", false).IsOk());
  EXPECT_EQ(KindOf("folder_link"), FolderHandle::Kind::Other);
  EXPECT_EQ(KindOf("dangling"), FolderHandle::Kind::Other);
  EXPECT_EQ(KindOf("real"), FolderHandle::Kind::Folder);
  EXPECT_EQ(KindOf("none"), FolderHandle::Kind::Missing);
  EXPECT_TRUE(_handle.RemoveFile("folder_link").IsOk());
  EXPECT_THAT(_folder.Names("real"), ElementsAre());
}

TEST_F(FolderHandleTest, AcceptsOnlyItsOwnPrivateFolder) {
  EXPECT_TRUE(VYX::Os::CreatePrivateFolder(_folder.Native("own/")).IsOk());
  EXPECT_TRUE(VYX::Os::CreatePrivateFolder(_folder.Native("own")).IsOk());
  _folder.MakeLink("link", _folder.Native("own"));
  EXPECT_EQ(VYX::Os::CreatePrivateFolder(_folder.Native("link/")).ToErrorNumber(), 183);
  _folder.MakeFolder("open");
  EXPECT_EQ(VYX::Os::CreatePrivateFolder(_folder.Native("open")).ToErrorNumber(), 183);
}

TEST_F(FolderHandleTest, ReadsAndWritesAnywhere) {
  FileDescriptor file = 0;
  ASSERT_TRUE(_handle.CreateFile("f", false, file).IsOk());
  EXPECT_TRUE(VYX::Os::WriteAt(file, 3, "def", 3).IsOk());
  EXPECT_TRUE(VYX::Os::WriteAt(file, 0, "abc", 3).IsOk());
  EXPECT_TRUE(VYX::Os::CloseFile(file).IsOk());
  ASSERT_TRUE(VYX::Os::OpenFile(_folder.Native("f"), VYX::Os::OpenMode::Read, file).IsOk());
  char buffer[8] = {};
  std::size_t read = 0;
  EXPECT_TRUE(VYX::Os::ReadAt(file, 2, buffer, sizeof buffer, read).IsOk());
  EXPECT_EQ(std::string(buffer, read), "cdef");
  EXPECT_TRUE(VYX::Os::ReadAt(file, 100, buffer, sizeof buffer, read).IsOk());
  EXPECT_EQ(read, 0U);
  EXPECT_TRUE(VYX::Os::CloseFile(file).IsOk());
}

}  // namespace
