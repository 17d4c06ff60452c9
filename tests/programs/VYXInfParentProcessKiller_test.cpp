#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "killer_testing.h"

namespace VYX::Test {
namespace {

TEST(VYXInfParentProcessKiller, ReturnsWhenTheProcessIsGone) {
  const int pid = Start(VYX_TEST_CHILD, {"pause"}, false);
  EXPECT_FALSE(HasEnded(pid));
  EXPECT_EQ(RunKiller({"-wait", std::to_string(pid)}), 0);
  EXPECT_TRUE(HasEnded(pid));
  EXPECT_EQ(RunKiller({"-wait", std::to_string(pid)}), 0) << "it has ended before";
}

TEST(VYXInfParentProcessKiller, ANumberOfNoProcessIsNothingToDo) {
  EXPECT_EQ(RunKiller({"-wait", "2000000000"}), 0);
}

TEST(VYXInfParentProcessKiller, OtherArgumentsAreRefused) {
  const std::vector<std::vector<std::string>> kRows = {
      {},
      {"-wait"},
      {"-wait", ""},
      {"-wait", "0"},
      {"-wait", "1"},
      {"-wait", "-1"},
      {"-wait", "12x"},
      {"-wait", " 12"},
      {"-wait", "99999999999"},
      {"wait", "2000000000"},
      {"-wait", "2000000000", "more"},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(RunKiller(row), 2) << ::testing::PrintToString(row);
  }
}

}  // namespace
}  // namespace VYX::Test
