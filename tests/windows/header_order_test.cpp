#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "header_use.h"

namespace {

void ExpectTheSameNames(HeaderUse (*iUse)(const std::string&), const std::string& iFile) {
  std::ofstream(iFile) << "x";
  const HeaderUse use = iUse(iFile);
  EXPECT_EQ(use.deletion, 0);
  EXPECT_FALSE(std::ifstream(iFile).is_open()) << "the file is gone";
  EXPECT_EQ(use.severity, 1);
  EXPECT_EQ(use.qualified, 1);
  EXPECT_FALSE(use.isFiltered);
  EXPECT_EQ(use.success, 0);
  EXPECT_EQ(use.failure, static_cast<long>(0x80004005L));
  EXPECT_EQ(use.port, 8080);
  EXPECT_EQ(use.systemCalls, 42);
  EXPECT_LT(iUse(iFile).deletion, 0) << "it is gone already";
}

TEST(HeaderOrder, WindowsFirst) {
  ExpectTheSameNames(UseWithWindowsFirst, "header_order_first.tmp");
}

TEST(HeaderOrder, WindowsLast) {
  ExpectTheSameNames(UseWithWindowsLast, "header_order_last.tmp");
}

TEST(HeaderOrder, WithoutWindows) {
  ExpectTheSameNames(UseWithoutWindows, "header_order_without.tmp");
}

}  // namespace
