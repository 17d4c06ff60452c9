#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "KORSysBase/KORResult.h"
#include "VYXInfLog.h"
#include "VYXInfSystemUtil.h"
#include "process_testing.h"
#include "support/captured_stdout.h"
#include "support/windows/process_faults.h"

namespace VYX::Test {
namespace {

using Os::Windows::gProcessCalls;
using ::testing::ElementsAre;
using Util = VYXInfSystemUtil;
using Priority = Util::ProcessPriority;

constexpr const char* kSource = "VYXInfSystemUtil/processes.cpp";

TEST(GetSubProcesses, AHostThatCannotListIsAFailure) {
  std::vector<Util::ProcessInfo> children(1);
  CapturedStdout captured;
  {
    const SavedProcessCalls saved;
    gProcessCalls.TakeSnapshot = []() -> void* { return FailWith(kTooManyOpenFiles), nullptr; };
    EXPECT_EQ(Util::GetSubProcesses(children, OwnProcess(), "*"), E_FAIL);
    Util::ProcessInfo parent{42, "untouched"};
    EXPECT_EQ(Util::GetParentProcess(OwnProcess(), parent), E_FAIL);
    EXPECT_EQ(parent.id, 42);
  }
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource), FailureReturnIn(kSource)));
  EXPECT_EQ(children.size(), 1U);
}

TEST(GetParentProcess, AParentThatMayNotBeLookedIntoIsAFailure) {
  const PausedChild child;
  for (const bool isOpened : {false, true}) {
    CapturedStdout captured;
    const SavedProcessCalls saved;
    if (isOpened) {
      gProcessCalls.ModulePath = [](void*, wchar_t*, std::uint32_t) { return FailWith(kAccessDenied), 0U; };
    } else {
      gProcessCalls.OpenProcess = [](std::uint32_t, std::uint32_t) -> void* {
        return FailWith(kAccessDenied), nullptr;
      };
    }
    Util::ProcessInfo parent{42, "untouched"};
    EXPECT_EQ(Util::GetParentProcess(child.Pid(), parent), E_FAIL);
    EXPECT_EQ(parent.id, 42);
    EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource)));
  }
}

TEST(KillProcess, RefusesTheSystemsNumbersWithoutOpeningAnything) {
  const SavedProcessCalls saved;
  gProcessCalls.OpenProcess = [](std::uint32_t, std::uint32_t) -> void* { std::abort(); };
  for (const int pid : {1, 0, -1, -42}) {
    CapturedStdout captured;
    EXPECT_EQ(Util::KillProcess(pid), E_FAIL) << pid;
    EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource))) << pid;
  }
}

TEST(KillProcess, WhatIsNotAllowedIsAFailure) {
  const PausedChild child;
  CapturedStdout captured;
  const SavedProcessCalls saved;
  gProcessCalls.EndProcess = [](void*, std::uint32_t) { return FailWith(kAccessDenied), false; };
  EXPECT_EQ(Util::KillProcess(child.Pid()), E_FAIL);
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource)));
}

TEST(KillProcess, OpensWithTheRightToEndAlone) {
  const PausedChild child;
  static std::uint32_t rights = 0;
  static std::uint32_t exitCode = 0;
  CapturedStdout captured;
  const SavedProcessCalls saved;
  gProcessCalls.OpenProcess = [](std::uint32_t iRights, std::uint32_t) -> void* {
    rights = iRights;
    return OpenNothing();
  };
  gProcessCalls.EndProcess = [](void*, std::uint32_t iExitCode) {
    exitCode = iExitCode;
    return true;
  };
  EXPECT_EQ(Util::KillProcess(child.Pid()), S_OK);
  EXPECT_EQ(rights, 1U);
  EXPECT_EQ(exitCode, 1U);
}

TEST(KillProcessFromChild, IsAFailureWhereTheHelperCannotStart) {
  CapturedStdout captured;
  {
    const SavedProcessCalls saved;
    gProcessCalls.CreateProcess = [](const wchar_t*, wchar_t*, void*, void*) { return FailWith(kFileNotFound), false; };
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
    const SavedProcessCalls saved;
    gProcessCalls.ModulePath = [](void*, wchar_t*, std::uint32_t) { return FailWith(kAccessDenied), 0U; };
    EXPECT_EQ(Util::KillProcessFromChild(42), E_FAIL);
  }
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn("VYXInfSystemUtil/environment.cpp"),
                                               FailureReturnIn("VYXInfSystemUtil/start_process.cpp")));
}

TEST(SetCurrentProcessPriority, EachClassIsTheHostsOwn) {
  const std::pair<Priority, std::uint32_t> kRows[] = {{Priority::High, 0x80},
                                                      {Priority::AboveNormal, 0x8000},
                                                      {Priority::BelowNormal, 0x4000},
                                                      {Priority::Idle, 0x40},
                                                      {Priority::Normal, 0x20}};
  for (const auto& [priority, classOfHost] : kRows) {
    EXPECT_EQ(Util::SetCurrentProcessPriority(priority), S_OK);
    EXPECT_EQ(OwnPriorityClass(), classOfHost);
  }
}

TEST(SetCurrentProcessPriority, WhatIsNotAllowedIsAFailure) {
  CapturedStdout captured;
  const SavedProcessCalls saved;
  gProcessCalls.SetPriority = [](std::uint32_t) { return FailWith(kAccessDenied), false; };
  EXPECT_EQ(Util::SetCurrentProcessPriority(Priority::High), E_FAIL);
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource), Detail("Failed to set process priority")));
}

}  // namespace
}  // namespace VYX::Test
