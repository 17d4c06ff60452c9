#include "platform/os/posix/child_registry.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>

namespace VYX::Test {
namespace {

using Os::Posix::HearOfEndedChildren;
using Os::Posix::RememberChild;

constexpr std::uint64_t kUnknown = 0;

std::uint64_t StartedAtTen(pid_t) {
  return 10;
}

std::uint64_t StartedUnknown(pid_t) {
  return kUnknown;
}

pid_t EndedChild() {
  const pid_t child = ::fork();
  if (child == 0) {
    ::_exit(5);
  }
  siginfo_t info = {};
  EXPECT_EQ(::waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT), 0);
  return child;
}

// True when nobody has heard of the child's end; hears of it.
bool IsStillThere(pid_t iChild) {
  return ::waitpid(iChild, nullptr, 0) == iChild;
}

TEST(ChildRegistry, HearsOfRememberedChildren) {
  const pid_t child = EndedChild();
  RememberChild(child, 10);
  HearOfEndedChildren(StartedAtTen);
  EXPECT_FALSE(IsStillThere(child));
}

TEST(ChildRegistry, AnotherChildOfTheSameNumberIsLeftAlone) {
  const pid_t child = EndedChild();
  RememberChild(child, 9);
  HearOfEndedChildren(StartedAtTen);
  EXPECT_TRUE(IsStillThere(child));
}

TEST(ChildRegistry, AnUnknownStartTimeIsTrusted) {
  const pid_t first = EndedChild();
  RememberChild(first, kUnknown);
  HearOfEndedChildren(StartedAtTen);
  EXPECT_FALSE(IsStillThere(first));
  const pid_t second = EndedChild();
  RememberChild(second, 10);
  HearOfEndedChildren(StartedUnknown);
  EXPECT_FALSE(IsStillThere(second));
}

TEST(ChildRegistry, ChildrenThatRunAreKept) {
  int pipe[2];
  ASSERT_EQ(::pipe(pipe), 0);
  const pid_t running = ::fork();
  if (running == 0) {
    ::close(pipe[1]);
    char byte = 0;
    ::_exit(::read(pipe[0], &byte, 1) == 0 ? 0 : 1);
  }
  RememberChild(running, 10);
  const pid_t ended = EndedChild();
  RememberChild(ended, 10);
  HearOfEndedChildren(StartedAtTen);
  EXPECT_FALSE(IsStillThere(ended));
  EXPECT_EQ(::waitpid(running, nullptr, WNOHANG), 0) << "it runs";
  ::close(pipe[0]);
  ::close(pipe[1]);
  siginfo_t info = {};
  EXPECT_EQ(::waitid(P_PID, static_cast<id_t>(running), &info, WEXITED | WNOWAIT), 0);
  HearOfEndedChildren(StartedAtTen);
  EXPECT_FALSE(IsStillThere(running));
}

}  // namespace
}  // namespace VYX::Test
