#include "faults/host_faults.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <iostream>

#include "KORSysBase/KORError.h"
#include "VYXInfLog.h"
#include "faults/captured_outputs.h"
#include "faults/scenario.h"
#include "support/captured_stdout.h"
#include "support/pending_error.h"

namespace VYX::Test {
namespace {

constexpr HostFault kFaults[] = {
    {"disk full", ENOSPC, kRoom},           {"input or output error", EIO, kDevice},
    {"access denied", EACCES, kPermission}, {"too many open files", EMFILE, kDescriptor},
    {"interrupted", EINTR, kPatience},      {"short transfer", 0, kWholeTransfer},
};

class HostFaults : public ::testing::TestWithParam<NamedScenario> {
 protected:
  // One run; answers the number of calls that failed.
  static int RunOnce(const HostFault& iFault, int iFirst, bool iIsOnce) {
    KORError::KORCleanLastError();
    const auto scenario = GetParam().make();
    const int descriptors = CountOpenDescriptors();
    Ending ending;
    int failed = 0;
    {
      const ConsoleLevel level(DEBUG);
      const CapturedOutputs outputs;
      const FaultyHost host(iFault, iFirst, iIsOnce);
      ending.code = scenario->Run();
      failed = host.CountFailed();
      ending.isHostSound = failed == 0;
      ending.mayLeaveFile = host.HasRemovalFailed();
      ending.mayLeaveFolder = host.HasTreeWorkFailed();
      ending.isTold = !outputs.Text().empty();
    }
    const bool isTold = ending.isTold || TakePendingError(ending.code) != "(none)";
    EXPECT_EQ(CountOpenDescriptors(), descriptors) << "descriptors";
    EXPECT_TRUE(ending.code >= 0 || isTold) << "a failure leaves a trace or a message";
    const bool isHarmless = iFault.missing == kPatience || iFault.missing == kWholeTransfer;
    EXPECT_TRUE(ending.code >= 0 || !(ending.isHostSound || isHarmless)) << "no failure without a cause";
    const ConsoleLevel silent(FATAL);
    scenario->Check(ending);
    return failed;
  }

  // Every call of one kind of fault in turn; answers how many there were.
  static int RunAll(const HostFault& iFault, bool iIsOnce) {
    for (int first = 1;; ++first) {
      const std::string when = std::string(iFault.name) + (iIsOnce ? " once at call " : " from call ");
      SCOPED_TRACE(when + std::to_string(first));
      const int failed = RunOnce(iFault, first, iIsOnce);
      if (failed == 0 || HasFailure()) {
        return first - 1;
      }
    }
  }
};

INSTANTIATE_TEST_SUITE_P(Each, HostFaults, ::testing::ValuesIn(AllScenarios()),
                         [](const auto& iInfo) { return std::string(iInfo.param.name); });

TEST_P(HostFaults, LoseNothingAndAreTold) {
  int points = 0;
  for (const HostFault& fault : kFaults) {
    points += RunAll(fault, true);
    points += RunAll(fault, false);
  }
  std::cout << GetParam().name << ": " << points << " points\n";
  EXPECT_GE(points, GetParam().leastPoints);
}

}  // namespace
}  // namespace VYX::Test
