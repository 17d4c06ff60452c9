#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "KORSysTS/KORUnicodeString.h"

namespace {

const double kNumbers[] = {0.0,
                           -0.0,
                           1.0,
                           -1.0,
                           0.5,
                           1.5,
                           2.5,
                           0.1,
                           -123.456,
                           9.5,
                           9.9999995,
                           99999.95,
                           999999.5,
                           1e5,
                           1e6,
                           123456789.0,
                           1e-4,
                           1e-5,
                           0.00012345,
                           1e100,
                           1e308,
                           DBL_MAX,
                           DBL_MIN,
                           5e-324,
                           -2.2e-310,
                           std::numeric_limits<double>::infinity(),
                           -std::numeric_limits<double>::infinity(),
                           std::numeric_limits<double>::quiet_NaN(),
                           -std::numeric_limits<double>::quiet_NaN()};

std::string Printed(double iNumber, const std::string& iFormat) {
  std::vector<char> buffer(70'000);
// The format is one of the table's, and the compiler cannot see it.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  const int length = std::snprintf(buffer.data(), buffer.size(), iFormat.c_str(), iNumber);
#pragma GCC diagnostic pop
  return std::string(buffer.data(), static_cast<std::size_t>(length));
}

// The alternate form of g by the rule of the C standard (7.21.6.1), which some C libraries get wrong where rounding
// carries into a new digit: the style and its precision follow from the exponent that e would write.
std::string AlternateGeneralFormat(double iNumber, const std::string& iFormat) {
  const std::size_t point = iFormat.find('.');
  const std::size_t last = iFormat.size() - 1;
  const bool isUpper = iFormat[last] == 'G';
  const std::string digits = point == std::string::npos ? "6" : "0" + iFormat.substr(point + 1, last - point - 1);
  const int precision = std::max(std::stoi(digits), 1);
  const std::string scientific = Printed(iNumber, "%." + std::to_string(precision - 1) + "e");
  const int exponent = std::stoi(scientific.substr(scientific.find('e') + 1));
  const bool isFixed = exponent >= -4 && exponent < precision;
  return iFormat.substr(0, std::min(point, last)) + "." + std::to_string(precision - 1 - (isFixed ? exponent : 0)) +
         (isFixed ? (isUpper ? "F" : "f") : (isUpper ? "E" : "e"));
}

std::string Expected(double iNumber, const std::string& iFormat) {
  const bool isGeneral = iFormat.back() == 'g' || iFormat.back() == 'G';
  const bool isAlternate = iFormat.find('#') != std::string::npos;
  return Printed(
      iNumber, isGeneral && isAlternate && std::isfinite(iNumber) ? AlternateGeneralFormat(iNumber, iFormat) : iFormat);
}

void ExpectAsPrinted(double iNumber, const std::string& iFormat) {
  KORUnicodeString text("before");
  ASSERT_EQ(text.BuildFromNum(iNumber, iFormat.c_str()), 0) << iFormat;
  ASSERT_EQ(text.ConvertToChar(), Expected(iNumber, iFormat)) << iFormat;
}

TEST(BuildFromNum, WritesWhatPrintfWrites) {
  const char* const flags[] = {"", "-", "+", " ", "#", "0", "-0", "+0", "# ", "#0+", "-#+ 0"};
  const char* const sizes[] = {"", "1", "12", "40", ".", ".0", ".1", ".3", ".17", "20.5", "3.30", ".400"};
  for (const double number : kNumbers) {
    for (const char kind : std::string("eEfFgGaA")) {
      for (const char* flag : flags) {
        for (const char* size : sizes) {
          ExpectAsPrinted(number, std::string("%") + flag + size + kind);
        }
      }
    }
  }
}

TEST(BuildFromNum, AgreesWithPrintfOnRandomNumbersAndFormats) {
  std::mt19937_64 random(42);
  for (int round = 0; round < 30'000; ++round) {
    const std::uint64_t bits = random();
    double number = 0;
    std::memcpy(&number, &bits, sizeof(number));
    if (round % 2 == 0) {
      number = static_cast<double>(static_cast<std::int64_t>(bits) >> (bits % 64)) / 1000;
    }
    std::string format = "%";
    for (const char flag : std::string("-+ #0")) {
      format += random() % 4 == 0 ? std::string(1, flag) : std::string();
    }
    format += random() % 2 == 0 ? std::to_string(random() % 60 + 1) : std::string();
    format += random() % 2 == 0 ? "." + std::to_string(random() % 40) : std::string();
    format += "eEfFgGaA"[random() % 8];
    ExpectAsPrinted(number, format);
  }
}

TEST(BuildFromNum, CopiesTheRestOfTheFormat) {
  ExpectAsPrinted(1.25, "[%g]");
  ExpectAsPrinted(1.25, "100%% of %.1f %%");
  ExpectAsPrinted(1.25, "%lf");
  ExpectAsPrinted(1.25, "\xC3\xA9 %e \xE2\x82\xAC");
}

TEST(BuildFromNum, RefusesOtherFormats) {
  for (const char* format : {"",
                             "abc",
                             "%",
                             "%%",
                             "%d",
                             "%s",
                             "%n",
                             "%g%g",
                             "%g %s",
                             "%*g",
                             "%.*g",
                             "%Lg",
                             "%llg",
                             "%hg",
                             "%1$g",
                             "%'g",
                             "%65536g",
                             "%.65536g",
                             "%99999999999999999999g",
                             "%5",
                             "%.",
                             "%B",
                             "%b"}) {
    KORUnicodeString text("before");
    EXPECT_NE(text.BuildFromNum(1.0, format), 0) << format;
    EXPECT_TRUE(text.IsEmpty()) << format;
  }
  KORUnicodeString text("before");
  EXPECT_NE(text.BuildFromNum(1.0, nullptr), 0);
  EXPECT_TRUE(text.IsEmpty());
}

TEST(BuildFromNum, TakesTheLargestFields) {
  ExpectAsPrinted(1.0 / 3, "%65535.3f");
  ExpectAsPrinted(1.0 / 3, "%.65535f");
  ExpectAsPrinted(DBL_MAX, "%.60000f");
  ExpectAsPrinted(1.0 / 3, "%#.60000g");
  ExpectAsPrinted(1.0 / 3, "%.60000a");
}

TEST(BuildFromNum, TheLocaleDoesNotMatter) {
  // Not every host has one of these; where none is there, the "C" locale answers the same question less sharply.
  const std::string before = std::setlocale(LC_NUMERIC, nullptr);
  for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE", "fr_FR"}) {
    if (std::setlocale(LC_NUMERIC, name) != nullptr) {
      break;
    }
  }
  KORUnicodeString text;
  EXPECT_EQ(text.BuildFromNum(1234.5, "%.2f"), 0);
  EXPECT_EQ(text, "1234.50");
  std::setlocale(LC_NUMERIC, before.c_str());
}

}  // namespace
