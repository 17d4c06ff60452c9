#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>

#include "KORSysBase/KORResult.h"
#include "VYXInfLog.h"
#include "VYXInfSystemUtil.h"
#include "support/captured_stdout.h"
#include "support/injected_faults.h"
#include "support/pending_error.h"
#include "support/temporary_folder.h"
#include "support/unprivileged.h"

namespace VYX::Test {
namespace {

using Util = VYXInfSystemUtil;
using ::testing::ElementsAre;

constexpr long Code(unsigned int iNumber) {
  return VYX::ResultCode(0x80070000U + iNumber);
}

std::string BytesOf(const QB::Binary& iBinary) {
  return {iBinary.GetData(), iBinary.GetSize()};
}

class ReadFile : public ::testing::Test {
 protected:
  TemporaryFolder _folder;
};

TEST_F(ReadFile, GivesEveryByte) {
  std::string content(100'000, '\0');
  std::generate(content.begin(), content.end(), [byte = 0]() mutable { return static_cast<char>(byte++ * 7); });
  _folder.MakeFile("f", content);
  for (const bool isBinary : {true, false}) {
    CapturedStdout captured;
    QB::Binary binary;
    EXPECT_EQ(Util::ReadFile(_folder.Path("f"), binary, isBinary), S_OK);
    EXPECT_EQ(BytesOf(binary), content);
    EXPECT_EQ(captured.Text(), "");
  }
}

TEST_F(ReadFile, TellsTheSizesAtTrace) {
  const ConsoleLevel level(TRACE);
  const std::string path = _folder.MakeFile("f", "abc");
  CapturedStdout captured;
  QB::Binary binary;
  EXPECT_EQ(Util::ReadFile(_folder.Path("f"), binary, true), S_OK);
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("TRACE", "read 3 BYTEs ."),
                                               Line("TRACE", "success reading 3 BYTEs from file:   " + path)));
}

TEST_F(ReadFile, EmptyFileIsAnEmptyBinary) {
  const ConsoleLevel level(TRACE);
  const std::string path = _folder.MakeFile("f", "");
  CapturedStdout captured;
  QB::Binary binary(QB::allocateArrayChar(4), 4, &QB::deallocateArrayChar);
  EXPECT_EQ(Util::ReadFile(_folder.Path("f"), binary, true), S_OK);
  EXPECT_TRUE(binary.IsEmpty());
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("TRACE", "read 0 BYTEs ."),
                                               Line("TRACE", "success reading 0 BYTEs from file:   " + path)));
}

TEST_F(ReadFile, MissingFileIsMinusOneAndALineAtDebug) {
  const ConsoleLevel level(DEBUG);
  CapturedStdout captured;
  QB::Binary binary;
  EXPECT_EQ(Util::ReadFile(_folder.Path("none"), binary, true), -1);
  EXPECT_EQ(Util::ReadFile("C:\\none", binary, true), -1);
  EXPECT_EQ(Util::ReadFile("", binary, true), -1);
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("DEBUG", "File does not exist, cannot read: " + _folder.Native("none")),
                          Line("DEBUG", "File does not exist, cannot read: C:\\none"),
                          Line("DEBUG", "File does not exist, cannot read: ")));
  EXPECT_EQ(TakePendingError(E_FAIL), "(none)");
}

TEST_F(ReadFile, FolderCannotBeOpened) {
  CapturedStdout captured;
  QB::Binary binary;
  EXPECT_EQ(Util::ReadFile(_folder.Path(), binary, true), Code(5));
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("ERROR", "Error opening the file:     " + _folder.Native())));
  EXPECT_EQ(TakePendingError(Code(5)), "Cannot open '" + _folder.Native() + "' for reading: Is a directory");
}

TEST_F(ReadFile, UnreadableFileGivesThePlatformsCode) {
  ASSERT_EQ(::chmod(_folder.Native().c_str(), 0755), 0);
  ASSERT_EQ(::chmod(_folder.MakeFile("f", "x").c_str(), 0), 0);
  CapturedStdout captured;
  EXPECT_TRUE(HoldsForOrdinaryUser([this] {
    QB::Binary binary;
    return Util::ReadFile(_folder.Path("f"), binary, true) == Code(5);
  }));
  EXPECT_EQ(captured.LogLines(),
            (std::vector<LogLine>{{"ERROR", "Error opening the file:     " + _folder.Native("f")}}));
}

TEST_F(ReadFile, PipesDevicesAndHugeFilesAreRefused) {
  ASSERT_EQ(::mkfifo(_folder.Native("pipe").c_str(), 0600), 0);
  _folder.MakeFile("huge", "");
  const bool isHuge = ::truncate(_folder.Native("huge").c_str(), off_t{5} << 30) == 0;
  for (const std::string& path : {_folder.Native("pipe"), std::string("/dev/zero"), _folder.Native("huge")}) {
    if (path == _folder.Native("huge") && !isHuge) {
      continue;
    }
    CapturedStdout captured;
    QB::Binary binary;
    EXPECT_EQ(Util::ReadFile(KORUnicodeString(std::string_view(path)), binary, true), E_FAIL) << path;
    EXPECT_THAT(captured.LogLines(), ElementsAre(Line("ERROR", "Error reading the file:     " + path)));
  }
}

TEST_F(ReadFile, FileThatShrinksYieldsWhatWasRead) {
  _folder.MakeFile("f", "0123456789");
  const SavedSystemCalls saved;
  static std::string path;
  path = _folder.Native("f");
  static const Os::Posix::SystemCalls real = Os::Posix::Calls();
  Os::Posix::Calls().Read = [](int iFile, void* oBuffer, std::size_t iSize) -> ssize_t {
    return ::truncate(path.c_str(), 4) == 0 ? real.Read(iFile, oBuffer, iSize) : -1;
  };
  QB::Binary binary;
  EXPECT_EQ(Util::ReadFile(_folder.Path("f"), binary, true), S_OK);
  EXPECT_EQ(BytesOf(binary), "0123");
}

TEST_F(ReadFile, FileThatGrowsYieldsItsFormerSize) {
  _folder.MakeFile("f", "0123");
  const SavedSystemCalls saved;
  static TemporaryFolder* folder;
  folder = &_folder;
  static const Os::Posix::SystemCalls real = Os::Posix::Calls();
  Os::Posix::Calls().Read = [](int iFile, void* oBuffer, std::size_t iSize) -> ssize_t {
    folder->MakeFile("f", "0123456789");
    return real.Read(iFile, oBuffer, iSize);
  };
  QB::Binary binary;
  EXPECT_EQ(Util::ReadFile(_folder.Path("f"), binary, true), S_OK);
  EXPECT_EQ(BytesOf(binary), "0123");
}

TEST_F(ReadFile, FileThatIsEmptiedCannotBeRead) {
  _folder.MakeFile("f", "0123");
  const SavedSystemCalls saved;
  Os::Posix::Calls().Read = [](int, void*, std::size_t) -> ssize_t { return 0; };
  CapturedStdout captured;
  QB::Binary binary;
  EXPECT_EQ(Util::ReadFile(_folder.Path("f"), binary, true), E_FAIL);
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("ERROR", "Error reading the file:     " + _folder.Native("f"))));
}

TEST_F(ReadFile, TextIsUtf8) {
  const ConsoleLevel level(TRACE);
  const std::string path = _folder.MakeFile("f", "\xc3\xa4\xe2\x82\xac!");
  CapturedStdout captured;
  KORUnicodeString text;
  EXPECT_EQ(Util::ReadFile(_folder.Path("f"), text), S_OK);
  EXPECT_EQ(text, "\xc3\xa4\xe2\x82\xac!");
  EXPECT_THAT(
      captured.LogLines(),
      ElementsAre(Line("TRACE", "read 6 BYTEs ."), Line("TRACE", "success reading 6 BYTEs from file:   " + path),
                  Line("TRACE", "Read a UTF8 string of 3 chars   (6 BYTEs) from file:   " + path)));
}

TEST_F(ReadFile, FailedReadLeavesTheTextEmpty) {
  const ConsoleLevel level(TRACE);
  CapturedStdout captured;
  KORUnicodeString text("former");
  EXPECT_EQ(Util::ReadFile(_folder.Path("none"), text), -1);
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_THAT(
      captured.LogLines(),
      ElementsAre(Line("DEBUG", "File does not exist, cannot read: " + _folder.Native("none")),
                  Line("TRACE", "Read a UTF8 string of 0 chars   (0 BYTEs) from file:   " + _folder.Native("none"))));
}

TEST_F(ReadFile, BytesThatAreNoTextAreAnEmptyOne) {
  const ConsoleLevel level(DEBUG);
  const std::string path = _folder.MakeFile("f", "ab\xff");
  CapturedStdout captured;
  KORUnicodeString text("former");
  EXPECT_EQ(Util::ReadFile(_folder.Path("f"), text), S_OK);
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("DEBUG", "Not a UTF8 text, read as an empty one:     " + path)));
}

TEST_F(ReadFile, EveryFailingCallIsReportedAndLeaksNothing) {
  _folder.MakeFile("f", "content");
  const int descriptors = CountOpenDescriptors();
  int total = 0;
  for (int k = 0; k <= total; ++k) {  // 0 counts the calls
    CapturedStdout captured;
    QB::Binary binary;
    long code = 0;
    {
      const InjectedFaults faults(k, EIO, true);
      code = Util::ReadFile(_folder.Path("f"), binary, true);
      total = k == 0 ? faults.Count() : total;
    }
    const bool isLast = k == 0 || k == total;  // a file that was read is so whatever its close says
    EXPECT_EQ(code, isLast ? S_OK : code) << "call " << k;
    EXPECT_EQ(code >= 0, isLast) << "call " << k;
    EXPECT_EQ(BytesOf(binary), isLast ? "content" : "") << "call " << k;
    EXPECT_EQ(captured.LogLines().size(), isLast ? 0U : 1U) << "call " << k;
  }
  EXPECT_GE(total, 4);
  EXPECT_EQ(CountOpenDescriptors(), descriptors);
}

class FileQueries : public ReadFile {};

TEST_F(FileQueries, SizeIsThatOfTheFile) {
  _folder.MakeFile("f", "abc");
  unsigned int size = 77;
  EXPECT_EQ(Util::GetFileSize(_folder.Path("f"), size), S_OK);
  EXPECT_EQ(size, 3U);
}

TEST_F(FileQueries, SizeFailureIsTraced) {
  CapturedStdout captured;
  unsigned int size = 77;
  EXPECT_EQ(Util::GetFileSize(_folder.Path("none"), size), Code(2));
  EXPECT_EQ(size, 77U);
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("ERROR", "Cannot open '" + _folder.Native("none") +
                                                                 "' for reading: No such file or directory"),
                                               FailureReturnIn("VYXInfSystemUtil")));
}

TEST_F(FileQueries, EveryFailingCallOfSizeIsReportedAndLeaksNothing) {
  _folder.MakeFile("f", "abc");
  const int descriptors = CountOpenDescriptors();
  int total = 0;
  for (int k = 0; k <= total; ++k) {
    CapturedStdout captured;
    unsigned int size = 77;
    long code = 0;
    {
      const InjectedFaults faults(k, EIO, true);
      code = Util::GetFileSize(_folder.Path("f"), size);
      total = k == 0 ? faults.Count() : total;
    }
    EXPECT_EQ(code, k == 0 ? S_OK : Code(1117)) << "call " << k;
    EXPECT_EQ(size, k == 0 ? 3U : 77U) << "call " << k;
    EXPECT_EQ(captured.LogLines().size(), k == 0 ? 0U : 2U) << "call " << k;
  }
  EXPECT_EQ(CountOpenDescriptors(), descriptors);
}

TEST_F(FileQueries, LastWriteIsInWholeSeconds) {
  struct Row {
    timespec written;
    std::int64_t seconds;
  };
  const Row kRows[] = {{{1'000'000'000, 999'999'999}, 1'000'000'000}, {{0, 0}, 0}, {{-1, 500'000'000}, -1}};
  _folder.MakeFile("f", "x");
  _folder.MakeLink("l", "f");
  for (const Row& row : kRows) {
    const timespec times[] = {row.written, row.written};
    ASSERT_EQ(::utimensat(AT_FDCWD, _folder.Native("f").c_str(), times, 0), 0);
    std::int64_t seconds = 77;
    EXPECT_EQ(Util::GetFileLastWriteTimeInSecondsSinceUnixEpoch(_folder.Path("l"), seconds), S_OK);
    EXPECT_EQ(seconds, row.seconds);
  }
}

TEST_F(FileQueries, LastWriteFailureGivesTheHostsText) {
  CapturedStdout captured;
  std::int64_t seconds = 77;
  EXPECT_EQ(Util::GetFileLastWriteTimeInSecondsSinceUnixEpoch(_folder.Path("none"), seconds), E_FAIL);
  EXPECT_EQ(seconds, 77);
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(FailureReturnIn("VYXInfSystemUtil"), Detail("No such file or directory")));
}

TEST_F(FileQueries, ExistenceIsASilentQuestion) {
  CapturedStdout captured;
  _folder.MakeFile("f", "x");
  _folder.MakeLink("dangling", "nowhere");
  EXPECT_TRUE(Util::DoesFileExist(_folder.Path("f")));
  EXPECT_TRUE(Util::DoesFileExist(_folder.Path()));
  EXPECT_FALSE(Util::DoesFileExist(_folder.Path("dangling")));
  EXPECT_FALSE(Util::DoesFileExist(""));
  EXPECT_FALSE(Util::DoesFileExist("C:\\Windows"));
  EXPECT_EQ(captured.Text(), "");
  EXPECT_EQ(TakePendingError(E_FAIL), "(none)");
}

TEST_F(FileQueries, DeletingAnswersThePlatformsCode) {
  CapturedStdout captured;
  _folder.MakeFile("f", "x");
  EXPECT_EQ(Util::DeleteFile(_folder.Path("f")), S_OK);
  EXPECT_EQ(Util::DeleteFile(_folder.Path("f")), Code(2));
  EXPECT_EQ(captured.Text(), "");
}

}  // namespace
}  // namespace VYX::Test
