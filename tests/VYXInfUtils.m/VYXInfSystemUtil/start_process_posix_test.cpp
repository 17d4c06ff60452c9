#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "KORSysBase/KORProcess.h"
#include "KORSysBase/KORResult.h"
#include "VYXInfSystemUtil.h"
#include "process_testing.h"
#include "support/captured_stdout.h"
#include "support/catalog_folder.h"
#include "support/child_process.h"
#include "support/injected_faults.h"
#include "support/pending_error.h"
#include "support/temporary_folder.h"

namespace VYX::Test {
namespace {

using ::testing::ElementsAre;

using Util = VYXInfSystemUtil;
using Values = std::map<std::string, std::string>;

TEST(StartProcess, BytesThatAreNoTextArriveToo) {
  const std::vector<std::string> arguments = {"echo", "not \xFF\xFE UTF-8", std::string(100'000, 'x')};
  std::string expected = std::string(VYX_TEST_CHILD) + '\0';
  for (const std::string& argument : arguments) {
    expected += argument + '\0';
  }
  EXPECT_EQ(RunProgram(VYX_TEST_CHILD, arguments).output, expected);
}

TEST(StartProcess, TellsSignalsFromExitCodes) {
  EXPECT_EQ(RunProgram(VYX_TEST_CHILD, {"signal", "9"}).exitCode, -9);
  EXPECT_EQ(RunProgram(VYX_TEST_CHILD, {"signal", "15"}).exitCode, -15);
}

// Programs that cannot run, in a folder of the test's own.
TEST(StartProcess, WhatCannotRunFailsAtTheStart) {
  const TemporaryFolder folder;
  const std::string plain = folder.MakeFile("plain", "#!/bin/sh\n");
  const std::string noFormat = folder.MakeFile("no_format", "neither a program nor a script\n");
  const std::string badInterpreter = folder.MakeFile("bad_interpreter", "#!/no/such/interpreter\n");
  ::chmod(noFormat.c_str(), 0755);
  ::chmod(badInterpreter.c_str(), 0755);
  struct Row {
    std::string program;
    const char* cause;
  };
  const Row kRows[] = {{folder.Native(), "Permission denied"}, {plain, "Permission denied"},
                       {noFormat, "Exec format error"},        {badInterpreter, "No such file or directory"},
                       {plain + "/below", "Not a directory"},  {"", "Invalid argument"},
                       {"C:/program", "No such device"}};
  for (const Row& row : kRows) {
    int pid = kUntouched;
    char* arguments[] = {const_cast<char*>("x"), nullptr};
    EXPECT_EQ(KORStartProcess(row.program.c_str(), arguments, false, &pid, nullptr), KORLibNotStarted) << row.program;
    EXPECT_EQ(TakePendingError(E_FAIL), "Cannot start '" + row.program + "': " + row.cause);
    EXPECT_EQ(pid, kUntouched) << row.program;
  }
}

TEST(StartProcess, BareNamesAreSearchedInAbsoluteFoldersOfThePath) {
  const TemporaryFolder folder;
  const std::string name = "vyx_bare_name";
  folder.MakeFolder("first/" + name);
  folder.MakeFolder("bin");
  std::filesystem::create_symlink(VYX_TEST_CHILD, folder.Native("bin/" + name));
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.Native("bin"));
  struct Row {
    std::string path;
    bool isFound;
  };
  const Row kRows[] = {{folder.Native("first") + ":" + folder.Native("bin"), true},
                       {"/usr/bin", false},
                       {".", false},
                       {":/usr/bin::", false},
                       {"../bin", false},
                       {folder.Native("first"), false}};
  for (const Row& row : kRows) {
    const Environment environment(Values{{"PATH", row.path}});
    const Started started = RunProgram(name, {"exit", "6"});
    EXPECT_EQ(started.status == KORLibSuccess, row.isFound) << row.path << started.output;
    EXPECT_EQ(started.exitCode, row.isFound ? 6 : kUntouched) << row.path;
  }
  EXPECT_EQ(RunProgram("./" + name, {"exit", "6"}).exitCode, 6) << "said so, the current folder counts";
  std::filesystem::current_path(before);
}

TEST(StartProcess, TheChildGetsNoDescriptorOfOurs) {
  const int inheritable = ::open("/dev/null", O_RDONLY);
  const Started started = RunProgram(VYX_TEST_CHILD, {"descriptors"});
  ::close(inheritable);
  EXPECT_EQ(started.output, "");
}

TEST(StartProcess, TheChildGetsNoBlockedOrIgnoredSignal) {
  sigset_t terminate;
  sigset_t before;
  ::sigemptyset(&terminate);
  ::sigaddset(&terminate, SIGTERM);
  ::sigprocmask(SIG_BLOCK, &terminate, &before);
  auto* const handler = ::signal(SIGPIPE, SIG_IGN);
  const Started started = RunProgram(VYX_TEST_CHILD, {"signals"});
  ::signal(SIGPIPE, handler);
  ::sigprocmask(SIG_SETMASK, &before, nullptr);
  EXPECT_EQ(started.output, "0 0\n");
}

TEST(StartProcess, HostsThatIgnoreTheirChildrenLoseTheExitCode) {
  const ChildResult child = RunInChild([] {
    ::signal(SIGCHLD, SIG_IGN);
    int pid = kUntouched;
    int exitCode = kUntouched;
    const KORLibStatus status = Util::StartProcess(VYX_TEST_CHILD, ListOf({"exit", "3"}), true, &pid, &exitCode);
    ::_exit(status == KORLibEndUnknown && pid > 1 && exitCode == kUntouched ? 0 : 1);
  });
  EXPECT_TRUE(child.IsGood()) << child.code;
  EXPECT_NE(child.output.find("Cannot learn how '" VYX_TEST_CHILD "' ended: No child processes"), std::string::npos)
      << child.output;
}

TEST(StartProcess, AHostWithoutRoomForProcessesIsAClearFailure) {
  CapturedStdout captured;
  int pid = kUntouched;
  int exitCode = kUntouched;
  {
    const SavedSystemCalls saved;
    Os::Posix::Calls().Spawn = [](pid_t*, const char*, const posix_spawn_file_actions_t*, const posix_spawnattr_t*,
                                  char* const*, char* const*) {
      errno = EAGAIN;
      return -1;
    };
    EXPECT_EQ(Util::StartProcess("/bin/true", ListOf({}), false, &pid, &exitCode), KORLibNotStarted);
  }
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("ERROR", "Cannot start '/bin/true': Resource temporarily unavailable"),
                          FailureReturnIn("VYXInfSystemUtil/start_process.cpp")));
}

}  // namespace
}  // namespace VYX::Test
