#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>

#include "VYXInfProfile.h"
#include "support/captured_stdout.h"
#include "support/settled_clock.h"

namespace VYX::Test {
namespace {

using ::testing::ElementsAre;

TEST(ScopedMeasurement, WritesTheMicrosecondsOfItsScope) {
  SettledClock clock({100, 0});
  std::uint64_t microseconds = 77;
  {
    const VYXInfScopedMeasurement measurement(microseconds);
    clock.Set({101, 500'000'000});
    EXPECT_EQ(microseconds, 77U) << "nothing is written before the end";
  }
  EXPECT_EQ(microseconds, 1'500'000U);
}

TEST(ProfileTrigger, WritesOneLineAtItsLevel) {
  const ConsoleLevel level(TRACE);
  CapturedStdout captured;
  {
    SettledClock clock({100, 0});
    const VYXInfProfileTrigger trigger("ReadFile", true, DEBUG);
    clock.Set({100, 12'345'000});
  }
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("DEBUG", "[PROFILE]  PROFILE:  @ReadFile:\t\ttook 0.012345s ")));
}

TEST(ProfileTrigger, TimeHasSixDecimals) {
  struct Row {
    std::timespec duration;
    const char* text;
  };
  const Row kRows[] = {
      {{0, 0}, "0.000000"}, {{0, 1'000}, "0.000001"}, {{1, 0}, "1.000000"}, {{123'456, 999'999'000}, "123456.999999"}};
  for (const Row& row : kRows) {
    CapturedStdout captured;
    {
      SettledClock clock({0, 0});
      const VYXInfProfileTrigger trigger("t", true, INFO);
      clock.Set(row.duration);
    }
    EXPECT_THAT(captured.LogLines(),
                ElementsAre(Line("INFO", "[PROFILE]  PROFILE:  @t:\t\ttook " + std::string(row.text) + "s ")));
  }
}

TEST(ProfileTrigger, IsSilentWhenAskedOrFiltered) {
  CapturedStdout captured;
  { const VYXInfProfileTrigger trigger("t", false, INFO); }
  { const VYXInfProfileTrigger trigger("t", true, TRACE); }
  EXPECT_EQ(captured.Text(), "");
}

TEST(ProfileTrigger, MovingTakesTheNameButNotTheMeasurement) {
  CapturedStdout captured;
  {
    SettledClock clock({0, 0});
    VYXInfProfileTrigger source("t", true, INFO);
    clock.Set({1, 0});
    {
      const VYXInfProfileTrigger moved(std::move(source));
      clock.Set({2, 0});
    }
    clock.Set({5, 0});
  }
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("INFO", "[PROFILE]  PROFILE:  @t:\t\ttook 0.000000s "),
                                               Line("INFO", "[PROFILE]  PROFILE:  @:\t\ttook 5.000000s ")));
}

TEST(ProfileTrigger, NullIsTheEmptyName) {
  CapturedStdout captured;
  {
    const SettledClock clock({0, 0});
    const VYXInfProfileTrigger trigger(nullptr, true, INFO);
  }
  EXPECT_EQ(captured.LogLines().size(), 1U);
  EXPECT_EQ(captured.LogLines()[0].text, "[PROFILE]  PROFILE:  @:\t\ttook 0.000000s ");
}

}  // namespace
}  // namespace VYX::Test
