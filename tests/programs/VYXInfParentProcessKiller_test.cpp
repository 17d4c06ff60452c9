#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <vector>

#include "KORSysBase/KORProcess.h"
#include "platform/os/linux/proc_files.h"
#include "platform/os/processes.h"
#include "support/unprivileged.h"

namespace VYX::Test {
namespace {

int Start(const char* iProgram, const std::vector<std::string>& iArguments, bool iWait) {
  std::vector<char*> arguments = {const_cast<char*>(iProgram)};
  for (const std::string& argument : iArguments) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  int pid = -1;
  int exitCode = -1;
  EXPECT_EQ(KORStartProcess(iProgram, arguments.data(), iWait, &pid, &exitCode), KORLibSuccess);
  return iWait ? exitCode : pid;
}

// Its exit code.
int RunKiller(const std::vector<std::string>& iArguments) {
  static const std::string killer =
      std::string(VYX_TEST_CHILD).substr(0, std::string(VYX_TEST_CHILD).rfind('/')) + "/VYXInfParentProcessKiller.exe";
  return Start(killer.c_str(), iArguments, true);
}

bool HasEnded(int iChild) {
  siginfo_t info = {};
  return ::waitid(P_PID, static_cast<id_t>(iChild), &info, WEXITED | WNOWAIT | WNOHANG) == 0 && info.si_pid == iChild;
}

TEST(VYXInfParentProcessKiller, ReturnsWhenTheProcessIsGone) {
  const int pid = Start(VYX_TEST_CHILD, {"pause"}, false);
  EXPECT_FALSE(HasEnded(pid));
  EXPECT_EQ(RunKiller({"-wait", std::to_string(pid)}), 0);
  EXPECT_TRUE(HasEnded(pid));
  EXPECT_EQ(RunKiller({"-wait", std::to_string(pid)}), 0) << "it has ended before";
}

TEST(VYXInfParentProcessKiller, ANumberOfNoProcessIsNothingToDo) {
  EXPECT_EQ(RunKiller({"-wait", "2000000000"}), 0);
}

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

TEST(VYXInfParentProcessKiller, OtherArgumentsAreRefused) {
  const std::vector<std::vector<std::string>> kRows = {
      {},
      {"-wait"},
      {"-wait", ""},
      {"-wait", "0"},
      {"-wait", "1"},
      {"-wait", "-1"},
      {"-wait", "12x"},
      {"-wait", " 12"},
      {"-wait", "99999999999"},
      {"wait", "2000000000"},
      {"-wait", "2000000000", "more"},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(RunKiller(row), 2) << ::testing::PrintToString(row);
  }
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
