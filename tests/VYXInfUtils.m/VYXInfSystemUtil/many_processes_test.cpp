#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "KORSysBase/KORResult.h"
#include "VYXInfLog.h"
#include "VYXInfSystemUtil.h"
#include "process_testing.h"
#include "support/captured_stdout.h"
#include "support/temporary_folder.h"

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define VYX_TEST_IS_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define VYX_TEST_IS_SANITIZED 1
#endif
#endif

namespace VYX::Test {
namespace {

using Util = VYXInfSystemUtil;

constexpr int kThreads = 8;
#if defined(VYX_TEST_IS_SANITIZED) || defined(VYX_TEST_STARTS_ARE_SLOW)
constexpr int kStartsPerThread = 25;
#else
constexpr int kStartsPerThread = 1250;
#endif

// Starts programs by turns: waited for, not waited for, missing.
void StartMany(std::atomic<int>& ioWrong) {
  const KORListValKORUnicodeString none;
  for (int number = 0; number < kStartsPerThread; ++number) {
    const bool isMissing = number % 50 == 49;
    const bool isWaitedFor = number % 2 == 0;
    int pid = -1;
    int exitCode = -1;
    const KORLibStatus status = Util::StartProcess(isMissing ? VYX_TEST_FAILING "_of_none" : VYX_TEST_FAILING, none,
                                                   isWaitedFor, &pid, &exitCode);
    const bool isRight =
        isMissing ? status == KORLibNotStarted && pid == -1
                  : status == KORLibSuccess && pid > 1 && exitCode == (isWaitedFor ? VYX_TEST_FAILING_CODE : -1);
    ioWrong += isRight ? 0 : 1;
  }
}

TEST(ManyProcesses, LeaveNoDeadEntryAndNoDescriptor) {
  const ConsoleLevel silent(FATAL);
  const int descriptors = CountOpenDescriptors();
  std::atomic<int> wrong = 0;
  std::vector<std::thread> threads;
  for (int count = 0; count < kThreads; ++count) {
    threads.emplace_back([&] { StartMany(wrong); });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(wrong, 0);
  // The last ones may still run; each listing hears of those that have ended.
  std::vector<Util::ProcessInfo> children;
  do {
    children.clear();
    ASSERT_EQ(Util::GetSubProcesses(children, OwnProcess(), "*"), S_OK);
  } while (!children.empty());
  Util::GetSubProcesses(children, OwnProcess(), "*");
  EXPECT_TRUE(HostChildrenOf(OwnProcess()).empty());
  EXPECT_EQ(CountOpenDescriptors(), descriptors);
}

TEST(ManyProcesses, ListingAndKillingGoOnMeanwhile) {
  const ConsoleLevel silent(FATAL);
  std::atomic<bool> isOver = false;
  std::thread lister([&] {
    while (!isOver) {
      std::vector<Util::ProcessInfo> children;
      EXPECT_EQ(Util::GetSubProcesses(children, OwnProcess(), "*"), S_OK);
    }
  });
  for (int count = 0; count < 20; ++count) {
    int pid = 0;
    int exitCode = 0;
    KORListValKORUnicodeString arguments;
    arguments.Append("pause");
    EXPECT_EQ(Util::StartProcess(VYX_TEST_CHILD, arguments, false, &pid, &exitCode), KORLibSuccess);
    EXPECT_EQ(Util::KillProcess(pid), S_OK);
  }
  isOver = true;
  lister.join();
}

}  // namespace
}  // namespace VYX::Test
