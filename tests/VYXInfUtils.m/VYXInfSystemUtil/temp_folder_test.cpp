#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <functional>
#include <thread>
#include <utility>
#include <vector>

#include "VYXInfSystemUtil.h"
#include "support/captured_stdout.h"
#include "support/injected_faults.h"
#include "support/temporary_folder.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using VYX::Test::CapturedStdout;
using VYX::Test::FailureLogIn;
using VYX::Test::Line;
using VYX::Test::LogLine;

constexpr const char* kVariables[] = {"TMP", "TEMP", "TMPDIR", "TEMPDIR", "USERPROFILE"};
constexpr const char* kSearching =
    "KORGetTempDirectory did not return a value.  Searching for a different TEMP folder path ...";

// The folder is found once per process, so each check has a process of its own; it starts without the variables.
bool HoldsInAFreshProcess(const std::function<void()>& iCheck) {
  const pid_t child = ::fork();
  if (child == 0) {
    for (const char* const variable : kVariables) {
      ::unsetenv(variable);
    }
    try {
      iCheck();
    } catch (const std::exception& exception) {
      ADD_FAILURE() << exception.what();
    }
    ::_exit(::testing::Test::HasFailure() ? 1 : 0);
  }
  int status = -1;
  return child != -1 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// Makes the host's own folder for temporary files disappear.
void HideTheUsualFolder() {
  VYX::Os::Posix::Calls().StatPath = [](const char* iPath, struct stat* oInfo) {
    if (std::strcmp(iPath, "/tmp") == 0) {
      errno = ENOENT;
      return -1;
    }
    return ::stat(iPath, oInfo);
  };
}

struct Answer {
  std::string path;
  std::vector<LogLine> lines;
};

// Asks with a variable set, and says nothing of it to the capture, which needs a folder too.
Answer Ask(const std::vector<std::pair<const char*, std::string>>& iVariables) {
  ::unsetenv("TMPDIR");
  CapturedStdout captured;
  for (const auto& [name, value] : iVariables) {
    ::setenv(name, value.c_str(), 1);
  }
  const KORUnicodeString path = VYXInfSystemUtil::GetTempFolderPath();
  return {path.ConvertToChar(), captured.LogLines()};
}

std::string WithBackslashes(std::string iPath) {
  for (char& character : iPath) {
    character = character == '/' ? '\\' : character;
  }
  return iPath;
}

LogLine Valid(const std::string& iPath) {
  return {"INFO", "TEMP folder is valid.     [" + iPath + "] "};
}

TEST(GetTempFolderPath, TakesThePlatformsFolderOnce) {
  const VYX::Test::TemporaryFolder folder;
  EXPECT_TRUE(HoldsInAFreshProcess([&] {
    const std::string expected = WithBackslashes(folder.Native());
    const Answer first = Ask({{"TMPDIR", folder.Native() + "//"}, {"TMP", "/elsewhere"}});
    EXPECT_EQ(first.path, expected);
    EXPECT_THAT(first.lines, ElementsAre(Valid(expected)));
    const Answer second = Ask({{"TMPDIR", "/"}});
    EXPECT_EQ(second.path, expected);
    EXPECT_THAT(second.lines, IsEmpty());
  }));
}

TEST(GetTempFolderPath, TakesTheUsualFolderWhereNoneIsChosenWell) {
  for (const char* const chosen : {"", "relative", "/does/not/exist", "/proc/self/status"}) {
    EXPECT_TRUE(HoldsInAFreshProcess([&] { EXPECT_EQ(Ask({{"TMPDIR", chosen}}).path, "\\tmp") << chosen; }));
  }
}

TEST(GetTempFolderPath, SearchesTheVariablesInOrder) {
  const VYX::Test::TemporaryFolder folder;
  for (std::size_t first = 0; first < std::size(kVariables); ++first) {
    EXPECT_TRUE(HoldsInAFreshProcess([&] {
      HideTheUsualFolder();
      std::vector<std::pair<const char*, std::string>> variables;
      for (std::size_t next = first; next < std::size(kVariables); ++next) {
        variables.emplace_back(kVariables[next], next == first ? folder.Native() + "//" : "/other");
      }
      // TMPDIR is the platform's own as well, which must not take it here.
      if (first == 2) {
        variables.front().second = "relative";
      }
      const Answer answer = Ask(variables);
      if (first == 2) {
        EXPECT_EQ(answer.path, "relative");
        return;
      }
      const std::string expected = WithBackslashes(folder.Native());
      EXPECT_EQ(answer.path, expected) << kVariables[first];
      EXPECT_THAT(answer.lines, ElementsAre(LogLine{"WARN", kSearching}, Valid(expected)));
    }));
  }
}

TEST(GetTempFolderPath, AnswersAMissingFolderOnceAndSearchesAgain) {
  const VYX::Test::TemporaryFolder folder;
  EXPECT_TRUE(HoldsInAFreshProcess([&] {
    HideTheUsualFolder();
    const Answer first = Ask({{"TEMP", "/does/not/exist/"}});
    EXPECT_EQ(first.path, "\\does\\not\\exist");
    EXPECT_THAT(first.lines,
                ElementsAre(LogLine{"WARN", kSearching},
                            Line("ERROR", "Cannot open the folder '\\does\\not\\exist': No such file or directory"),
                            FailureLogIn("VYXInfSystemUtil"),
                            Line("WARN", "The TEMP folder path IS N/A !     [\\does\\not\\exist] ")));
    EXPECT_EQ(Ask({{"TEMP", folder.Native()}}).path, WithBackslashes(folder.Native()));
  }));
}

TEST(GetTempFolderPath, AnswersNothingWhereNothingIsSet) {
  EXPECT_TRUE(HoldsInAFreshProcess([] {
    HideTheUsualFolder();
    const Answer answer = Ask({});
    EXPECT_EQ(answer.path, "");
    EXPECT_EQ(answer.lines.size(), 4U);
    EXPECT_THAT(answer.lines.back(), Line("WARN", "The TEMP folder path IS N/A !     [] "));
  }));
}

TEST(GetTempFolderPath, IsFoundBySeveralThreadsAtOnce) {
  const CapturedStdout captured;
  std::vector<std::string> paths(4);
  std::vector<std::thread> threads;
  for (std::string& path : paths) {
    threads.emplace_back([&path] { path = VYXInfSystemUtil::GetTempFolderPath().ConvertToChar(); });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_THAT(paths, ::testing::Each(VYXInfSystemUtil::GetTempFolderPath().ConvertToChar()));
}

}  // namespace
