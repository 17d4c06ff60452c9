#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <string>
#include <thread>
#include <vector>

#include "VYXInfLog.h"
#include "concurrency_testing.h"
#include "support/child_process.h"
#include "support/temporary_folder.h"

namespace VYX::Test {
namespace {

TEST(Concurrency, EightProcessesIntoOneFile) {
  const TemporaryFolder folder;
  const std::string settings = FileSettings(folder);
  std::vector<pid_t> children;
  for (int writer = 0; writer < 8; ++writer) {
    const pid_t child = ::fork();
    if (child == 0) {
      VYXInfLog::InitFromFile(settings.c_str());
      WriteNumbered(writer, kProcessLines);
      VYXInfLog::Close();
      std::_Exit(0);
    }
    children.push_back(child);
  }
  for (const pid_t child : children) {
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }
  LineCheck check(8);
  check.Take(ContentOf(folder.Native("a.log")));
  check.ExpectAll(kProcessLines);
}

void IgnoreSignal(int) {}

// Signals whose handler interrupts system calls, without a pause.
TEST(Concurrency, ASignalStormTearsNoLine) {
  const TemporaryFolder folder;
  const std::string settings = FileSettings(folder);
  constexpr int kStormLines = kLines / 5;
  const auto child = RunInChild([&settings] {
    struct sigaction action {};
    action.sa_handler = &IgnoreSignal;
    ::sigaction(SIGUSR1, &action, nullptr);
    VYXInfLog::InitFromFile(settings.c_str());
    std::atomic<bool> stop{false};
    const pthread_t writer = ::pthread_self();
    std::thread storm([&stop, writer] {
      while (!stop.load()) {
        ::pthread_kill(writer, SIGUSR1);
      }
    });
    WriteNumbered(0, kStormLines);
    stop = true;
    storm.join();
    VYXInfLog::Close();
  });
  ASSERT_TRUE(child.IsGood());
  LineCheck check(1);
  check.Take(ContentOf(folder.Native("a.log")));
  check.ExpectAll(kStormLines);
}

}  // namespace
}  // namespace VYX::Test
