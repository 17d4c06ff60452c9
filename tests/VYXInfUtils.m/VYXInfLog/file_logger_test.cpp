#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "VYXInfLog.h"
#include "VYXInfLog/logger_access.h"
#include "internal/FailureTrace.h"
#include "support/captured_stdout.h"
#include "support/child_process.h"
#include "support/temporary_folder.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using VYX::Test::CapturedStdout;
using VYX::Test::ContentOf;
using VYX::Test::FailureReturnIn;
using VYX::Test::Line;

class FileLogger : public testing::Test {
 protected:
  void SetUp() override { Close(); }
  void TearDown() override { Close(); }
  static void Close() {
    CapturedStdout swallowed;
    VYXInfLog::Close();
  }
  VYX::Test::TemporaryFolder _folder;
};

TEST_F(FileLogger, WithoutDefaultLoggerIsATracedFailure) {
  CapturedStdout captured;
  EXPECT_EQ(VYXInfLog::CreateFileLogger(_folder.Path("a.log"), INFO), nullptr);
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn("VYXInfLog")));
}

TEST_F(FileLogger, WithoutBackEndIsATracedFailureAfterTheReport) {
  CapturedStdout captured;
  VYXInfLog::GetDefaultLogger();
  EXPECT_EQ(VYXInfLog::CreateFileLogger("a.log", static_cast<VYXInfLogLevel>(7)), nullptr);
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("INFO", "VYXInfLog::CreateFileLogger (Level=TRACE, FileName=<a.log>"),
                          FailureReturnIn("VYXInfLog")));
}

TEST_F(FileLogger, WithoutNameIsATracedFailureAfterTheReport) {
  std::string output;
  {
    CapturedStdout captured;
    VYXInfLog::Init(INFO, "", "");
    EXPECT_EQ(VYXInfLog::CreateFileLogger("", WARN), nullptr);
    output = captured.Text();
  }
  EXPECT_THAT(output, HasSubstr("[INFO] VYXInfLog::CreateFileLogger (Level=WARN, FileName=<>\n"));
  EXPECT_THAT(output, HasSubstr("[ERROR] FAILURE RETURN (VYXInfrastructure/VYXInfUtils.m/src/VYXInfLog/"));
}

TEST_F(FileLogger, WritesItsLevelsWhileItsSinkIsReferenced) {
  CapturedStdout captured;
  VYXInfLog::Init(WARN, "", "");
  EXPECT_TRUE(VYX::Internal::IsFiltered(DEBUG));
  auto sink = VYXInfLog::CreateFileLogger(_folder.Path("debug.log"), DEBUG);
  auto errors = VYXInfLog::CreateFileLogger(_folder.Path("new folder\\errors.log"), ERROR);
  ASSERT_NE(sink, nullptr);
  ASSERT_NE(errors, nullptr);
  const auto logger = VYXInfLog::GetDefaultLogger();
  EXPECT_FALSE(VYX::Internal::IsFiltered(DEBUG)) << "the added file takes it";
  EXPECT_FALSE(logger->IsFiltered(DEBUG));
  EXPECT_TRUE(logger->IsFiltered(TRACE));
  logger->Log(DEBUG, "debug");
  logger->Log(ERROR, "error");
  sink.reset();
  logger->Log(ERROR, "after");
  EXPECT_TRUE(logger->IsFiltered(DEBUG));
  const std::string debug = ContentOf(_folder.Native("debug.log"));
  EXPECT_THAT(debug, HasSubstr("[VYX][DEBUG] debug\n"));
  EXPECT_THAT(debug, HasSubstr("[VYX][ERROR] error\n"));
  EXPECT_THAT(debug, testing::Not(HasSubstr("after")));
  const std::string written = ContentOf(_folder.Native("new folder/errors.log"));
  EXPECT_THAT(written, HasSubstr("[VYX][ERROR] error\n"));
  EXPECT_THAT(written, HasSubstr("[VYX][ERROR] after\n"));
  EXPECT_THAT(written, testing::Not(HasSubstr("debug")));
  EXPECT_THAT(captured.Text(), testing::Not(HasSubstr("[DEBUG]")));
}

TEST_F(FileLogger, AFileThatCannotBeOpenedIsATracedFailure) {
  _folder.MakeFile("in the way", "");
  const KORUnicodeString path = _folder.Path("in the way/a.log");
  const auto child = VYX::Test::RunInChild([&path] {
    VYXInfLog::Init(ERROR, "", "");
    if (VYXInfLog::CreateFileLogger(path, ERROR) != nullptr) {
      std::_Exit(1);
    }
    VYXInfLog::Close();
  });
  EXPECT_TRUE(child.IsGood());
  EXPECT_THAT(child.output, HasSubstr("[ERROR] FAILURE RETURN (VYXInfrastructure/VYXInfUtils.m/src/VYXInfLog/"));
  EXPECT_EQ(child.error, "Logging: cannot open '" + _folder.Native("in the way/a.log") + "': Not a directory\n");
}

}  // namespace
