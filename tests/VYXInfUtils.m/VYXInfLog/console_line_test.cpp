#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include "VYXInfLog.h"
#include "VYXInfSystemUtil.h"
#include "support/captured_stdout.h"

namespace {

using testing::ElementsAre;
using VYX::Test::CapturedStdout;
using VYX::Test::ConsoleLevel;
using VYX::Test::Line;
using VYX::Test::LogLine;

TEST(ConsoleLine, HasFourFieldsAndTheText) {
  CapturedStdout captured;
  VYXInfLog::GetDefaultLogger()->Log(INFO, "some text; with a separator");
  const std::regex form(
      "\\d{4}-\\d\\d-\\d\\d_\\d\\d-\\d\\d-\\d\\d; INFO; (\\d+); (\\d+); some text; with a separator\n");
  std::smatch match;
  const std::string text = captured.Text();
  ASSERT_TRUE(std::regex_match(text, match, form)) << text;
  EXPECT_EQ(match[1], std::to_string(VYXInfSystemUtil::GetPID()));
  EXPECT_EQ(match[2], std::to_string(VYXInfSystemUtil::GetCurrentThreadId()));
}

TEST(ConsoleLine, WritesNullAsNothing) {
  CapturedStdout captured;
  VYXInfLog::GetDefaultLogger()->Log(INFO, nullptr);
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("INFO", "")));
}

TEST(ConsoleLine, NamesUnknownLevelsTraceAndDoesNotFilter) {
  CapturedStdout captured;
  const auto logger = VYXInfLog::GetDefaultLogger();
  logger->Log(TRACE, "filtered for callers, written here");
  logger->Log(static_cast<VYXInfLogLevel>(6), "six");
  logger->Log(static_cast<VYXInfLogLevel>(-1), "minus one");
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("TRACE", "filtered for callers, written here"),
                                               Line("TRACE", "six"), Line("TRACE", "minus one")));
}

TEST(ConsoleLine, KeepsItsPlaceBetweenLinesOfStdio) {
  CapturedStdout captured;
  std::printf("before\n");
  VYXInfLog::GetDefaultLogger()->Log(INFO, "between");
  std::printf("after\n");
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("", "before"), Line("INFO", "between"), Line("", "after")));
}

TEST(ConsoleFilter, ComparesLevelWithThreshold) {
  for (int threshold = -1; threshold <= 6; ++threshold) {
    const ConsoleLevel level(threshold);
    for (int message = -2; message <= 7; ++message) {
      EXPECT_EQ(VYXInfLog::GetDefaultLogger()->IsFiltered(static_cast<VYXInfLogLevel>(message)), message > threshold)
          << "message " << message << ", threshold " << threshold;
    }
  }
}

TEST(ConsoleLine, IsWrittenWholeByManyThreads) {
  constexpr int kThreads = 8;
  constexpr int kLines = 500;
  CapturedStdout captured;
  {
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
      threads.emplace_back([thread] {
        const std::string padding(static_cast<std::size_t>(100 * thread), 'x');
        for (int line = 0; line < kLines; ++line) {
          const std::string text = std::to_string(thread) + ":" + std::to_string(line) + ":" + padding;
          VYXInfLog::GetDefaultLogger()->Log(INFO, text.c_str());
        }
      });
    }
    for (std::thread& thread : threads) {
      thread.join();
    }
  }
  std::vector<int> next(kThreads, 0);
  for (const LogLine& line : captured.LogLines()) {
    ASSERT_EQ(line.level, "INFO") << line.text;
    const std::size_t thread = std::stoul(line.text);
    const std::string expected =
        std::to_string(thread) + ":" + std::to_string(next[thread]++) + ":" + std::string(100 * thread, 'x');
    ASSERT_EQ(line.text, expected);
  }
  EXPECT_EQ(std::count(next.begin(), next.end(), kLines), kThreads);
}

}  // namespace
