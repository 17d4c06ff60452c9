#include "platform/os/console.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <functional>
#include <string>

#include "support/captured_stdout.h"
#include "support/injected_faults.h"

namespace VYX::Os {
namespace {

// Runs in a child, which answers with its exit code: 0 when the check held and no signal ended it.
int RunInChild(const std::function<bool()>& iCheck) {
  const pid_t child = ::fork();
  if (child == 0) {
    ::_exit(iCheck() ? 0 : 1);
  }
  int status = -1;
  ::waitpid(child, &status, 0);
  return status;
}

void BreakStandardOutput() {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  ::dup2(ends[1], STDOUT_FILENO);
  ::close(ends[0]);
  ::close(ends[1]);
}

TEST(Console, KeepsTheOrderWithStdio) {
  VYX::Test::CapturedStdout captured;
  std::fputs("first ", stdout);
  WriteConsole("second ");
  std::fputs("third", stdout);
  EXPECT_EQ(captured.Text(), "first second third");
}

TEST(Console, WritesEverythingThroughShortAndInterruptedWrites) {
  VYX::Test::CapturedStdout captured;
  const std::string text(10'000, 'x');
  {
    const VYX::Test::ShortTransfers transfers(7);
    WriteConsole(text);
  }
  EXPECT_EQ(captured.Text(), text);
}

TEST(Console, BrokenOutputEndsNothing) {
  EXPECT_EQ(RunInChild([] {
              ::signal(SIGPIPE, SIG_DFL);
              BreakStandardOutput();
              errno = 77;
              WriteConsole("lost");
              WriteConsole("lost");
              sigset_t pending;
              sigpending(&pending);
              return errno == 77 && sigismember(&pending, SIGPIPE) == 0;
            }),
            0);
}

TEST(Console, SignalThatWasPendingStaysSo) {
  EXPECT_EQ(RunInChild([] {
              sigset_t brokenPipe;
              sigemptyset(&brokenPipe);
              sigaddset(&brokenPipe, SIGPIPE);
              pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
              ::raise(SIGPIPE);
              BreakStandardOutput();
              WriteConsole("lost");
              sigset_t pending;
              sigpending(&pending);
              return sigismember(&pending, SIGPIPE) == 1;
            }),
            0);
}

TEST(Console, ClosedOutputIsNoMatter) {
  EXPECT_EQ(RunInChild([] {
              ::close(STDOUT_FILENO);
              WriteConsole("lost");
              return true;
            }),
            0);
}

}  // namespace
}  // namespace VYX::Os
