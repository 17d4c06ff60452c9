#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "KORSysBase/KORProcess.h"
#include "KORSysBase/KORResult.h"
#include "VYXInfLog.h"
#include "VYXInfSystemUtil.h"
#include "process_testing.h"
#include "support/captured_stdout.h"
#include "support/pending_error.h"
#include "support/temporary_folder.h"

namespace VYX::Test {
namespace {

using ::testing::ElementsAre;

using Util = VYXInfSystemUtil;

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
                                              std::string(30'000, 'x'),
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

TEST(StartProcess, TellsTheExitCode) {
  struct Row {
    const char* mode;
    const char* number;
    int exitCode;
  };
  const Row kRows[] = {{"exit", "0", 0}, {"exit", "1", 1}, {"exit", "137", 137}, {"exit", "255", 255}};
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

TEST(StartProcess, OutputKeepsItsOrder) {
  CapturedStdout captured;
  int pid = 0;
  int exitCode = 0;
  std::printf("before ");
  Util::StartProcess(VYX_TEST_CHILD, ListOf({"echo"}), true, &pid, &exitCode);
  std::printf("behind");
  const std::string_view child(VYX_TEST_CHILD "\0echo", sizeof VYX_TEST_CHILD "\0echo");
  EXPECT_EQ(captured.Text(), "before " + std::string(child) + "behind");
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
