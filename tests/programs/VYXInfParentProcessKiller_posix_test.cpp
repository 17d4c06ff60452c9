#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "killer_testing.h"
#include "platform/os/linux/proc_files.h"
#include "platform/os/processes.h"
#include "support/unprivileged.h"

namespace VYX::Test {
namespace {

TEST(VYXInfParentProcessKiller, EndsItsOwnParent) {
  const pid_t parent = ::fork();
  if (parent == 0) {
    RunKiller({"-wait", std::to_string(::getpid())});
    ::_exit(7);
  }
  int status = 0;
  EXPECT_EQ(::waitpid(parent, &status, 0), parent);
  EXPECT_TRUE(WIFSIGNALED(status));
  EXPECT_EQ(WTERMSIG(status), SIGKILL);
}

TEST(EndOlderProcess, WhatMayNotBeEndedIsAFailure) {
  if (::geteuid() != 0) {
    GTEST_SKIP() << "no process of another user is at hand";
  }
  const int pid = Start(VYX_TEST_CHILD, {"pause"}, false);
  EXPECT_TRUE(HoldsForOrdinaryUser([&] { return Os::EndOlderProcess(pid).GetNative() == EPERM; }));
  EXPECT_FALSE(HasEnded(pid));
  EXPECT_TRUE(Os::EndProcess(pid).IsOk());
}

// A process that started after the one that is to end it stands for one that took the number over.
TEST(EndOlderProcess, AYoungerProcessIsLeftAlone) {
  Os::Linux::ProcessFacts own;
  Os::Linux::ProcessFacts younger;
  ASSERT_TRUE(Os::Linux::ReadProcessFacts(::getpid(), own).IsOk());
  int pid = 0;
  // The host counts in ticks of some milliseconds: starts are tried until one falls into a later tick.
  do {
    if (pid != 0) {
      EXPECT_TRUE(Os::EndProcess(pid).IsOk());
    }
    pid = Start(VYX_TEST_CHILD, {"pause"}, false);
    ASSERT_TRUE(Os::Linux::ReadProcessFacts(pid, younger).IsOk());
  } while (younger.startTime <= own.startTime);
  EXPECT_TRUE(Os::EndOlderProcess(pid).IsOk());
  EXPECT_FALSE(HasEnded(pid));
  EXPECT_TRUE(Os::EndProcess(pid).IsOk());
}

}  // namespace
}  // namespace VYX::Test
