#include "VYXCompressionFileHelper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <memory>

#include "KORSysBase/KORSysZipFile.h"
#include "VYXInfLog.h"
#include "VYXInfSystemUtil.h"
#include "support/captured_stdout.h"
#include "support/injected_faults.h"
#include "support/settled_clock.h"
#include "support/temporary_folder.h"

namespace {

using ::testing::ElementsAre;
using VYX::Test::CapturedStdout;
using VYX::Test::ConsoleLevel;
using VYX::Test::FailureReturnIn;
using VYX::Test::Line;
using VYX::Test::LogLine;

class VYXCompressionFileHelperTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const CapturedStdout captured;
    VYXInfSystemUtil::GetTempFolderPath();
  }

  void AddFile(const char* iName, const char* iContent) {
    _folder.MakeFile(iName, iContent);
    _files.Append(_folder.Path(iName));
  }

  std::vector<LogLine> ExpectRefused(long iCode) {
    KORUnicodeString path("untouched");
    CapturedStdout captured;
    EXPECT_EQ(_helper->ZipTmpArchive(_files, "a.zip", path), iCode);
    EXPECT_EQ(path, "untouched");
    return captured.LogLines();
  }

  /// Lets the helper die; what it says is the folders that it removes.
  std::vector<LogLine> Destroy() {
    const ConsoleLevel level(TRACE);
    CapturedStdout captured;
    _helper.reset();
    return captured.LogLines();
  }

  std::string FolderOf(const KORUnicodeString& iArchive) const {
    return std::string(iArchive.ToStringView().substr(0, iArchive.ToStringView().rfind('\\') + 1));
  }

  std::unique_ptr<VYXCompressionFileHelper> _helper = std::make_unique<VYXCompressionFileHelper>();
  VYX::Test::TemporaryFolder _folder;
  KORListValKORUnicodeString _files;
  KORUnicodeString _archive;
};

TEST_F(VYXCompressionFileHelperTest, BuildsAFlatArchiveAndRemovesItAtItsEnd) {
  _folder.MakeFolder("deep/er");
  AddFile("a.txt", "first");
  AddFile("deep/er/b.txt", "second");
  ASSERT_EQ(_helper->ZipTmpArchive(_files, "report.zip", _archive), S_OK);
  const KORUnicodeString start = VYXInfSystemUtil::GetTempFolderPath() + "\\TmpArchiveFolder_";
  EXPECT_TRUE(_archive.ToStringView().starts_with(start.ToStringView())) << _archive;
  EXPECT_TRUE(_archive.ToStringView().ends_with("\\report.zip")) << _archive;
  KORListValKORUnicodeString entries;
  ASSERT_EQ(VYXInfSystemUtil::BrowseZipArchive(_archive, entries), S_OK);
  ASSERT_EQ(entries.Size(), 2);
  EXPECT_EQ(entries[1], "a.txt");
  EXPECT_EQ(entries[2], "b.txt");
  QB::Binary content;
  ASSERT_EQ(VYXInfSystemUtil::ReadFileFromZipArchive(_archive, "b.txt", content, false), S_OK);
  EXPECT_EQ(std::string(content.GetData(), content.GetSize()), "second");
  EXPECT_THAT(Destroy(), ElementsAre(Line("TRACE", "Deleting repo: " + FolderOf(_archive))));
  EXPECT_FALSE(VYXInfSystemUtil::DoesFileExist(_archive));
}

TEST_F(VYXCompressionFileHelperTest, AnEmptyListGivesAnEmptyArchive) {
  ASSERT_EQ(_helper->ZipTmpArchive(_files, "none.zip", _archive), S_OK);
  KORListValKORUnicodeString entries;
  EXPECT_EQ(VYXInfSystemUtil::BrowseZipArchive(_archive, entries), S_OK);
  EXPECT_EQ(entries.Size(), 0);
}

TEST_F(VYXCompressionFileHelperTest, TwoArchivesOfOneSecondShareTheirFolder) {
  AddFile("a.txt", "1");
  KORUnicodeString other;
  {
    const VYX::Test::SettledClock clock({1'700'000'000, 0});
    ASSERT_EQ(_helper->ZipTmpArchive(_files, "one.zip", _archive), S_OK);
    ASSERT_EQ(_helper->ZipTmpArchive(_files, "two.zip", other), S_OK);
  }
  EXPECT_TRUE(VYXInfSystemUtil::DoesFileExist(_archive));
  EXPECT_TRUE(VYXInfSystemUtil::DoesFileExist(other));
  EXPECT_THAT(Destroy(), ElementsAre(Line("TRACE", "Deleting repo: " + FolderOf(other))));
}

TEST_F(VYXCompressionFileHelperTest, RefusesTwoFilesOfOneName) {
  _folder.MakeFolder("sub");
  AddFile("a.txt", "1");
  AddFile("sub/a.txt", "2");
  const std::vector<LogLine> lines = ExpectRefused(KORSysZipFile::kDuplicateEntry);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_THAT(lines[0].text,
              ::testing::StartsWith("Cannot store '" + _folder.Native("sub/a.txt") + "' in the archive"));
  EXPECT_THAT(lines[1], FailureReturnIn("VYXCompressionFileHelper"));
  EXPECT_EQ(Destroy().size(), 1U) << "the folder was created, and goes away";
}

TEST_F(VYXCompressionFileHelperTest, TellsWhichFileIsMissing) {
  _files.Append(_folder.Path("none"));
  const std::vector<LogLine> lines = ExpectRefused(VYX::ResultCode(0x80070002U));
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_THAT(lines[0].text, ::testing::StartsWith("Cannot store '" + _folder.Native("none") + "' in the archive"));
  EXPECT_THAT(lines[0].text, ::testing::EndsWith(": No such file or directory"));
  EXPECT_THAT(lines[1], FailureReturnIn("VYXCompressionFileHelper"));
}

TEST_F(VYXCompressionFileHelperTest, PassesTheCodesOfFolderAndArchiveOn) {
  constexpr long kDiskFull = VYX::ResultCode(0x80070070U);
  AddFile("a.txt", "1");
  const VYX::Test::SavedSystemCalls saved;
  VYX::Os::Posix::Calls().WriteAt = [](int, const void*, std::size_t, off_t) -> ssize_t {
    errno = ENOSPC;
    return -1;
  };
  std::vector<LogLine> lines = ExpectRefused(kDiskFull);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_THAT(lines[0].text, ::testing::StartsWith("Cannot write the archive '"));
  EXPECT_THAT(lines[1], FailureReturnIn("VYXCompressionFileHelper"));
  VYX::Os::Posix::Calls().MakeFolder = [](const char*, mode_t) {
    errno = ENOSPC;
    return -1;
  };
  lines = ExpectRefused(kDiskFull);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_THAT(lines[0].text, ::testing::StartsWith("Cannot create the folder '"));
  EXPECT_THAT(lines[1], FailureReturnIn("VYXCompressionFileHelper"));
}

}  // namespace
