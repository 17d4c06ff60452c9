#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "VYXInfLog.h"
#include "VYXInfStringUtil.h"
#include "support/captured_stdout.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Util = VYXInfStringUtil;
using VYX::Test::CapturedStdout;
using VYX::Test::ConsoleLevel;
using VYX::Test::Line;
using namespace std::string_view_literals;

constexpr std::string_view kTexts[] = {
    "a", "abc", "\u00E9t\u00E9", "\U0001F600", "a\0b"sv, "\xFF\xC3", "a text of more than twenty-two bytes \u20AC"};

TEST(ConvertToUTF8, FillsABufferForArrayDelete) {
  for (const std::string_view text : kTexts) {
    char* buffer = nullptr;
    std::uint64_t size = 0;
    CapturedStdout captured;
    ASSERT_TRUE(Util::ConvertToUTF8(KORUnicodeString(text), &buffer, &size));
    const std::unique_ptr<char[]> owner(buffer);
    EXPECT_EQ(std::string_view(buffer, size), text);
    EXPECT_EQ(buffer[size], '\0');
    EXPECT_EQ(captured.Text(), "");
  }
}

TEST(ConvertToUTF8, FillsABinary) {
  for (const std::string_view text : kTexts) {
    QB::Binary binary;
    CapturedStdout captured;
    ASSERT_TRUE(Util::ConvertToUTF8(KORUnicodeString(text), &binary));
    EXPECT_EQ(std::string_view(binary.GetData(), binary.GetSize()), text);
    EXPECT_EQ(captured.Text(), "");
  }
}

TEST(ConvertToUTF8, AnEmptyTextGivesTheTerminatorAndAWarning) {
  const ConsoleLevel level(WARN);
  CapturedStdout captured;
  char* buffer = nullptr;
  std::uint64_t size = 7;
  ASSERT_TRUE(Util::ConvertToUTF8("", &buffer, &size));
  const std::unique_ptr<char[]> owner(buffer);
  EXPECT_EQ(buffer[0], '\0');
  EXPECT_EQ(size, 0U);
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("WARN", "ConvertToUTF8 returned ZERO bytes. Original string is: "), Line("", "")));
}

TEST(ConvertToUTF8, AnEmptyTextGivesABinaryWithoutBytes) {
  CapturedStdout captured;
  QB::Binary binary;
  EXPECT_TRUE(Util::ConvertToUTF8("", &binary));
  EXPECT_EQ(binary.GetSize(), 0U);
  EXPECT_NE(binary.GetData(), nullptr);
}

TEST(ConvertToUTF8, NullOutputsAreReportedAtDebug) {
  char mark = 0;
  char* buffer = &mark;
  std::uint64_t size = 7;
  const ConsoleLevel level(DEBUG);
  CapturedStdout captured;
  EXPECT_FALSE(Util::ConvertToUTF8("a", nullptr, &size));
  EXPECT_FALSE(Util::ConvertToUTF8("a", &buffer, nullptr));
  EXPECT_EQ(buffer, &mark);
  EXPECT_EQ(size, 7U);
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("DEBUG", "invalid output params"), Line("DEBUG", "invalid output params")));
}

TEST(ConvertToUTF8, LinesAreLeftOutWhereTheirLevelIsFiltered) {
  std::uint64_t size = 0;
  const ConsoleLevel level(ERROR);
  CapturedStdout captured;
  QB::Binary binary;
  EXPECT_FALSE(Util::ConvertToUTF8("a", nullptr, &size));
  EXPECT_TRUE(Util::ConvertToUTF8("", &binary));
  EXPECT_EQ(captured.Text(), "");
}

TEST(ConvertToUTF8, ANullBinaryIsRefusedInSilence) {
  const ConsoleLevel level(TRACE);
  CapturedStdout captured;
  EXPECT_FALSE(Util::ConvertToUTF8("a", static_cast<QB::Binary*>(nullptr)));
  EXPECT_THAT(captured.LogLines(), IsEmpty());
}

TEST(From, TakesTheNarrowBytes) {
  EXPECT_EQ(Util::From(KORString("")), "");
  for (const std::string_view text : kTexts) {
    EXPECT_EQ(Util::From(KORString(text)).ToStringView(), text);
  }
}

}  // namespace
