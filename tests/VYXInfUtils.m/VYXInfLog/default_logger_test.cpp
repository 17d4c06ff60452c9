#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "VYXInfLog.h"
#include "VYXInfLog/logger_access.h"
#include "fake_back_end.h"
#include "internal/FailureTrace.h"
#include "support/captured_stdout.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using VYX::Internal::LoggerAccess;
using VYX::Internal::LoggerMode;
using VYX::Test::CapturedStdout;
using VYX::Test::Line;
using VYX::Test::Record;
using VYX::Test::RecordingFactory;

constexpr const char* kInternalError = "********** Internal error: Logging not closed before shutdown. **********";

std::shared_ptr<VYXInfLog> BuildRecording(const void* iSettings) {
  return LoggerAccess::MakeOver(
      std::make_shared<RecordingFactory>(*static_cast<const std::shared_ptr<Record>*>(iSettings)), INFO);
}

bool Configure(const std::shared_ptr<Record>& iRecord) {
  return LoggerAccess::ReplaceDefault(LoggerMode::Configured, &BuildRecording, &iRecord);
}

// Every test starts without a default logger and leaves none behind.
class DefaultLogger : public testing::Test {
 protected:
  void SetUp() override { CloseSilently(); }
  void TearDown() override { CloseSilently(); }

  static void CloseSilently() {
    CapturedStdout swallowed;
    VYXInfLog::Close();
  }
};

TEST_F(DefaultLogger, IsAConsoleLoggerAtInfo) {
  CapturedStdout captured;
  const auto logger = VYXInfLog::GetDefaultLogger();
  ASSERT_NE(logger, nullptr);
  EXPECT_TRUE(logger->IsFiltered(DEBUG));
  EXPECT_FALSE(logger->IsFiltered(INFO));
  EXPECT_FALSE(LoggerAccess::HasBackEnd(*logger));
  EXPECT_EQ(logger, VYXInfLog::GetDefaultLogger());
  EXPECT_EQ(captured.Text(), "");
}

TEST_F(DefaultLogger, CloseWithoutOneBringsUpTheConsoleAndEmptiesItAgain) {
  CapturedStdout captured;
  VYXInfLog::Close();
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("INFO", "VYXInfLog::Close")));
  const auto first = VYXInfLog::GetDefaultLogger();
  VYXInfLog::Close();
  const auto second = VYXInfLog::GetDefaultLogger();
  EXPECT_NE(first, second);
  EXPECT_FALSE(second->IsFiltered(INFO));
  EXPECT_TRUE(second->IsFiltered(DEBUG));
}

TEST_F(DefaultLogger, ConsoleNeverDisplacesWhatIsThere) {
  const auto logger = VYXInfLog::GetDefaultLogger();
  const auto build = [](const void*) { return LoggerAccess::MakeConsole(TRACE); };
  EXPECT_FALSE(LoggerAccess::ReplaceDefault(LoggerMode::Console, +build, nullptr));
  EXPECT_EQ(logger, VYXInfLog::GetDefaultLogger());
}

TEST_F(DefaultLogger, ConfiguringOverTheConsoleIsARedirection) {
  CapturedStdout captured;
  VYXInfLog::GetDefaultLogger();
  const auto record = std::make_shared<Record>();
  ASSERT_TRUE(Configure(record));
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("INFO", "Redirecting logging.")));
  EXPECT_THAT(record->messages, ElementsAre(Pair(3, "Redirecting logging.")));
  EXPECT_EQ(record->channel, "VYX");
}

TEST_F(DefaultLogger, ConfiguringFromNothingIsNoRedirection) {
  CapturedStdout captured;
  const auto record = std::make_shared<Record>();
  ASSERT_TRUE(Configure(record));
  EXPECT_THAT(captured.LogLines(), IsEmpty());
  EXPECT_THAT(record->messages, IsEmpty());
}

TEST_F(DefaultLogger, RefusesASecondConfiguration) {
  const auto record = std::make_shared<Record>();
  ASSERT_TRUE(Configure(record));
  const auto logger = VYXInfLog::GetDefaultLogger();
  EXPECT_FALSE(Configure(std::make_shared<Record>()));
  EXPECT_EQ(logger, VYXInfLog::GetDefaultLogger());
  EXPECT_THAT(record->messages, IsEmpty());
}

TEST_F(DefaultLogger, PassesMessagesAndFilterToTheBackEnd) {
  const auto record = std::make_shared<Record>();
  record->threshold = 4;
  ASSERT_TRUE(Configure(record));
  const auto logger = VYXInfLog::GetDefaultLogger();
  EXPECT_FALSE(logger->IsFiltered(DEBUG));
  EXPECT_TRUE(logger->IsFiltered(TRACE));
  EXPECT_FALSE(VYX::Internal::IsFiltered(DEBUG));
  EXPECT_TRUE(VYX::Internal::IsFiltered(TRACE));
  logger->Log(TRACE, "unfiltered by the logger");
  logger->Log(WARN, nullptr);
  EXPECT_THAT(record->messages, ElementsAre(Pair(5, "unfiltered by the logger"), Pair(2, "")));
}

TEST_F(DefaultLogger, ClosingRetiresTheBackEndSilently) {
  CapturedStdout captured;
  const auto record = std::make_shared<Record>();
  ASSERT_TRUE(Configure(record));
  EXPECT_TRUE(LoggerAccess::IsOpen());
  VYXInfLog::Close();
  EXPECT_FALSE(LoggerAccess::IsOpen());
  EXPECT_THAT(record->messages, ElementsAre(Pair(3, "VYXInfLog::Close")));
  EXPECT_THAT(captured.LogLines(), IsEmpty());
}

TEST_F(DefaultLogger, CloseIsSilentWhenInfoIsFiltered) {
  const auto record = std::make_shared<Record>();
  record->threshold = 1;
  ASSERT_TRUE(Configure(record));
  VYXInfLog::Close();
  EXPECT_THAT(record->messages, IsEmpty());
}

TEST_F(DefaultLogger, ABackEndWithoutChannelLoggerLeavesTheConsole) {
  CapturedStdout captured;
  ASSERT_TRUE(Configure(nullptr));
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("ERROR", "Failed to initialize logging framework")));
  const auto logger = VYXInfLog::GetDefaultLogger();
  EXPECT_FALSE(LoggerAccess::HasBackEnd(*logger));
  EXPECT_FALSE(logger->IsFiltered(INFO));
  EXPECT_TRUE(logger->IsFiltered(DEBUG));
  EXPECT_FALSE(LoggerAccess::IsOpen());
}

TEST_F(DefaultLogger, AMissingFactoryLeavesTheConsole) {
  CapturedStdout captured;
  const auto logger = LoggerAccess::MakeOver(nullptr, WARN);
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("ERROR", "Failed to initialize logging framework")));
  EXPECT_TRUE(logger->IsFiltered(INFO));
}

TEST(LoggerWithBackEnd, SaysTenTimesThatItWasNotClosed) {
  const auto record = std::make_shared<Record>();
  LoggerAccess::MakeOver(std::make_shared<RecordingFactory>(record), INFO).reset();
  ASSERT_EQ(record->messages.size(), 10U);
  for (const auto& message : record->messages) {
    EXPECT_THAT(message, Pair(0, kInternalError));
  }
}

TEST(LoggerWithBackEnd, IsSilentOnceReleased) {
  const auto record = std::make_shared<Record>();
  auto logger = LoggerAccess::MakeOver(std::make_shared<RecordingFactory>(record), INFO);
  LoggerAccess::Release(*logger);
  logger.reset();
  EXPECT_THAT(record->messages, IsEmpty());
}

TEST(LoggerWithBackEnd, DeathOfAnOlderOneLeavesANewerOneOpen) {
  const auto record = std::make_shared<Record>();
  auto older = LoggerAccess::MakeOver(std::make_shared<RecordingFactory>(record), INFO);
  auto newer = LoggerAccess::MakeOver(std::make_shared<RecordingFactory>(record), INFO);
  LoggerAccess::Release(*older);
  LoggerAccess::Release(*newer);
  older.reset();
  EXPECT_TRUE(LoggerAccess::IsOpen());
  newer.reset();
  EXPECT_FALSE(LoggerAccess::IsOpen());
}

// A back end that writes to standard error, to be read from a process that has ended.
class StderrLogger : public VYX::Logging::ILogger {
 public:
  bool IsFiltered(int) const override { return false; }
  void Write(int iLevel, const char* iText) override { std::fprintf(stderr, "<%d %s>", iLevel, iText); }
};
class StderrFactory : public VYX::Logging::ILoggerFactory {
 public:
  std::shared_ptr<VYX::Logging::ISinkHandle> AddSink(const VYX::Logging::TextFileSink&) override { return nullptr; }
  void Flush() override {}
  std::shared_ptr<VYX::Logging::ILogger> CreateLogger(const char*) override { return std::make_shared<StderrLogger>(); }
};

void ConfigureStderr() {
  const auto build = [](const void*) { return LoggerAccess::MakeOver(std::make_shared<StderrFactory>(), INFO); };
  LoggerAccess::ReplaceDefault(LoggerMode::Configured, +build, nullptr);
}

using ExitCallbackDeathTest = testing::Test;

TEST(ExitCallbackDeathTest, ClosesLoggingThatIsStillOpen) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto leaveOpen = [] {
    VYXInfLog::Close();
    ConfigureStderr();
    std::exit(0);
  };
  EXPECT_EXIT(leaveOpen(), testing::ExitedWithCode(0), "^<2 Abnormal end -> closing logging><3 VYXInfLog::Close>$");
}

TEST(ExitCallbackDeathTest, WritesNothingAfterAProperClose) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto closeProperly = [] {
    VYXInfLog::Close();
    ConfigureStderr();
    VYXInfLog::Close();
    std::exit(0);
  };
  EXPECT_EXIT(closeProperly(), testing::ExitedWithCode(0), "^<3 VYXInfLog::Close>$");
}

TEST_F(DefaultLogger, IsSafeWhileThreadsLogTraceAndOthersReplaceIt) {
  CapturedStdout captured;
  std::atomic<bool> stop{false};
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&stop] {
      while (!stop.load()) {
        const auto logger = VYXInfLog::GetDefaultLogger();
        if (!logger->IsFiltered(ERROR)) {
          logger->Log(ERROR, "message");
        }
        VYX::Internal::LogUnlessFiltered(TRACE, "filtered");
        VYX::Internal::FailureReturn(VYX_HERE, false, "detail");
      }
    });
  }
  const auto record = std::make_shared<Record>();
  for (int cycle = 0; cycle < 200; ++cycle) {
    Configure(record);
    VYXInfLog::Close();
  }
  stop = true;
  for (std::thread& thread : threads) {
    thread.join();
  }
  for (const auto& message : record->messages) {
    EXPECT_NE(message.second, kInternalError);
  }
  EXPECT_FALSE(LoggerAccess::IsOpen());
}

}  // namespace
