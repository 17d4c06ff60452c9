#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "KORSysTS/KORThreads.h"
#include "VYXInfSystemUtil.h"
#include "support/captured_stdout.h"

// A platform without a record of its main thread, in the place of the real one.
KORThreads::ThreadId KORThreads::GetCurrentThreadId() noexcept {
  return 4711;
}

const KORThreads::ThreadId* KORThreads::GetMainThread() noexcept {
  return nullptr;
}

namespace VYX::Test {
namespace {

using ::testing::ElementsAre;

TEST(IsInMainThread, IsDeniedWithAWarningWhereNothingIsKnown) {
  CapturedStdout captured;
  EXPECT_FALSE(VYXInfSystemUtil::IsInMainThread());
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("WARN",
                                                    "MAIN THREAD info N/A, deducing that this is NOT MAIN THREAD.  "
                                                    "(MainThreadId=\?\?,  CurrentThreadId=4711)")));
}

}  // namespace
}  // namespace VYX::Test
