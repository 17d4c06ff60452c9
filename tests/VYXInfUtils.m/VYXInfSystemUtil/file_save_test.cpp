#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

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

// A buffer that borrows the bytes of a text.
QB::Binary Borrow(const std::string& iBytes) {
  return {const_cast<char*>(iBytes.data()), iBytes.size(), nullptr};
}

class SaveToFile : public ::testing::TestWithParam<int> {
 protected:
  std::string Content() const { return ContentOf(_folder.Native("f")); }

  TemporaryFolder _folder;
};

// Whatever the way to the disk, in place or atomic, the result is the same.
INSTANTIATE_TEST_SUITE_P(InPlace, SaveToFile, ::testing::Values(0));
INSTANTIATE_TEST_SUITE_P(Atomic, SaveToFile, ::testing::Values(Util::ATOMIC));

TEST_P(SaveToFile, AppendsUnlessToldOtherwise) {
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), "abc", GetParam()), S_OK);
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), "abc", GetParam()), S_OK);
  EXPECT_EQ(Content(), "abcabc");
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), "abc", GetParam() | Util::OVERWRITE), S_OK);
  EXPECT_EQ(Content(), "abc");
  EXPECT_EQ(_folder.Names(), std::vector<std::string>{"f"});
}

TEST_P(SaveToFile, BothFormsWriteEveryByte) {
  const std::string bytes("a\0\xff\r\n\0", 6);
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), Borrow(bytes), GetParam() | Util::OVERWRITE, true), S_OK);
  EXPECT_EQ(Content(), bytes);
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), Borrow(bytes), GetParam() | Util::OVERWRITE, false), S_OK);
  EXPECT_EQ(Content(), bytes.substr(0, 5)) << "a zero byte at the end of a text is left out";
}

TEST_P(SaveToFile, EmptyTextIsOneZeroByte) {
  const ConsoleLevel level(ERROR);
  const std::string zero(1, '\0');
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), "", GetParam() | Util::OVERWRITE), S_OK);
  EXPECT_EQ(Content(), zero);
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), Borrow(zero), GetParam() | Util::OVERWRITE, false), S_OK);
  EXPECT_EQ(Content(), zero);
}

TEST_P(SaveToFile, EmptyBinaryLeavesAnEmptyFile) {
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), QB::Binary(), GetParam(), true), S_OK);
  EXPECT_EQ(Content(), "");
  _folder.MakeFile("f", "old");
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), QB::Binary(), GetParam(), true), S_OK);
  EXPECT_EQ(Content(), "old");
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), QB::Binary(), GetParam() | Util::OVERWRITE, true), S_OK);
  EXPECT_EQ(Content(), "");
}

TEST_P(SaveToFile, ArgumentErrorsTouchNothing) {
  const ConsoleLevel level(TRACE);
  CapturedStdout captured;
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), "x", GetParam() | 6), E_INVALIDARG);
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), "x", GetParam() | 7), E_INVALIDARG);
  EXPECT_EQ(Util::SaveToFile("", "x", GetParam() | 6), E_INVALIDARG);
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("DEBUG", "Argument error: iSaveFlag contains both ONLY_EXISTENT and ONLY_NEW. "),
                          Line("DEBUG", "Argument error: iSaveFlag contains both ONLY_EXISTENT and ONLY_NEW. "),
                          Line("DEBUG", "Argument error: iFilePath is null. ")));
  EXPECT_TRUE(_folder.Names().empty());
}

TEST_P(SaveToFile, OnlyNewRefusesAFileThatExists) {
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), "new", GetParam() | Util::ONLY_NEW), S_OK);
  const ConsoleLevel level(DEBUG);
  CapturedStdout captured;
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), "x", GetParam() | Util::ONLY_NEW | Util::OVERWRITE), E_FAIL);
  EXPECT_THAT(
      captured.LogLines(),
      ElementsAre(Line("DEBUG", "File does already exist and this is not acceptable:      " + _folder.Native("f"))));
  EXPECT_EQ(Content(), "new");
}

TEST_P(SaveToFile, OnlyExistentRefusesAMissingFile) {
  const ConsoleLevel level(DEBUG);
  CapturedStdout captured;
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), "x", GetParam() | Util::ONLY_EXISTENT), E_FAIL);
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("DEBUG", "File does not exist and this is not acceptable:\t\t\t" +
                                                                 _folder.Native("f"))));
  EXPECT_TRUE(_folder.Names().empty());
  _folder.MakeFile("f", "old");
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), "x", GetParam() | Util::ONLY_EXISTENT), S_OK);
  EXPECT_EQ(Content(), "oldx");
}

TEST_P(SaveToFile, TellsStateAndSuccessAtTrace) {
  const ConsoleLevel level(TRACE);
  const std::string path = _folder.Native("f");
  CapturedStdout captured;
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), "abc", GetParam()), S_OK);
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), Borrow(std::string("de\0", 3)), GetParam(), false), S_OK);
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), Borrow(std::string()), GetParam(), false), S_OK);
  EXPECT_THAT(
      captured.LogLines(),
      ElementsAre(Line("TRACE", "Initial state of output file:  does [NOT EXIST]  & is [NOT WRITABLE] :     " + path),
                  Line("TRACE", "success writing to file 3 BYTEs to file:     " + path),
                  Line("TRACE", "Initial state of output file:  does [EXIST]  & is [WRITABLE] :     " + path),
                  Line("TRACE", "success writing to file 3 BYTEs to file:     " + path),
                  Line("TRACE", "Initial state of output file:  does [EXIST]  & is [WRITABLE] :     " + path)));
}

TEST_P(SaveToFile, EmptyTextWarns) {
  CapturedStdout captured;
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), KORUnicodeString(), GetParam()), S_OK);
  EXPECT_THAT(captured.Text(), ::testing::HasSubstr("ConvertToUTF8 returned ZERO bytes. Original string is: \n"));
}

TEST_P(SaveToFile, FileThatCannotBeOpenedGivesThePlatformsCode) {
  struct Row {
    KORUnicodeString path;
    long code;
  };
  const Row kRows[] = {{_folder.Path("no/f"), Code(2)}, {_folder.Path(), Code(5)}, {"C:\\f", Code(3)}};
  for (const Row& row : kRows) {
    CapturedStdout captured;
    EXPECT_EQ(Util::SaveToFile(row.path, "x", GetParam()), row.code);
    EXPECT_THAT(captured.LogLines(),
                ElementsAre(Line("ERROR", "Error opening the file:     " + std::string(row.path.ToStringView()))));
    EXPECT_NE(TakePendingError(row.code), "(none)");
  }
  EXPECT_TRUE(_folder.Names().empty());
}

TEST_P(SaveToFile, ReadOnlyFileIsRefusedAndIntact) {
  ASSERT_EQ(::chmod(_folder.Native().c_str(), 0777), 0);
  ASSERT_EQ(::chmod(_folder.MakeFile("f", "old").c_str(), 0444), 0);
  CapturedStdout captured;
  EXPECT_TRUE(
      HoldsForOrdinaryUser([this] { return Util::SaveToFile(_folder.Path("f"), "x", GetParam() | 1) == Code(5); }));
  EXPECT_EQ(captured.LogLines(),
            (std::vector<LogLine>{{"ERROR", "Error opening the file:     " + _folder.Native("f")}}));
  EXPECT_EQ(Content(), "old");
  EXPECT_EQ(_folder.Names(), std::vector<std::string>{"f"});
}

TEST_P(SaveToFile, BinaryWithoutDataButWithASizeIsTraced) {
  CapturedStdout captured;
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), QB::Binary(nullptr, 5, nullptr), GetParam(), true), E_FAIL);
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn("VYXInfSystemUtil")));
}

TEST_P(SaveToFile, ShortAndInterruptedWritesAreCompleted) {
  const std::string content(10'000, 'x');
  _folder.MakeFile("f", content);
  {
    const ShortTransfers transfers(37);
    EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), Borrow(content), GetParam(), true), S_OK);
  }
  EXPECT_EQ(Content(), content + content);
}

TEST(SaveInPlace, FullDiskIsReported) {
  CapturedStdout captured;
  EXPECT_EQ(Util::SaveToFile("/dev/full", "abc", 0), E_FAIL);
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("ERROR", "Error writing 3 BYTEs to file:     /dev/full")));
  EXPECT_EQ(Util::SaveToFile("/dev/full", Borrow(std::string(1, '\0')), 0, false), Code(112));
}

TEST(SaveInPlace, EveryFailingCallIsReportedAndLeaksNothing) {
  const TemporaryFolder folder;
  const int descriptors = CountOpenDescriptors();
  int total = 0;
  for (int k = 0; k <= total; ++k) {
    CapturedStdout captured;
    long code = 0;
    {
      const InjectedFaults faults(k, ENOSPC, true);
      code = Util::SaveToFile(folder.Path("f"), "content", Util::OVERWRITE);
      total = k == 0 ? faults.Count() : total;
    }
    EXPECT_EQ(code >= 0, k == 0) << "call " << k;
    EXPECT_EQ(captured.LogLines().size(), k == 0 ? 0U : 1U) << "call " << k;
  }
  EXPECT_GE(total, 4);
  EXPECT_EQ(CountOpenDescriptors(), descriptors);
}

class AtomicSave : public ::testing::Test {
 protected:
  std::string Content() const { return ContentOf(_folder.Native("f")); }

  TemporaryFolder _folder;
};

TEST_F(AtomicSave, EveryFailingCallLeavesTheOldFileOrTheNewOne) {
  const int descriptors = CountOpenDescriptors();
  for (const int flags : {Util::OVERWRITE, 0, Util::OVERWRITE | Util::ONLY_EXISTENT}) {
    int total = 0;
    for (int k = 0; k <= total; ++k) {
      SCOPED_TRACE("flags " + std::to_string(flags) + ", call " + std::to_string(k));
      _folder.MakeFile("f", "old content");
      long code = 0;
      {
        CapturedStdout captured;
        const InjectedFaults faults(k, ENOSPC, true);
        code = Util::SaveToFile(_folder.Path("f"), "new", flags | Util::ATOMIC);
        total = k == 0 ? faults.Count() : total;
      }
      const std::string expected = (flags & Util::OVERWRITE) != 0 ? "new" : "old contentnew";
      EXPECT_TRUE(Content() == "old content" || Content() == expected) << Content();
      EXPECT_TRUE(code < 0 || Content() == expected) << "a save that did not happen is reported";
      EXPECT_EQ(_folder.Names(), std::vector<std::string>{"f"}) << "nothing is left beside the file";
    }
    EXPECT_GE(total, 10);
  }
  EXPECT_EQ(CountOpenDescriptors(), descriptors);
}

TEST_F(AtomicSave, HostThatFailsFromSomeCallOnLeavesTheOldFileOrTheNewOne) {
  int total = 0;
  for (int k = 0; k <= total; ++k) {
    _folder.MakeFile("f", "old content");
    {
      CapturedStdout captured;
      const InjectedFaults faults(k, EIO, false);
      Util::SaveToFile(_folder.Path("f"), "new", Util::OVERWRITE | Util::ATOMIC);
      total = k == 0 ? faults.Count() : total;
    }
    EXPECT_TRUE(Content() == "old content" || Content() == "new") << "call " << k << ": " << Content();
  }
}

TEST_F(AtomicSave, NewFileThatFailsIsNotThere) {
  int total = 0;
  for (int k = 0; k <= total; ++k) {
    ::unlink(_folder.Native("f").c_str());
    long code = 0;
    {
      CapturedStdout captured;
      const InjectedFaults faults(k, ENOSPC, true);
      code = Util::SaveToFile(_folder.Path("f"), "new", Util::ONLY_NEW | Util::ATOMIC);
      total = k == 0 ? faults.Count() : total;
    }
    const std::string content = Content();
    EXPECT_TRUE(content == "<unreadable>" || content == "new") << "call " << k << ": " << content;
    EXPECT_TRUE(code < 0 || content == "new") << "call " << k;
    EXPECT_EQ(_folder.Names().size(), content == "new" ? 1U : 0U) << "call " << k;
  }
}

TEST_F(AtomicSave, KeepsThePermissions) {
  ASSERT_EQ(::chmod(_folder.MakeFile("f", "old").c_str(), 0751), 0);
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), "new", Util::OVERWRITE | Util::ATOMIC), S_OK);
  struct stat info {};
  ASSERT_EQ(::stat(_folder.Native("f").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777U, 0751U);
  EXPECT_EQ(Content(), "new");
}

TEST_F(AtomicSave, ReplacesTheFileBehindALink) {
  _folder.MakeFolder("d");
  _folder.MakeFile("d/real", "old");
  _folder.MakeLink("f", "d/real");
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), "new", Util::OVERWRITE | Util::ATOMIC), S_OK);
  struct stat info {};
  ASSERT_EQ(::lstat(_folder.Native("f").c_str(), &info), 0);
  EXPECT_TRUE(S_ISLNK(info.st_mode));
  EXPECT_EQ(ContentOf(_folder.Native("d/real")), "new");
  EXPECT_EQ(_folder.Names("d"), std::vector<std::string>{"real"});
}

TEST_F(AtomicSave, RefusesWhatIsNoRegularFile) {
  CapturedStdout captured;
  EXPECT_EQ(Util::SaveToFile("/dev/null", "x", Util::ATOMIC), Code(5));
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("ERROR", "Error opening the file:     /dev/null")));
  EXPECT_EQ(TakePendingError(Code(5)), "Cannot save '/dev/null': Permission denied");
}

TEST_F(AtomicSave, WorksOnABareName) {
  const TemporaryFolder folder;
  char former[4096];
  ASSERT_NE(::getcwd(former, sizeof former), nullptr);
  ASSERT_EQ(::chdir(folder.Native().c_str()), 0);
  EXPECT_EQ(Util::SaveToFile("bare", "new", Util::ATOMIC), S_OK);
  ASSERT_EQ(::chdir(former), 0);
  EXPECT_EQ(ContentOf(folder.Native("bare")), "new");
}

TEST_F(AtomicSave, LargeContentIsAppendedWhole) {
  const std::string large(300'000, 'a');
  _folder.MakeFile("f", large);
  EXPECT_EQ(Util::SaveToFile(_folder.Path("f"), Borrow(large), Util::ATOMIC, true), S_OK);
  EXPECT_EQ(Content(), large + large);
}

}  // namespace
}  // namespace VYX::Test
