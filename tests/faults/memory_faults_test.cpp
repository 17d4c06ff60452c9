#include <gtest/gtest.h>

#include <iostream>
#include <new>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORResult.h"
#include "VYXInfLog.h"
#include "faults/captured_outputs.h"
#include "faults/memory_scenarios.h"
#include "faults/scenario.h"
#include "support/captured_stdout.h"
#include "support/limited_memory.h"
#include "support/pending_error.h"

namespace VYX::Test {
namespace {

class MemoryFaults : public ::testing::TestWithParam<NamedScenario> {
 protected:
  // One run with the allocations that succeed; answers the number of those that failed.
  static long RunOnce(long iAllowed, bool iIsOnce) {
    KORError::KORCleanLastError();
    const auto scenario = GetParam().make();
    const int descriptors = CountOpenDescriptors();
    Ending ending;
    bool hasThrown = false;
    long failed = 0;
    {
      const ConsoleLevel level(DEBUG);
      const CapturedOutputs outputs;
      AllowAllocations(iAllowed, iIsOnce);
      try {
        ending.code = scenario->Run();
      } catch (const std::bad_alloc&) {
        ending.code = E_FAIL;
        hasThrown = true;
      }
      failed = CountFailedAllocations();
      AllowAllocations(kUnlimited);
      ending.isTold = !outputs.Text().empty();
    }
    ending.isHostSound = failed == 0;
    // Going through a folder takes memory.
    ending.mayLeaveFolder = failed > 1;
    EXPECT_TRUE(GetParam().mayThrow || !hasThrown) << "no exception comes out";
    // Where there is no memory at all, the code is all that can be said.
    EXPECT_TRUE(ending.code >= 0 || hasThrown || !iIsOnce || ending.isTold || TakePendingError(ending.code) != "(none)")
        << "a failure is told";
    EXPECT_TRUE(ending.code >= 0 || failed > 0) << "no failure without a cause";
    EXPECT_EQ(CountOpenDescriptors(), descriptors) << "descriptors";
    const ConsoleLevel silent(FATAL);
    scenario->Check(ending);
    return failed;
  }

  // Every allocation in turn; answers how many there were.
  static int RunAll(bool iIsOnce) {
    for (int allowed = 0;; ++allowed) {
      SCOPED_TRACE("after " + std::to_string(allowed) + (iIsOnce ? " allocations one fails" : " allocations all fail"));
      if (RunOnce(allowed, iIsOnce) == 0 || HasFailure()) {
        return allowed;
      }
    }
  }
};

INSTANTIATE_TEST_SUITE_P(Host, MemoryFaults, ::testing::ValuesIn(AllScenarios()),
                         [](const auto& iInfo) { return std::string(iInfo.param.name); });
INSTANTIATE_TEST_SUITE_P(Memory, MemoryFaults, ::testing::ValuesIn(MemoryScenarios()),
                         [](const auto& iInfo) { return std::string(iInfo.param.name); });

TEST_P(MemoryFaults, LoseNothingAndAreTold) {
  static_cast<void>(GetParam().make()->Run());  // what is made once per process is there
  const int points = RunAll(true) + RunAll(false);
  std::cout << GetParam().name << ": " << points << " points\n";
  EXPECT_GE(points, 2);
}

}  // namespace
}  // namespace VYX::Test
