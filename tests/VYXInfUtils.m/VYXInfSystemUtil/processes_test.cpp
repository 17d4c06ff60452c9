#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "KORSysBase/KORResult.h"
#include "VYXInfLog.h"
#include "VYXInfSystemUtil.h"
#include "support/captured_stdout.h"
#include "support/child_process.h"
#include "support/injected_faults.h"
#include "support/process_list.h"
#include "support/unprivileged.h"

namespace VYX::Test {
namespace {

using ::testing::ElementsAre;
using Util = VYXInfSystemUtil;
using Priority = Util::ProcessPriority;

constexpr const char* kSource = "VYXInfSystemUtil/processes.cpp";

KORListValKORUnicodeString ListOf(const std::vector<std::string>& iTexts) {
  KORListValKORUnicodeString list;
  for (const std::string& text : iTexts) {
    list.Append(KORUnicodeString(std::string_view(text)));
  }
  return list;
}

int StartChild(const std::vector<std::string>& iArguments) {
  int pid = 0;
  int exitCode = 0;
  EXPECT_EQ(Util::StartProcess(VYX_TEST_CHILD, ListOf(iArguments), false, &pid, &exitCode), KORLibSuccess);
  return pid;
}

// A child that runs until the object dies.
class PausedChild {
 public:
  PausedChild() : _pid(StartChild({"pause"})) {}
  ~PausedChild() {
    ::kill(_pid, SIGKILL);
    WaitForEnd(_pid);
    std::vector<Util::ProcessInfo> none;
    Util::GetSubProcesses(none, _pid, "*");  // hears of the end
  }
  PausedChild(const PausedChild&) = delete;
  PausedChild& operator=(const PausedChild&) = delete;

  int Pid() const { return _pid; }

 private:
  int _pid;
};

std::string OwnName() {
  return std::filesystem::read_symlink("/proc/self/exe").filename().string();
}

TEST(GetParentProcess, IsTheProcessThatStartedIt) {
  const PausedChild child;
  Util::ProcessInfo parent;
  EXPECT_EQ(Util::GetParentProcess(child.Pid(), parent), S_OK);
  EXPECT_EQ(parent.id, ::getpid());
  EXPECT_EQ(parent.name, OwnName().c_str());
}

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

TEST(GetParentProcess, FailuresAreTracedAndLeaveTheOutput) {
  const ConsoleLevel level(TRACE);
  // 1 has no parent; the last is beyond every number of a process.
  for (const int pid : {0, -5, 1, 2'000'000'000}) {
    CapturedStdout captured;
    Util::ProcessInfo parent{42, "untouched"};
    EXPECT_EQ(Util::GetParentProcess(pid, parent), E_FAIL) << pid;
    EXPECT_THAT(captured.LogLines(), ElementsAre(Line("TRACE", "Getting parent process of " + std::to_string(pid)),
                                                 FailureReturnIn(kSource)));
    EXPECT_EQ(parent.id, 42);
    EXPECT_EQ(parent.name, "untouched");
  }
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

TEST(GetSubProcesses, AppendsTheChildrenThatMatch) {
  const PausedChild first;
  const PausedChild second;
  std::vector<Util::ProcessInfo> children;
  EXPECT_EQ(Util::GetSubProcesses(children, ::getpid(), "*"), S_OK);
  EXPECT_EQ(Util::GetSubProcesses(children, ::getpid(), "test_ch*"), S_OK);
  EXPECT_EQ(Util::GetSubProcesses(children, ::getpid(), "test_child"), S_OK);
  EXPECT_EQ(Util::GetSubProcesses(children, ::getpid(), "TEST_CHILD"), S_OK);
  EXPECT_EQ(Util::GetSubProcesses(children, ::getpid(), "test_\\*"), S_OK);
  EXPECT_EQ(Util::GetSubProcesses(children, ::getpid(), ""), S_OK);
  ASSERT_EQ(children.size(), 6U) << "two for each of the first three patterns";
  for (std::size_t index = 0; index < children.size(); ++index) {
    EXPECT_EQ(children[index].name, "test_child");
  }
  std::set<int> ids;
  for (const Util::ProcessInfo& child : children) {
    ids.insert(child.id);
  }
  EXPECT_EQ(ids, HostChildrenOf(::getpid()));
}

TEST(GetSubProcesses, TellsWhatItFindsAtTrace) {
  const PausedChild child;
  const ConsoleLevel level(TRACE);
  CapturedStdout captured;
  std::vector<Util::ProcessInfo> children;
  EXPECT_EQ(Util::GetSubProcesses(children, ::getpid(), "no match"), S_OK);
  EXPECT_TRUE(children.empty());
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("TRACE", "Listing sub-processes from " + std::to_string(::getpid())),
                          Line("TRACE", "Found child process test_child PID: " + std::to_string(child.Pid()))));
}

TEST(GetSubProcesses, AProcessThatIsGoneHasNone) {
  std::vector<Util::ProcessInfo> children;
  EXPECT_EQ(Util::GetSubProcesses(children, 2'000'000'000, "*"), S_OK);
  EXPECT_TRUE(children.empty());
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

TEST(Children, NobodyWaitsForAreHeardOfLater) {
  for (int count = 0; count < 10; ++count) {
    WaitForEnd(StartChild({"exit", "0"}));
  }
  std::vector<Util::ProcessInfo> children;
  EXPECT_EQ(Util::GetSubProcesses(children, ::getpid(), "*"), S_OK);
  EXPECT_TRUE(children.empty());
  EXPECT_TRUE(HostChildrenOf(::getpid()).empty()) << "no dead entry is left";
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

TEST(KillProcess, EndsAProcess) {
  const int pid = StartChild({"pause"});
  EXPECT_EQ(Util::KillProcess(pid), S_OK);
  siginfo_t info = {};
  ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOWAIT), 0);
  EXPECT_EQ(info.si_code, CLD_KILLED);
  EXPECT_EQ(info.si_status, SIGKILL);
  CapturedStdout captured;
  EXPECT_EQ(Util::KillProcess(pid), E_FAIL) << "it has ended already";
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource)));
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

TEST(KillProcessFromChild, EndsTheOneThatAsks) {
  const int pid = StartChild({"die"});
  siginfo_t info = {};
  ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOWAIT), 0);
  EXPECT_EQ(info.si_code, CLD_KILLED);
  EXPECT_EQ(info.si_status, SIGKILL);
}

TEST(KillProcessFromChild, EndsAnotherProcess) {
  const int pid = StartChild({"pause"});
  EXPECT_EQ(Util::KillProcessFromChild(pid), S_OK);
  siginfo_t info = {};
  ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOWAIT), 0);
  EXPECT_EQ(info.si_status, SIGKILL);
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

TEST(SetCurrentProcessPriority, ValuesOutsideAreInvalid) {
  for (const int value : {5, -1, 1000}) {
    CapturedStdout captured;
    EXPECT_EQ(Util::SetCurrentProcessPriority(static_cast<Priority>(value)), E_INVALIDARG) << value;
    EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource))) << value;
  }
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
