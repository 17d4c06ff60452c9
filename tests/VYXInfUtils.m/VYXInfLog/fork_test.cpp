#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <string>
#include <thread>
#include <vector>

#include "VYXInfLog.h"
#include "support/child_process.h"
#include "support/temporary_folder.h"

namespace {

// A parent whose threads log all the time forks again and again; every child logs and ends.
void ForkWhileThreadsLog(int iForks) {
  std::atomic<bool> stop{false};
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 3; ++thread) {
    threads.emplace_back([&stop] {
      while (!stop.load()) {
        VYXInfLog::GetDefaultLogger()->Log(ERROR, "parent");
        // Leaves the locks to the forking thread now and then.
        std::this_thread::sleep_for(std::chrono::microseconds(20));
      }
    });
  }
  for (int fork = 0; fork < iForks; ++fork) {
    const pid_t child = ::fork();
    if (child == 0) {
      ::alarm(60);
      VYXInfLog::GetDefaultLogger()->Log(ERROR, ("child " + std::to_string(fork)).c_str());
      std::_Exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    if (status != 0) {
      std::_Exit(2);
    }
  }
  stop = true;
  for (std::thread& thread : threads) {
    thread.join();
  }
}

void ExpectEachChildOnce(const std::string& iLog, int iForks) {
  for (int fork = 0; fork < iForks; ++fork) {
    const std::string line = "[ERROR] child " + std::to_string(fork) + "\n";
    const std::size_t first = iLog.find(line);
    ASSERT_NE(first, std::string::npos) << fork;
    EXPECT_EQ(iLog.find(line, first + 1), std::string::npos) << fork;
  }
  std::size_t start = 0;
  while (start < iLog.size()) {
    ASSERT_EQ(iLog[start], '[') << iLog.substr(start, 80);
    start = iLog.find('\n', start) + 1;
  }
}

TEST(Fork, ChildrenOfALoggingParentNeitherHangNorDoubleLines) {
  constexpr int kForks = 1000;
  const VYX::Test::TemporaryFolder folder;
  const std::string settings = folder.MakeFile(
      "log.ini", "[Sinks.A]\nDestination=TextFile\nFormat=[%Severity%] %Message%\nFilter=%Severity% = 1\nFileName=" +
                     folder.Native("a.log") + "\n");
  const auto child = VYX::Test::RunInChild([&settings] {
    VYXInfLog::InitFromFile(settings.c_str());
    ForkWhileThreadsLog(kForks);
    VYXInfLog::Close();
  });
  ASSERT_TRUE(child.IsGood()) << child.code << child.error;
  ExpectEachChildOnce(VYX::Test::ContentOf(folder.Native("a.log")), kForks);
}

TEST(Fork, ChildrenOfAParentThatLogsToTheConsoleDoNotHang) {
  const auto child = VYX::Test::RunInChild([] { ForkWhileThreadsLog(200); });
  EXPECT_TRUE(child.IsGood()) << child.code;
}

}  // namespace
