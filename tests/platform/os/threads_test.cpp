#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <thread>
#include <vector>

#include "platform/os/process_identity.h"
#include "platform/os/thread_slot.h"

namespace VYX::Os {
namespace {

TEST(ProcessIdentity, ThreadsHaveNumbersOfTheirOwn) {
  EXPECT_EQ(CurrentProcessId(), ::getpid());
  EXPECT_EQ(CurrentThreadId(), MainThreadId());
  EXPECT_EQ(CurrentThreadId(), CurrentThreadId());
  std::uint32_t other = 0;
  std::thread([&] { other = CurrentThreadId(); }).join();
  EXPECT_NE(other, 0U);
  EXPECT_NE(other, CurrentThreadId());
}

TEST(ProcessIdentity, ForkedChildHasItsOwn) {
  const std::uint32_t parent = CurrentThreadId();
  const pid_t child = ::fork();
  if (child == 0) {
    const bool isRight = CurrentProcessId() == ::getpid() && CurrentThreadId() != parent &&
                         CurrentThreadId() == static_cast<std::uint32_t>(::getpid()) &&
                         MainThreadId() == CurrentThreadId();
    ::_exit(isRight ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

std::atomic<int> gReleased{0};
void Release(void* iValue) {
  gReleased.fetch_add(*static_cast<int*>(iValue));
}

TEST(ThreadSlot, HoldsOnePointerAThreadAndReleasesItAtTheEnd) {
  gReleased = 0;
  int mine = 100;
  {
    ThreadSlot slot(Release);
    EXPECT_EQ(slot.Get(), nullptr);
    ASSERT_TRUE(slot.Set(&mine));
    constexpr int kThreads = 8;
    int values[kThreads];
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
      values[i] = 1;
      threads.emplace_back([&slot, &value = values[i]] {
        EXPECT_EQ(slot.Get(), nullptr);
        EXPECT_TRUE(slot.Set(&value));
        EXPECT_EQ(slot.Get(), &value);
      });
    }
    for (std::thread& thread : threads) {
      thread.join();
    }
    EXPECT_EQ(gReleased.load(), kThreads);
    EXPECT_EQ(slot.Get(), &mine);
  }
  EXPECT_EQ(gReleased.load(), 108);
}

TEST(ThreadSlot, NullIsNotReleased) {
  gReleased = 0;
  int value = 1;
  {
    ThreadSlot slot(Release);
    std::thread([&] {
      EXPECT_TRUE(slot.Set(&value));
      EXPECT_TRUE(slot.Set(nullptr));
    }).join();
  }
  EXPECT_EQ(gReleased.load(), 0);
}

}  // namespace
}  // namespace VYX::Os
