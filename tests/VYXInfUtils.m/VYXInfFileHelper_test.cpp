#include "VYXInfFileHelper.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>

#include "KORSysBase/KORPath.h"
#include "KORSysBase/KORResult.h"
#include "VYXInfLog.h"
#include "VYXInfSystemUtil.h"
#include "support/captured_stdout.h"
#include "support/injected_faults.h"
#include "support/settled_clock.h"
#include "support/temporary_folder.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using VYX::Test::CapturedStdout;
using VYX::Test::ConsoleLevel;
using VYX::Test::FailureLogIn;
using VYX::Test::FailureReturnIn;
using VYX::Test::Line;
using VYX::Test::LogLine;

constexpr long kAnything = 1'700'000'000;

std::string Native(const KORUnicodeString& iPath) {
  KORUnicodeString native;
  EXPECT_EQ(KORNativePath(iPath, native), 0);
  std::string path = native.ConvertToChar();
  path.resize(path.find_last_not_of('/') + 1);
  return path;
}

class VYXInfFileHelperTest : public ::testing::Test {
 protected:
  void SetUp() override {
    // The folder is found, and said to be, before anything is counted.
    const CapturedStdout captured;
    VYXInfSystemUtil::GetTempFolderPath();
  }

  /// Lets the helper die, and answers what it says.
  std::vector<LogLine> Destroy() {
    const ConsoleLevel level(TRACE);
    CapturedStdout captured;
    _helper.reset();
    return captured.LogLines();
  }

  /// The lines of a creation that has to fail.
  std::vector<LogLine> ExpectRefused(const char* iName) {
    KORUnicodeString path("untouched");
    CapturedStdout captured;
    EXPECT_EQ(_helper->CreateTmpDir(iName, path), E_FAIL);
    EXPECT_EQ(path, "untouched");
    return captured.LogLines();
  }

  std::unique_ptr<VYXInfFileHelper> _helper = std::make_unique<VYXInfFileHelper>();
  VYX::Test::TemporaryFolder _outside;
  KORUnicodeString _path;
};

TEST_F(VYXInfFileHelperTest, CreatesAPrivateFolderAndRemovesItAtItsEnd) {
  ASSERT_EQ(_helper->CreateTmpDir("Work", _path), S_OK);
  const KORUnicodeString start = VYXInfSystemUtil::GetTempFolderPath() + "\\Work_";
  EXPECT_TRUE(_path.ToStringView().starts_with(start.ToStringView())) << _path;
  EXPECT_TRUE(_path.ToStringView().ends_with("\\"));
  struct stat info {};
  ASSERT_EQ(::stat(Native(_path).c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777U, 0700U);
  EXPECT_THAT(Destroy(), ElementsAre(Line("TRACE", "Deleting folder: " + _path.ConvertToChar())));
  EXPECT_FALSE(std::filesystem::exists(Native(_path)));
}

TEST_F(VYXInfFileHelperTest, TwoFoldersOfOneSecondAreOne) {
  KORUnicodeString again;
  {
    const VYX::Test::SettledClock clock({kAnything, 0});
    ASSERT_EQ(_helper->CreateTmpDir("Twice", _path), S_OK);
    ASSERT_EQ(_helper->CreateTmpDir("Twice", again), S_OK);
  }
  EXPECT_EQ(_path, again);
  EXPECT_THAT(Destroy(), ElementsAre(Line("TRACE", "Deleting folder: " + _path.ConvertToChar())));
}

TEST_F(VYXInfFileHelperTest, RefusesAFolderThatSomebodyElseHasPutThere) {
  const VYX::Test::SettledClock clock({kAnything, 0});
  const KORUnicodeString taken = VYXInfSystemUtil::CreateUniquePath("Taken", VYXInfSystemUtil::GetTempFolderPath());
  const std::string native = Native(taken);
  ASSERT_EQ(::mkdir(native.c_str(), 0755), 0);
  ASSERT_EQ(::chmod(native.c_str(), 0755), 0);
  EXPECT_THAT(ExpectRefused("Taken"),
              ElementsAre(Line("ERROR", "Cannot create the folder '" + taken.ConvertToChar() + "': File exists"),
                          FailureReturnIn("VYXInfFileHelper")));
  ASSERT_EQ(::rmdir(native.c_str()), 0);
  ASSERT_EQ(::symlink(_outside.Native().c_str(), native.c_str()), 0);
  EXPECT_EQ(ExpectRefused("Taken").size(), 2U) << "a link";
  ASSERT_EQ(::unlink(native.c_str()), 0);
  EXPECT_THAT(Destroy(), IsEmpty()) << "what was not created is not owned";
}

TEST_F(VYXInfFileHelperTest, TellsThatTheDiskIsFull) {
  const VYX::Test::SavedSystemCalls saved;
  VYX::Os::Posix::Calls().MakeFolder = [](const char*, mode_t) {
    errno = ENOSPC;
    return -1;
  };
  const std::vector<LogLine> lines = ExpectRefused("Full");
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_THAT(lines[0].text, ::testing::EndsWith("No space left on device"));
}

TEST_F(VYXInfFileHelperTest, RemovesReadOnlyContentAndLinksButNotWhatTheyLeadTo) {
  _outside.MakeFile("kept", "1");
  ASSERT_EQ(_helper->CreateTmpDir("Full", _path), S_OK);
  const std::filesystem::path folder = Native(_path);
  std::filesystem::create_directories(folder / "a/b");
  std::filesystem::create_directory_symlink(_outside.Native(), folder / "a/link");
  ASSERT_EQ(::close(::open((folder / "a/b/file").c_str(), O_CREAT | O_WRONLY, 0400)), 0);
  EXPECT_EQ(Destroy().size(), 1U);
  EXPECT_FALSE(std::filesystem::exists(folder));
  EXPECT_THAT(_outside.Names(), ElementsAre("kept"));
}

// Puts a link in the place of a sub-folder just when the removal is about to enter it.
std::string gSubFolder;
std::string gOutside;

TEST_F(VYXInfFileHelperTest, FollowsNoLinkThatIsPutInAFoldersPlaceMeanwhile) {
  _outside.MakeFile("kept", "1");
  ASSERT_EQ(_helper->CreateTmpDir("Swapped", _path), S_OK);
  gSubFolder = Native(_path) + "/sub";
  gOutside = _outside.Native();
  std::filesystem::create_directory(gSubFolder);
  {
    const VYX::Test::SavedSystemCalls saved;
    VYX::Os::Posix::Calls().OpenAt = [](int iFolder, const char* iPath, int iFlags) {
      if (std::strcmp(iPath, "sub") == 0) {
        std::filesystem::rename(gSubFolder, gOutside + "/moved");
        std::filesystem::create_directory_symlink(gOutside, gSubFolder);
      }
      return ::openat(iFolder, iPath, iFlags);
    };
    const std::vector<LogLine> lines = Destroy();
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_THAT(lines[2], FailureLogIn("VYXInfFileHelper"));
  }
  EXPECT_THAT(_outside.Names(), ElementsAre("kept", "moved"));
  std::filesystem::remove_all(Native(_path));
}

TEST_F(VYXInfFileHelperTest, SkipsFoldersThatAreGoneAndGoesOnAfterAFailure) {
  _outside.MakeFile("kept", "1");
  KORUnicodeString link;
  KORUnicodeString last;
  ASSERT_EQ(_helper->CreateTmpDir("Gone", _path), S_OK);
  ASSERT_EQ(_helper->CreateTmpDir("Link", link), S_OK);
  ASSERT_EQ(_helper->CreateTmpDir("Last", last), S_OK);
  ASSERT_EQ(::rmdir(Native(_path).c_str()), 0);
  ASSERT_EQ(::rmdir(Native(link).c_str()), 0);
  ASSERT_EQ(::symlink(_outside.Native().c_str(), Native(link).c_str()), 0);
  const std::vector<LogLine> lines = Destroy();
  ASSERT_EQ(lines.size(), 4U);
  EXPECT_THAT(lines[0], Line("TRACE", "Deleting folder: " + link.ConvertToChar()));
  EXPECT_EQ(lines[1].level, "ERROR");
  EXPECT_THAT(lines[2], FailureLogIn("VYXInfFileHelper"));
  EXPECT_THAT(lines[3], Line("TRACE", "Deleting folder: " + last.ConvertToChar()));
  EXPECT_THAT(_outside.Names(), ElementsAre("kept"));
  EXPECT_FALSE(std::filesystem::exists(Native(last)));
  EXPECT_EQ(::unlink(Native(link).c_str()), 0);
}

TEST_F(VYXInfFileHelperTest, AForkedChildLeavesTheParentsFoldersAlone) {
  ASSERT_EQ(_helper->CreateTmpDir("Forked", _path), S_OK);
  const pid_t child = ::fork();
  if (child == 0) {
    _helper.reset();
    ::_exit(std::filesystem::exists(Native(_path)) ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_TRUE(std::filesystem::exists(Native(_path)));
}

}  // namespace
