#include <gtest/gtest.h>

#include "killer_testing.h"
#include "platform/os/processes.h"
#include "support/windows/process_faults.h"

namespace VYX::Test {
namespace {

// A process that started after the one that is to end it stands for one that took the number over.
TEST(EndOlderProcess, AYoungerProcessIsLeftAlone) {
  const int pid = Start(VYX_TEST_CHILD, {"pause"}, false);
  EXPECT_TRUE(Os::EndOlderProcess(pid).IsOk());
  EXPECT_FALSE(HasEnded(pid));
  EXPECT_TRUE(Os::EndProcess(pid).IsOk());
}

TEST(EndOlderProcess, WhatMayNotBeEndedIsAFailure) {
  const SavedProcessCalls saved;
  Os::Windows::gProcessCalls.EndProcess = [](void*, std::uint32_t) { return FailWith(kAccessDenied), false; };
  EXPECT_EQ(Os::EndOlderProcess(OwnProcess()).GetNative(), static_cast<int>(kAccessDenied));
  Os::Windows::gProcessCalls.OpenProcess = [](std::uint32_t, std::uint32_t) -> void* {
    return FailWith(kAccessDenied), nullptr;
  };
  EXPECT_EQ(Os::EndOlderProcess(OwnProcess()).GetNative(), static_cast<int>(kAccessDenied));
}

}  // namespace
}  // namespace VYX::Test
