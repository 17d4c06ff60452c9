#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "KORSysBase/KORProcess.h"
#include "KORSysBase/KORResult.h"
#include "VYXInfSystemUtil.h"
#include "process_testing.h"
#include "support/captured_stdout.h"
#include "support/catalog_folder.h"
#include "support/pending_error.h"
#include "support/temporary_folder.h"
#include "support/windows/process_faults.h"

namespace VYX::Test {
namespace {

using ::testing::ElementsAre;

using Util = VYXInfSystemUtil;
using Values = std::map<std::string, std::string>;

std::string Echoed(const std::vector<std::string>& iArguments) {
  std::string text = std::string(VYX_TEST_CHILD) + '\0';
  for (const std::string& argument : iArguments) {
    text += argument + '\0';
  }
  return text;
}

std::string ToUtf8(char32_t iCharacter) {
  KORUnicodeString text;
  text.Append(KORUnicodeChar(iCharacter));
  return text.ConvertToChar();
}

// One of what quoting has to do with, or any other character.
std::string RandomPiece(std::mt19937& ioRandom) {
  static const std::vector<std::string> kPieces = {
      "\"", "\\",   "\\\\", " ", "\t",       "\n", "\"\"", "\\\"", "*", "?", "'", "%PATH%", "^", "&", "|", "<", ">",
      "!",  "@foo", "-",    "/", "\xC3\xA9", "a",  "b c",  ".",    "~", "$", "`", "(",      ")", ";", "=", ",", "\x7F"};
  if (ioRandom() % 4 != 0) {
    return kPieces[ioRandom() % kPieces.size()];
  }
  const char32_t character = ioRandom() % 0x10FFFF + 1;
  return ToUtf8(character >= 0xD800 && character <= 0xDFFF ? U'x' : character);
}

std::string RandomArgument(std::mt19937& ioRandom) {
  std::string argument;
  for (std::uint32_t left = ioRandom() % 12; left > 0; --left) {
    argument += RandomPiece(ioRandom);
  }
  return argument;
}

TEST(StartProcess, TenThousandRandomArgumentsArrive) {
  constexpr int kChildren = 20;
  constexpr int kArgumentsEach = 500;
  std::mt19937 random(20261122);
  for (int child = 0; child < kChildren; ++child) {
    std::vector<std::string> arguments = {"echo"};
    for (int count = 0; count < kArgumentsEach; ++count) {
      arguments.push_back(RandomArgument(random));
    }
    const Started started = RunProgram(VYX_TEST_CHILD, arguments);
    ASSERT_EQ(started.status, KORLibSuccess) << "child " << child;
    ASSERT_EQ(started.output, Echoed(arguments)) << "child " << child;
  }
}

TEST(StartProcess, BatchFilesAreRefused) {
  const TemporaryFolder folder;
  const std::string batch = folder.MakeFile("run.bat", "@exit 0\n");
  folder.MakeFile("run.cmd", "@exit 0\n");
  const std::vector<std::string> kRows = {
      batch,           folder.Native("RUN.BAT"), folder.Native("run.cmd"),  batch + ".", batch + " ",
      batch + ". . .", batch + "::$DATA",        folder.Native("gone.Cmd"), "bare.bat",  "run.cmd ..."};
  for (const std::string& program : kRows) {
    int pid = kUntouched;
    char* arguments[] = {const_cast<char*>("x"), const_cast<char*>("\"&calc"), nullptr};
    EXPECT_EQ(KORStartProcess(program.c_str(), arguments, false, &pid, nullptr), KORLibNotStarted) << program;
    EXPECT_EQ(TakePendingError(E_FAIL), "Cannot start '" + program + "': Batch files are not started");
    EXPECT_EQ(pid, kUntouched) << program;
  }
}

// A program whose name merely holds such an extension is one like any other.
TEST(StartProcess, NamesThatOnlyLookLikeBatchFilesAreStarted) {
  const TemporaryFolder folder;
  for (const char* const name : {"run.bat.exe", "cmd.exe", "bat.exe", "run.batch"}) {
    std::filesystem::copy_file(VYX_TEST_CHILD, folder.Native(name));
    EXPECT_EQ(RunProgram(folder.Native(name), {"exit", "4"}).exitCode, 4) << name;
  }
}

TEST(StartProcess, WhatCannotRunFailsAtTheStart) {
  const TemporaryFolder folder;
  const std::string noProgram = folder.MakeFile("no_program.exe", "neither a program nor anything else\n");
  struct Row {
    std::string program;
    const char* cause;
  };
  const Row kRows[] = {{folder.Native(), "Permission denied"},
                       {noProgram, "Exec format error"},
                       {folder.Native("gone.exe"), "No such file or directory"},
                       {"", "Invalid argument"}};
  for (const Row& row : kRows) {
    int pid = kUntouched;
    char* arguments[] = {const_cast<char*>("x"), nullptr};
    EXPECT_EQ(KORStartProcess(row.program.c_str(), arguments, false, &pid, nullptr), KORLibNotStarted) << row.program;
    EXPECT_EQ(TakePendingError(E_FAIL), "Cannot start '" + row.program + "': " + row.cause);
    EXPECT_EQ(pid, kUntouched) << row.program;
  }
}

TEST(StartProcess, TextsThatTheHostCannotPassOnAreRefused) {
  const std::vector<std::string> kRows = {"not \xFF UTF-8", "half a pair \xED\xA0\x80", std::string(40'000, 'x')};
  for (const std::string& row : kRows) {
    CapturedStdout captured;
    int pid = kUntouched;
    int exitCode = kUntouched;
    EXPECT_EQ(Util::StartProcess(VYX_TEST_CHILD, ListOf({"echo", row}), true, &pid, &exitCode), KORLibNotStarted);
    EXPECT_THAT(captured.Text(), ::testing::HasSubstr("Cannot start '" VYX_TEST_CHILD "': "));
    EXPECT_EQ(pid, kUntouched);
  }
}

TEST(StartProcess, BareNamesAreSearchedInAbsoluteFoldersOfThePath) {
  const TemporaryFolder folder;
  folder.MakeFolder("first/vyx_bare_name.exe");
  folder.MakeFolder("bin");
  std::filesystem::copy_file(VYX_TEST_CHILD, folder.Native("bin/vyx_bare_name.exe"));
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.Native("bin"));
  struct Row {
    std::string path;
    bool isFound;
  };
  const Row kRows[] = {{folder.Native("first") + ";" + folder.Native("bin"), true},
                       {"\"" + folder.Native("bin") + "\"", true},
                       {"C:\\windows", false},
                       {".", false},
                       {";C:\\windows;;", false},
                       {"..\\bin", false},
                       {folder.Native("first"), false}};
  for (const Row& row : kRows) {
    const Environment environment(Values{{"PATH", row.path}});
    for (const char* const name : {"vyx_bare_name", "vyx_bare_name.exe"}) {
      const Started started = RunProgram(name, {"exit", "6"});
      EXPECT_EQ(started.status == KORLibSuccess, row.isFound) << row.path << started.output;
      EXPECT_EQ(started.exitCode, row.isFound ? 6 : kUntouched) << row.path;
    }
  }
  EXPECT_EQ(RunProgram(".\\vyx_bare_name", {"exit", "6"}).exitCode, 6) << "said so, the current folder counts";
  std::filesystem::current_path(before);
}

TEST(StartProcess, TheChildGetsNoHandleOfOurs) {
  const TemporaryFolder folder;
  const std::filesystem::path path(folder.MakeFile("careless", "x"));
  void* const inheritable = OpenInheritable(path.c_str());
  const auto number = reinterpret_cast<std::uintptr_t>(inheritable);
  const Started started = RunProgram(VYX_TEST_CHILD, {"descriptors", std::to_string(number)});
  CloseHandleOf(inheritable);
  EXPECT_EQ(started.exitCode, 0);
  EXPECT_EQ(started.output.find("careless"), std::string::npos) << started.output;
}

TEST(StartProcess, FaultsAreTheNumbersOfTheHost) {
  EXPECT_EQ(RunProgram(VYX_TEST_CHILD, {"signal", "-1073741819"}).exitCode, -1073741819);  // 0xC0000005
}

TEST(StartProcess, AHostWithoutRoomForProcessesIsAClearFailure) {
  CapturedStdout captured;
  int pid = kUntouched;
  int exitCode = kUntouched;
  {
    const SavedProcessCalls saved;
    Os::Windows::gProcessCalls.CreateProcess = [](const wchar_t*, wchar_t*, void*, void*) {
      return FailWith(kAccessDenied), false;
    };
    EXPECT_EQ(Util::StartProcess(VYX_TEST_CHILD, ListOf({}), false, &pid, &exitCode), KORLibNotStarted);
  }
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("ERROR", "Cannot start '" VYX_TEST_CHILD "': Permission denied"),
                                               FailureReturnIn("VYXInfSystemUtil/start_process.cpp")));
}

}  // namespace
}  // namespace VYX::Test
