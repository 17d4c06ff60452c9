#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "KORSysBase/KORResult.h"
#include "VYXInfLog.h"
#include "VYXInfSystemUtil.h"
#include "process_testing.h"
#include "support/captured_stdout.h"

namespace VYX::Test {
namespace {

using ::testing::ElementsAre;
using Util = VYXInfSystemUtil;
using Priority = Util::ProcessPriority;

constexpr const char* kSource = "VYXInfSystemUtil/processes.cpp";

TEST(GetParentProcess, IsTheProcessThatStartedIt) {
  const PausedChild child;
  Util::ProcessInfo parent;
  EXPECT_EQ(Util::GetParentProcess(child.Pid(), parent), S_OK);
  EXPECT_EQ(parent.id, OwnProcess());
  EXPECT_EQ(parent.name, OwnProgram().c_str());
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

TEST(GetSubProcesses, AppendsTheChildrenThatMatch) {
  const PausedChild first;
  const PausedChild second;
  std::vector<Util::ProcessInfo> children;
  EXPECT_EQ(Util::GetSubProcesses(children, OwnProcess(), "*"), S_OK);
  EXPECT_EQ(Util::GetSubProcesses(children, OwnProcess(), "test_ch*"), S_OK);
  EXPECT_EQ(Util::GetSubProcesses(children, OwnProcess(), ChildName().c_str()), S_OK);
  EXPECT_EQ(Util::GetSubProcesses(children, OwnProcess(), "TEST_CH*"), S_OK);
  EXPECT_EQ(Util::GetSubProcesses(children, OwnProcess(), "test_\\*"), S_OK);
  EXPECT_EQ(Util::GetSubProcesses(children, OwnProcess(), ""), S_OK);
  ASSERT_EQ(children.size(), 6U) << "two for each of the first three patterns";
  for (std::size_t index = 0; index < children.size(); ++index) {
    EXPECT_EQ(children[index].name, ChildName().c_str());
  }
  std::set<int> ids;
  for (const Util::ProcessInfo& child : children) {
    ids.insert(child.id);
  }
  EXPECT_EQ(ids, HostChildrenOf(OwnProcess()));
}

TEST(GetSubProcesses, TellsWhatItFindsAtTrace) {
  const PausedChild child;
  const ConsoleLevel level(TRACE);
  CapturedStdout captured;
  std::vector<Util::ProcessInfo> children;
  EXPECT_EQ(Util::GetSubProcesses(children, OwnProcess(), "no match"), S_OK);
  EXPECT_TRUE(children.empty());
  EXPECT_THAT(
      captured.LogLines(),
      ElementsAre(Line("TRACE", "Listing sub-processes from " + std::to_string(OwnProcess())),
                  Line("TRACE", "Found child process " + ChildName() + " PID: " + std::to_string(child.Pid()))));
}

TEST(GetSubProcesses, AProcessThatIsGoneHasNone) {
  std::vector<Util::ProcessInfo> children;
  EXPECT_EQ(Util::GetSubProcesses(children, 2'000'000'000, "*"), S_OK);
  EXPECT_TRUE(children.empty());
}

TEST(Children, NobodyWaitsForAreHeardOfLater) {
  for (int count = 0; count < 10; ++count) {
    WaitForEnd(StartChild({"exit", "0"}));
  }
  std::vector<Util::ProcessInfo> children;
  EXPECT_EQ(Util::GetSubProcesses(children, OwnProcess(), "*"), S_OK);
  EXPECT_TRUE(children.empty());
  EXPECT_TRUE(HostChildrenOf(OwnProcess()).empty()) << "no dead entry is left";
}

TEST(KillProcess, EndsAProcess) {
  const int pid = StartChild({"pause"});
  EXPECT_EQ(Util::KillProcess(pid), S_OK);
  EXPECT_EQ(WaitForEnd(pid), kCodeOfEnded);
  CapturedStdout captured;
  EXPECT_EQ(Util::KillProcess(pid), E_FAIL) << "it has ended already";
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource)));
}

TEST(KillProcessFromChild, EndsTheOneThatAsks) {
  const int pid = StartChild({"die"});
  EXPECT_EQ(WaitForEnd(pid), kCodeOfEnded);
}

TEST(KillProcessFromChild, EndsAnotherProcess) {
  const int pid = StartChild({"pause"});
  EXPECT_EQ(Util::KillProcessFromChild(pid), S_OK);
  EXPECT_EQ(WaitForEnd(pid), kCodeOfEnded);
}

TEST(SetCurrentProcessPriority, ValuesOutsideAreInvalid) {
  for (const int value : {5, -1, 1000}) {
    CapturedStdout captured;
    EXPECT_EQ(Util::SetCurrentProcessPriority(static_cast<Priority>(value)), E_INVALIDARG) << value;
    EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource))) << value;
  }
}

}  // namespace
}  // namespace VYX::Test
