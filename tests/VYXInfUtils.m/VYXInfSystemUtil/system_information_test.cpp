#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <thread>
#include <vector>

#include "VYXInfSystemUtil.h"
#include "support/captured_stdout.h"
#include "support/failing_host.h"
#include "support/host.h"

namespace VYX::Test {
namespace {

using ::testing::ElementsAre;
using Util = VYXInfSystemUtil;

TEST(Memory, FiguresAreThoseOfTheHost) {
  const std::int64_t current = Util::GetCurrentMemoryUsage();
  const std::int64_t host = HostMemoryUsage();
  EXPECT_GT(current, 0);
  EXPECT_NEAR(static_cast<double>(current), static_cast<double>(host), 4.0 * 1024 * 1024);
  EXPECT_EQ(Util::GetPhysicalMemory(), HostMemory());
  EXPECT_GT(Util::GetPhysicalMemory(), static_cast<std::uint64_t>(current));
}

TEST(Memory, ThePeakOutlivesTheUse) {
  constexpr std::size_t kSize = std::size_t{64} << 20;
  const std::int64_t before = Util::GetCurrentMemoryUsage();
  {
    std::vector<char> used(kSize, 'x');
    EXPECT_GE(Util::GetCurrentMemoryUsage(), before + static_cast<std::int64_t>(kSize / 2));
    EXPECT_EQ(used.back(), 'x');
  }
  EXPECT_GE(Util::GetPeakMemoryUsage(), before + static_cast<std::int64_t>(kSize / 2));
  const std::int64_t now = Util::GetCurrentMemoryUsage();
  EXPECT_GE(Util::GetPeakMemoryUsage(), now);
}

TEST(Memory, AFailingQueryIsZeroAndSilent) {
  CapturedStdout captured;
  {
    const FailingHost failing(FailingHost::Service::MemoryUsage);
    EXPECT_EQ(Util::GetCurrentMemoryUsage(), 0);
    EXPECT_EQ(Util::GetPeakMemoryUsage(), 0);
  }
  EXPECT_EQ(captured.Text(), "");
}

TEST(Processor, CountIsNeverZero) {
  EXPECT_GE(Util::GetCPUCount(), 1U);
  EXPECT_EQ(Util::GetCPUCount(), std::thread::hardware_concurrency());
}

TEST(Processor, SpeedIsTheFrequencyOfTheCounter) {
  EXPECT_EQ(Util::GetCpuSpeed(), HostClockFrequency());
}

TEST(Platform, IsAlwaysTheSame) {
  EXPECT_EQ(Util::GetPlatform(), "Windows");
}

TEST(Uuid, AreAllDifferent) {
  std::set<std::string> seen;
  for (int count = 0; count < 1000; ++count) {
    const KORUnicodeString text = Util::GetUUIDString();
    EXPECT_EQ(text.GetLengthInChar(), 36) << text;
    seen.insert(text.ConvertToChar());
  }
  EXPECT_EQ(seen.size(), 1000U);
}

TEST(Uuid, WithoutRandomNumbersThereIsNone) {
  CapturedStdout captured;
  {
    const FailingHost failing(FailingHost::Service::RandomBytes);
    EXPECT_EQ(Util::GetUUIDString(), "");
  }
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("ERROR", "Cannot make 'UUID' from random numbers: " + FailingHost::CauseOfRandomBytes()),
                          FailureReturnIn("VYXInfSystemUtil/system_information.cpp")));
}

}  // namespace
}  // namespace VYX::Test
