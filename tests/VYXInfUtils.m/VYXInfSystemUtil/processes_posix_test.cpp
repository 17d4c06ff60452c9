#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "KORSysBase/KORResult.h"
#include "VYXInfLog.h"
#include "VYXInfSystemUtil.h"
#include "process_testing.h"
#include "support/captured_stdout.h"
#include "support/child_process.h"
#include "support/injected_faults.h"
#include "support/unprivileged.h"

namespace VYX::Test {
namespace {

using ::testing::ElementsAre;
using Util = VYXInfSystemUtil;
using Priority = Util::ProcessPriority;

constexpr const char* kSource = "VYXInfSystemUtil/processes.cpp";

TEST(GetParentProcess, AgreesWithTheHostForTheOwnParent) {
  // The parent may belong to another user, and then the host does not show its program.
  const auto link = std::filesystem::path("/proc") / std::to_string(::getppid()) / "exe";
  std::error_code error;
  const std::string name = std::filesystem::read_symlink(link, error).filename().string();
  CapturedStdout captured;
  Util::ProcessInfo parent;
  EXPECT_EQ(Util::GetParentProcess(::getpid(), parent), error ? E_FAIL : S_OK);
  EXPECT_EQ(parent.id, error ? 0 : ::getppid());
  EXPECT_EQ(parent.name, name.c_str());
}

TEST(GetParentProcess, AParentThatMayNotBeLookedIntoIsAFailure) {
  if (::geteuid() != 0) {
    GTEST_SKIP() << "every parent at hand belongs to the same user";
  }
  CapturedStdout captured;
  EXPECT_TRUE(HoldsForOrdinaryUser([] {
    Util::ProcessInfo parent{42, "untouched"};
    return Util::GetParentProcess(::getpid(), parent) == E_FAIL && parent.id == 42;
  }));
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource)));
}

TEST(GetSubProcesses, AHostThatCannotListIsAFailure) {
  std::vector<Util::ProcessInfo> children(1);
  for (const int call : {1, 2, 5}) {
    CapturedStdout captured;
    {
      const InjectedFaults faults(call, EMFILE, false);
      EXPECT_EQ(Util::GetSubProcesses(children, ::getpid(), "*"), E_FAIL) << call;
    }
    EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource))) << call;
  }
  EXPECT_EQ(children.size(), 1U);
}

TEST(Children, ThoseOfOthersAreLeftAlone) {
  const pid_t foreign = ::fork();
  if (foreign == 0) {
    ::_exit(33);
  }
  WaitForEnd(foreign);
  WaitForEnd(StartChild({"exit", "0"}));
  std::vector<Util::ProcessInfo> children;
  Util::GetSubProcesses(children, ::getpid(), "*");
  int status = 0;
  EXPECT_EQ(::waitpid(foreign, &status, 0), foreign) << "the one who started it hears of its end";
  EXPECT_EQ(WEXITSTATUS(status), 33);
}

TEST(Children, AHostThatHearsOfThemFirstDoesNoHarm) {
  const int pid = StartChild({"exit", "0"});
  EXPECT_EQ(::waitpid(pid, nullptr, 0), pid);
  std::vector<Util::ProcessInfo> children;
  EXPECT_EQ(Util::GetSubProcesses(children, ::getpid(), "*"), S_OK);
  EXPECT_TRUE(children.empty());
}

TEST(Children, AForkedChildForgetsThoseOfItsParent) {
  const PausedChild paused;
  const ChildResult child = RunInChild([] {
    std::vector<Util::ProcessInfo> children;
    WaitForEnd(StartChild({"exit", "0"}));
    const bool isListed = Util::GetSubProcesses(children, ::getpid(), "*") == S_OK;
    ::_exit(isListed && children.empty() && HostChildrenOf(::getpid()).empty() ? 0 : 1);
  });
  EXPECT_TRUE(child.IsGood());
}

TEST(KillProcess, AnEndedProcessOfOthersIsAFailure) {
  const pid_t foreign = ::fork();
  if (foreign == 0) {
    ::_exit(0);
  }
  WaitForEnd(foreign);
  CapturedStdout captured;
  EXPECT_EQ(Util::KillProcess(foreign), E_FAIL);
  ::waitpid(foreign, nullptr, 0);
}

TEST(KillProcess, RefusesTheSystemsNumbersWithoutOpeningAnything) {
  const SavedSystemCalls saved;
  Os::Posix::Calls().OpenProcess = [](pid_t) -> int { std::abort(); };
  for (const int pid : {1, 0, -1, -42}) {
    CapturedStdout captured;
    EXPECT_EQ(Util::KillProcess(pid), E_FAIL) << pid;
    EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource))) << pid;
  }
}

TEST(KillProcess, WhatIsNotAllowedIsAFailure) {
  if (::geteuid() != 0) {
    GTEST_SKIP() << "no process of another user is at hand";
  }
  const PausedChild child;
  CapturedStdout captured;
  EXPECT_TRUE(HoldsForOrdinaryUser([&] { return Util::KillProcess(child.Pid()) == E_FAIL; }));
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource)));
}

TEST(KillProcessFromChild, IsAFailureWhereTheHelperCannotStart) {
  CapturedStdout captured;
  {
    const SavedSystemCalls saved;
    Os::Posix::Calls().Spawn = [](pid_t*, const char*, const posix_spawn_file_actions_t*, const posix_spawnattr_t*,
                                  char* const*, char* const*) {
      errno = ENOENT;
      return -1;
    };
    EXPECT_EQ(Util::KillProcessFromChild(42), E_FAIL);
  }
  KORUnicodeString folder;
  Util::GetExecutablePath(folder);
  const std::string helper = folder.ConvertToChar() + "\\VYXInfParentProcessKiller.exe";
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("ERROR", "Cannot start '" + helper + "': No such file or directory"),
                          FailureReturnIn("VYXInfSystemUtil/start_process.cpp"),
                          FailureReturnIn("VYXInfSystemUtil/start_process.cpp")));
}

TEST(KillProcessFromChild, IsAFailureWhereTheFolderIsUnknown) {
  CapturedStdout captured;
  {
    const SavedSystemCalls saved;
    Os::Posix::Calls().ReadLink = [](const char*, char*, std::size_t) -> ssize_t {
      errno = EACCES;
      return -1;
    };
    EXPECT_EQ(Util::KillProcessFromChild(42), E_FAIL);
  }
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn("VYXInfSystemUtil/environment.cpp"),
                                               FailureReturnIn("VYXInfSystemUtil/start_process.cpp")));
}

TEST(SetCurrentProcessPriority, EachClassIsANicenessOfAllThreads) {
  if (::geteuid() != 0) {
    GTEST_SKIP() << "only the superuser may become more urgent";
  }
  const ChildResult child = RunInChild([] {
    struct Row {
      Priority priority;
      int niceness;
    };
    const Row kRows[] = {{Priority::High, -10},
                         {Priority::AboveNormal, -5},
                         {Priority::BelowNormal, 10},
                         {Priority::Idle, 19},
                         {Priority::Normal, 0}};
    std::atomic<pid_t> other = 0;
    std::thread thread([&] {
      other = ::gettid();
      ::pause();
    });
    while (other == 0) {
      std::this_thread::yield();
    }
    for (const Row& row : kRows) {
      if (Util::SetCurrentProcessPriority(row.priority) != S_OK || ::getpriority(PRIO_PROCESS, 0) != row.niceness ||
          ::getpriority(PRIO_PROCESS, static_cast<id_t>(other.load())) != row.niceness) {
        ::_exit(1);
      }
    }
    ::_exit(0);
  });
  EXPECT_TRUE(child.IsGood());
}

TEST(SetCurrentProcessPriority, AnOrdinaryUserMayOnlyStepBack) {
  CapturedStdout captured;
  EXPECT_TRUE(HoldsForOrdinaryUser([] {
    const rlimit none = {0, 0};
    ::setrlimit(RLIMIT_NICE, &none);
    return Util::SetCurrentProcessPriority(Priority::BelowNormal) == S_OK &&
           Util::SetCurrentProcessPriority(Priority::Idle) == S_OK &&
           Util::SetCurrentProcessPriority(Priority::Idle) == S_OK &&
           Util::SetCurrentProcessPriority(Priority::High) == E_FAIL && ::getpriority(PRIO_PROCESS, 0) == 19;
  }));
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource), Detail("Failed to set process priority")));
}

}  // namespace
}  // namespace VYX::Test
