#include <gtest/gtest.h>

#include <thread>

#include "VYXInfSystemUtil.h"
#include "support/captured_stdout.h"

namespace VYX::Test {
namespace {

TEST(IsInMainThread, HoldsForTheThreadOfMainOnly) {
  CapturedStdout captured;
  EXPECT_TRUE(VYXInfSystemUtil::IsInMainThread());
  bool isInMain = true;
  std::thread([&] { isInMain = VYXInfSystemUtil::IsInMainThread(); }).join();
  EXPECT_FALSE(isInMain);
  EXPECT_EQ(captured.Text(), "");
}

}  // namespace
}  // namespace VYX::Test
