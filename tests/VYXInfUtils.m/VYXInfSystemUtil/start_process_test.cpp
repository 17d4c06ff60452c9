#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "KORSysBase/KORProcess.h"
#include "KORSysBase/KORResult.h"
#include "VYXInfLog.h"
#include "VYXInfSystemUtil.h"
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

constexpr int kUntouched = -77;

struct Started {
  KORLibStatus status;
  int pid = kUntouched;
  int exitCode = kUntouched;
  std::string output = {};
};

KORListValKORUnicodeString ListOf(const std::vector<std::string>& iTexts) {
  KORListValKORUnicodeString list;
  for (const std::string& text : iTexts) {
    list.Append(KORUnicodeString(std::string_view(text)));
  }
  return list;
}

Started RunProgram(const std::string& iProgram, const std::vector<std::string>& iArguments) {
  CapturedStdout captured;
  Started started{KORLibSuccess};
  started.status = Util::StartProcess(KORUnicodeString(std::string_view(iProgram)), ListOf(iArguments), true,
                                      &started.pid, &started.exitCode);
  started.output = captured.Text();
  return started;
}

TEST(StartProcess, ArgumentsArriveByteForByte) {
  const std::vector<std::string> arguments = {"echo",
                                              "",
                                              " ",
                                              "two words",
                                              "\"quoted\"",
                                              "'single'",
                                              "back\\slash\\",
                                              "\\\\\"",
                                              "line\nbreak\r\ttab",
                                              "-dash",
                                              "--",
                                              "$HOME `id` %PATH% *?[a]~ ; & | < > ! ^ #",
                                              "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80",
                                              "not \xFF\xFE UTF-8",
                                              std::string(100'000, 'x'),
                                              ""};
  const Started started = RunProgram(VYX_TEST_CHILD, arguments);
  std::string expected = std::string(VYX_TEST_CHILD) + '\0';
  for (const std::string& argument : arguments) {
    expected += argument + '\0';
  }
  EXPECT_EQ(started.status, KORLibSuccess);
  EXPECT_EQ(started.exitCode, 0);
  EXPECT_EQ(started.output, expected);
}

TEST(StartProcess, WithoutArgumentsTheProgramKnowsItsName) {
  EXPECT_EQ(RunProgram(VYX_TEST_CHILD, {}).exitCode, 2);
}

TEST(StartProcess, TellsExitCodesAndSignalsApart) {
  struct Row {
    const char* mode;
    const char* number;
    int exitCode;
  };
  const Row kRows[] = {{"exit", "0", 0},     {"exit", "1", 1},    {"exit", "137", 137},
                       {"exit", "255", 255}, {"signal", "9", -9}, {"signal", "15", -15}};
  for (const Row& row : kRows) {
    const Started started = RunProgram(VYX_TEST_CHILD, {row.mode, row.number});
    EXPECT_EQ(started.status, KORLibSuccess) << row.mode << " " << row.number;
    EXPECT_EQ(started.exitCode, row.exitCode) << row.mode << " " << row.number;
    EXPECT_GT(started.pid, 1);
  }
}

TEST(StartProcess, LogsAtDebugWhenWaiting) {
  const ConsoleLevel level(DEBUG);
  CapturedStdout captured;
  int pid = 0;
  int exitCode = 0;
  EXPECT_EQ(Util::StartProcess(VYX_TEST_CHILD, ListOf({"exit", "7"}), true, &pid, &exitCode), KORLibSuccess);
  EXPECT_THAT(
      captured.LogLines(),
      ElementsAre(Line("DEBUG", "STARTING and WAITING for child process:     " VYX_TEST_CHILD " exit 7"),
                  Line("DEBUG", "child process  [FINISHED]  (PID " + std::to_string(pid) + ")   (exit status 7)   ")));
}

TEST(StartProcess, LogsAtDebugWhenNotWaiting) {
  const ConsoleLevel level(DEBUG);
  CapturedStdout captured;
  int pid = 0;
  int exitCode = 55;
  EXPECT_EQ(Util::StartProcess(VYX_TEST_CHILD, ListOf({}), false, &pid, &exitCode), KORLibSuccess);
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("DEBUG", "STARTING child process:     " VYX_TEST_CHILD " "),
                                               Line("DEBUG", "child process  [STARTED]  (PID " + std::to_string(pid) +
                                                                 ")   (exit status 55)   ")));
  EXPECT_EQ(exitCode, 55) << "nothing is known of the end";
}

TEST(StartProcess, IsSilentBelowDebug) {
  CapturedStdout captured;
  int pid = 0;
  int exitCode = 0;
  EXPECT_EQ(Util::StartProcess(VYX_TEST_CHILD, ListOf({"exit", "1"}), true, &pid, &exitCode), KORLibSuccess);
  EXPECT_EQ(captured.Text(), "");
}

TEST(StartProcess, AMissingProgramFailsAtTheStart) {
  const ConsoleLevel level(DEBUG);
  CapturedStdout captured;
  int pid = kUntouched;
  int exitCode = kUntouched;
  EXPECT_EQ(Util::StartProcess("/no/such/program", ListOf({"a", "b"}), true, &pid, &exitCode), KORLibNotStarted);
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("DEBUG", "STARTING and WAITING for child process:     /no/such/program a b"),
                          Line("DEBUG", "child process  [START FAILED]  (PID -77)   (exit status -77)   "),
                          Line("ERROR", "Cannot start '/no/such/program': No such file or directory"),
                          FailureReturnIn("VYXInfSystemUtil/start_process.cpp")));
  EXPECT_EQ(pid, kUntouched);
  EXPECT_EQ(exitCode, kUntouched);
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

TEST(StartProcess, TooManyArgumentsFailAtTheStart) {
  CapturedStdout captured;
  int pid = kUntouched;
  int exitCode = kUntouched;
  EXPECT_EQ(Util::StartProcess(VYX_TEST_CHILD, ListOf({"echo", std::string(1 << 20, 'x')}), true, &pid, &exitCode),
            KORLibNotStarted);
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("ERROR", "Cannot start '" VYX_TEST_CHILD "': Argument list too long"),
                          FailureReturnIn("VYXInfSystemUtil/start_process.cpp")));
}

TEST(StartProcess, ZeroBytesAreRefused) {
  const std::string name = std::string(VYX_TEST_CHILD) + '\0' + "x";
  for (const bool isInName : {true, false}) {
    const Started started =
        isInName ? RunProgram(name, {"exit", "0"}) : RunProgram(VYX_TEST_CHILD, {"exit", std::string("0\0 1", 4)});
    EXPECT_EQ(started.status, KORLibNotStarted);
    EXPECT_EQ(started.pid, kUntouched);
    EXPECT_NE(started.output.find("Cannot start '" VYX_TEST_CHILD "': a text holds a zero byte"), std::string::npos)
        << started.output;
  }
}

TEST(StartProcess, NullArgumentsAreRefused) {
  char* none[] = {nullptr};
  EXPECT_EQ(KORStartProcess(nullptr, none, true, nullptr, nullptr), KORLibNotStarted);
  EXPECT_EQ(KORStartProcess("/bin/true", nullptr, true, nullptr, nullptr), KORLibNotStarted);
  EXPECT_EQ(KORStartProcess("/bin/true", none, true, nullptr, nullptr), KORLibNotStarted);
  EXPECT_EQ(TakePendingError(E_FAIL), "Cannot start '/bin/true': Invalid argument");
}

TEST(StartProcess, BothSeparatorsNameTheProgram) {
  std::string program(VYX_TEST_CHILD);
  for (char& character : program) {
    character = character == '/' ? '\\' : character;
  }
  const Started started = RunProgram(program, {"exit", "5"});
  EXPECT_EQ(started.exitCode, 5) << started.output;
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

TEST(StartProcess, OutputKeepsItsOrder) {
  CapturedStdout captured;
  int pid = 0;
  int exitCode = 0;
  std::printf("before ");
  Util::StartProcess("/bin/echo", ListOf({"between"}), true, &pid, &exitCode);
  std::printf("behind");
  EXPECT_EQ(captured.Text(), "before between\nbehind");
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

TEST(GetExecutablePath, LongAndForeignFoldersAreToldWhole) {
  const TemporaryFolder folder;
  std::string relative = "\xC3\xA9t\xC3\xA9 \xE6\x97\xA5\xE6\x9C\xAC";
  while (relative.size() < 1500) {
    relative += "/" + std::string(100, 'd') + "\xF0\x9F\x98\x80";
  }
  folder.MakeFolder(relative);
  const std::string program = folder.Native(relative) + "/child.program";
  std::filesystem::copy_file(VYX_TEST_CHILD, program);
  std::string expected = std::filesystem::canonical(folder.Native(relative)).string();
  for (char& character : expected) {
    character = character == '/' ? '\\' : character;
  }
  const Started started = RunProgram(program, {"folder"});
  EXPECT_EQ(started.exitCode, 0);
  EXPECT_EQ(started.output, expected);
}

}  // namespace
}  // namespace VYX::Test
