#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "internal/FailureTrace.h"
#include "support/captured_stdout.h"
#include "support/limited_memory.h"

namespace {

constexpr VYX::Internal::SourceSite kSite{"VYXInfrastructure/VYXInfUtils.m/src/VYXInfLog", 421};

TEST(FailureTraceWithoutMemory, StillAnswersTheFailureAndSaysWhatItCan) {
  const std::string longText(1000, 'x');
  VYXInfLog::GetDefaultLogger();
  for (long allowed = 0; allowed < 40; ++allowed) {
    VYX::Test::CapturedStdout captured;
    VYX::Test::AllowAllocations(allowed);
    const long code = VYX::Internal::FailureReturn(kSite, E_FAIL, longText);
    VYX::Test::AllowAllocations(VYX::Test::kUnlimited);
    EXPECT_EQ(code, E_FAIL) << allowed;
    EXPECT_EQ(captured.LogLines().size(), 2U) << allowed << " " << captured.Text();
  }
}

TEST(FailureTraceWithoutMemory, LosesNoExceptionAtTheBoundary) {
  const std::runtime_error failure(std::string(500, 'y'));
  VYX::Test::CapturedStdout captured;
  VYX::Test::AllowAllocations(0);
  const long code = VYX::Internal::CatchAtBoundary(kSite, E_FAIL, [&]() -> long { throw failure; });
  VYX::Test::AllowAllocations(VYX::Test::kUnlimited);
  EXPECT_EQ(code, E_FAIL);
}

TEST(ConsoleLineWithoutMemory, IsShortened) {
  const auto logger = VYXInfLog::GetDefaultLogger();
  const std::string longText(1000, 'x');
  VYX::Test::CapturedStdout captured;
  VYX::Test::AllowAllocations(0);
  logger->Log(WARN, longText.c_str());
  logger->Log(WARN, nullptr);
  VYX::Test::AllowAllocations(VYX::Test::kUnlimited);
  EXPECT_EQ(captured.Text(), "WARN; " + std::string(249, 'x') + "\nWARN; \n");
}

}  // namespace
