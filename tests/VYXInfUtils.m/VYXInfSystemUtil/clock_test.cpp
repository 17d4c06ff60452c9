#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "KORSysTS/KORThreads.h"
#include "VYXInfSystemUtil.h"
#include "support/host.h"
#include "support/settled_clock.h"

namespace VYX::Test {
namespace {

using Util = VYXInfSystemUtil;

TEST(Clocks, MicrosecondsAreTheExactQuotient) {
  struct Row {
    std::timespec time;
    std::uint64_t microseconds;
  };
  // The third product of counter and 1,000,000 would not fit into 64 bits.
  const Row kRows[] = {{{0, 0}, 0},
                       {{1, 999'999'999}, 1'999'999},
                       {{1'000'000'000, 123'456'789}, 1'000'000'000'123'456},
                       {{90'000'000'000, 999'999'900}, 90'000'000'000'999'999}};
  for (const Row& row : kRows) {
    const SettledClock clock(row.time);
    EXPECT_EQ(Util::GetTimeInMicroseconds(), row.microseconds);
  }
}

TEST(Clocks, ElapsedSecondsCountFromTheFirstCall) {
  SettledClock clock({1'000'000, 0});
  const double first = Util::GetElapsedSeconds(0.0);
  EXPECT_GE(first, 0.0);
  clock.Set({1'000'012, 345'678'000});
  EXPECT_DOUBLE_EQ(Util::GetElapsedSeconds(first), 12.345678);
  EXPECT_DOUBLE_EQ(Util::GetElapsedSeconds(first + 2.0), 10.345678);
}

TEST(Clocks, StartTimeIsStableAndTheCurrentOneIsNot) {
  SettledClock clock({1'000'000'000, 0});
  const KORUnicodeString start = Util::GetStartDateTimeString("%Y-%m-%d %H-%M-%S");
  const KORUnicodeString now = Util::GetCurrentDateTimeString("%H-%M-%S");
  clock.Set({1'000'000'003, 0});
  EXPECT_EQ(Util::GetStartDateTimeString("%Y-%m-%d %H-%M-%S"), start);
  EXPECT_FALSE(Util::GetCurrentDateTimeString("%H-%M-%S") == now);
}

TEST(Identity, IsThatOfTheHost) {
  EXPECT_EQ(Util::GetPID(), OwnProcess());
  EXPECT_EQ(Util::GetCurrentThreadId(), KORThreads::GetCurrentThreadId());
  unsigned int other = 0;
  std::thread([&other] { other = Util::GetCurrentThreadId(); }).join();
  EXPECT_NE(other, Util::GetCurrentThreadId());
}

TEST(Clocks, MayBeAskedByEveryThread) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([] {
      double former = Util::GetElapsedSeconds(0.0);
      for (int k = 0; k < 100; ++k) {
        const double elapsed = Util::GetElapsedSeconds(former);
        EXPECT_GE(elapsed, 0.0);
        former += elapsed;
        EXPECT_FALSE(Util::GetStartDateTimeString("%H").IsEmpty());
        EXPECT_FALSE(Util::GetCurrentDateTimeString("%H").IsEmpty());
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
}

}  // namespace
}  // namespace VYX::Test
