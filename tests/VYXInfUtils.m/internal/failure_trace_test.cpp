#include "internal/FailureTrace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>

#include "KORSysBase/KORError.h"
#include "support/captured_stdout.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using VYX::Internal::CatchAtBoundary;
using VYX::Internal::FailureLog;
using VYX::Internal::FailureReturn;
using VYX::Internal::LogPendingError;
using VYX::Internal::SourceSite;
using VYX::Test::CapturedStdout;
using VYX::Test::ConsoleLevel;
using VYX::Test::Detail;
using VYX::Test::Line;

constexpr SourceSite kSite{"VYXInfrastructure/VYXInfUtils.m/src/VYXInfLog", 421};

TEST(ResultCodes, HaveTheirValues) {
  EXPECT_EQ(S_OK, 0);
  EXPECT_EQ(S_FALSE, 1);
  EXPECT_EQ(static_cast<std::uint32_t>(E_FAIL), 0x80004005U);
  EXPECT_EQ(static_cast<std::uint32_t>(E_INVALIDARG), 0x80070057U);
  EXPECT_EQ(static_cast<std::uint32_t>(E_UNEXPECTED), 0x8000FFFFU);
  EXPECT_EQ(E_FAIL, -2147467259L);
}

TEST(FailureTrace, WritesKindPathAndLine) {
  CapturedStdout captured;
  EXPECT_EQ(FailureReturn(kSite, E_FAIL), E_FAIL);
  FailureLog(kSite);
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("ERROR", "FAILURE RETURN (VYXInfrastructure/VYXInfUtils.m/src/VYXInfLog:421)"),
                          Line("ERROR", "FAILURE LOG (VYXInfrastructure/VYXInfUtils.m/src/VYXInfLog:421)")));
}

TEST(FailureTrace, RecordsTheBuildsPathOfThisSource) {
  const SourceSite site = VYX_HERE;
  EXPECT_EQ(std::string(site.path), "VYXInfrastructure/tests/VYXInfUtils.m/internal/failure_trace_test.cpp");
  EXPECT_GT(site.line, 0);
}

TEST(FailureTrace, JoinsDetailPiecesWithoutSeparator) {
  CapturedStdout captured;
  const KORUnicodeString key("k\xC3\xA9y");
  FailureReturn(kSite, false, "Key '", key, "' not found ", -7, " ", std::numeric_limits<std::uint64_t>::max(), " ",
                std::string("text"));
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(testing::_, Detail("Key 'k\xC3\xA9y' not found -7 18446744073709551615 text")));
}

TEST(FailureTrace, IsSilentWhenErrorIsFiltered) {
  const ConsoleLevel level(FATAL);
  CapturedStdout captured;
  KORError::KORSetLastError(E_FAIL, "pending");
  EXPECT_EQ(FailureReturn(kSite, LogPendingError(E_FAIL), "detail"), E_FAIL);
  EXPECT_EQ(captured.Text(), "");
  EXPECT_EQ(KORError::KORGetLastError(E_FAIL, nullptr), nullptr) << "read, though not written, is cleared";
}

TEST(PendingErrorStep, WritesTheMessageOnce) {
  CapturedStdout captured;
  const long code = VYX::ResultCode(0x80070002);
  KORError::KORSetLastError(code, "Cannot open '/x': No such file or directory");
  EXPECT_EQ(LogPendingError(code), code);
  EXPECT_EQ(LogPendingError(code), code);
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("ERROR", "Cannot open '/x': No such file or directory")));
}

TEST(PendingErrorStep, LeavesSuccessAndOtherCodesAlone) {
  CapturedStdout captured;
  const long code = VYX::ResultCode(0x80070002);
  KORError::KORSetLastError(code, "message");
  EXPECT_EQ(LogPendingError(S_OK), S_OK);
  EXPECT_EQ(LogPendingError(S_FALSE), S_FALSE);
  EXPECT_EQ(LogPendingError(E_INVALIDARG), E_INVALIDARG);
  EXPECT_THAT(captured.LogLines(), IsEmpty());
  EXPECT_NE(KORError::KORGetLastError(code, nullptr), nullptr);
  KORError::KORCleanLastError();
}

TEST(PendingErrorStep, WithoutPendingErrorWritesNothing) {
  CapturedStdout captured;
  KORError::KORCleanLastError();
  FailureReturn(kSite, LogPendingError(E_FAIL));
  EXPECT_EQ(captured.LogLines().size(), 1U);
}

TEST(Boundary, TurnsAStandardExceptionIntoTraceAndDetail) {
  CapturedStdout captured;
  KORError::KORSetLastError(VYX::ResultCode(0x80070005), "left by the failed work");
  const long result = CatchAtBoundary(kSite, E_FAIL, []() -> long { throw std::runtime_error("the text"); });
  EXPECT_EQ(result, E_FAIL);
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("ERROR", "left by the failed work"),
                          Line("ERROR", "FAILURE RETURN (VYXInfrastructure/VYXInfUtils.m/src/VYXInfLog:421)"),
                          Detail("the text")));
}

TEST(Boundary, LetsOtherExceptionsAndResultsPass) {
  CapturedStdout captured;
  EXPECT_THROW(CatchAtBoundary(kSite, E_FAIL, []() -> long { throw 7; }), int);
  EXPECT_EQ(CatchAtBoundary(kSite, E_FAIL, [] { return S_OK; }), S_OK);
  EXPECT_EQ(captured.Text(), "");
}

}  // namespace
