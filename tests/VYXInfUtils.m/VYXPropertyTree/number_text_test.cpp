#include "VYXPropertyTree/number_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

namespace json {
namespace {

std::string TextOf(double iNumber) {
  char text[kNumberTextSize];
  return std::string(text, WriteNumber(text, iNumber));
}

std::string Reference(double iNumber) {
  char text[64];
  std::snprintf(text, sizeof text, "%.17g", iNumber);
  return text;
}

struct Case {
  double number;
  const char* text;
};

TEST(NumberText, IsLiterallyThis) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const Case cases[] = {
      {0, "0"},
      {-0.0, "-0"},
      {1, "1"},
      {-1, "-1"},
      {3, "3"},
      {42, "42"},
      {0.5, "0.5"},
      {2.5, "2.5"},
      {-2.7, "-2.7000000000000002"},
      {0.1, "0.10000000000000001"},
      {1.0 / 3, "0.33333333333333331"},
      {0.0001, "0.0001"},
      {0.00001, "1.0000000000000001e-05"},
      {9007199254740992.0, "9007199254740992"},
      {99999999999999984.0, "99999999999999984"},
      {-99999999999999984.0, "-99999999999999984"},
      {1e17, "1e+17"},
      {-1e17, "-1e+17"},
      {123456789012345678.0, "1.2345678901234568e+17"},
      {1e22, "1e+22"},
      {1e100, "1e+100"},
      {1.7976931348623157e308, "1.7976931348623157e+308"},
      {5e-324, "4.9406564584124654e-324"},
      {kInfinity, "inf"},
      {-kInfinity, "-inf"},
      {std::copysign(nan, 1.0), "nan"},
      {std::copysign(nan, -1.0), "-nan"},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(TextOf(row.number), row.text);
  }
}

TEST(NumberText, AgreesWithTheFormatOfTheCLibrary) {
  std::mt19937_64 random(3);
  for (int round = 0; round < 200'000; ++round) {
    const double number = std::bit_cast<double>(random());
    if (std::isfinite(number)) {
      ASSERT_EQ(TextOf(number), Reference(number));
    }
    const double fraction = static_cast<double>(static_cast<std::int64_t>(random())) / std::pow(2.0, round % 64);
    ASSERT_EQ(TextOf(fraction), Reference(fraction));
    const double integer = std::trunc(fraction);
    ASSERT_EQ(TextOf(integer), Reference(integer));
  }
}

}  // namespace
}  // namespace json
