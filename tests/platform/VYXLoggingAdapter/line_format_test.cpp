#include "platform/src/VYXLoggingAdapter/line_format.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

namespace {

using VYX::Logging::LineFormat;
using VYX::Logging::ParseError;
using VYX::Logging::Record;

std::string Formatted(std::string_view iFormat, const Record& iRecord) {
  ParseError error;
  const auto format = LineFormat::Parse(iFormat, error);
  if (!format) {
    return "refused at " + std::to_string(error.position) + ": " + error.reason;
  }
  std::string line;
  format->Append(iRecord, line);
  return line;
}

class LineFormatTest : public testing::Test {
 protected:
  void SetUp() override {
    ::setenv("TZ", "UTC", 1);
    ::tzset();
  }
  const Record _record{1, "VYX", "the text", {1551794829, 42000}, 4243, 4242};
};

TEST_F(LineFormatTest, FillsEveryPlaceholder) {
  const struct {
    const char* format;
    const char* line;
  } rows[] = {
      {"[%TimeStamp%][%ThreadID%][%Channel%][%Severity%] %Message%",
       "[2019-03-05 14:07:09.000042][4243][VYX][ERROR] the text"},
      {"%ProcessID%|%Message%|%Message%", "4242|the text|the text"},
      {"%TimeStamp(format=\"%H.%M\")% %Message%", "14.07 the text"},
      {"no placeholder", "no placeholder"},
      {"", ""},
      {"100\\% %Severity%\\\\", "100% ERROR\\"},
      {"trailing backslash\\", "trailing backslash\\"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Formatted(row.format, _record), row.line) << row.format;
  }
}

TEST_F(LineFormatTest, RefusesWhatItCannotRead) {
  const struct {
    const char* format;
    const char* refusal;
  } rows[] = {
      {"%Messag%", "refused at 1: the placeholder 'Messag' is unknown"},
      {"ab %", "refused at 4: a placeholder without its closing percent sign"},
      {"ab %Message", "refused at 4: a placeholder without its closing percent sign"},
      {"%Message(format=\"x\")%", "refused at 9: only %TimeStamp(format=\"...\")% takes an argument"},
      {"%TimeStamp(format=\"x\"%", "refused at 11: only %TimeStamp(format=\"...\")% takes an argument"},
      {"%TimeStamp(format=\"x\")", "refused at 1: a placeholder without its closing percent sign"},
      {"%%", "refused at 1: the placeholder '' is unknown"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Formatted(row.format, _record), row.refusal) << row.format;
  }
}

TEST_F(LineFormatTest, ShowsLevelsOutsideTheTableAsTrace) {
  Record record = _record;
  for (const int level : {5, 6, -1, 1000}) {
    record.level = level;
    EXPECT_EQ(Formatted("%Severity%", record), "TRACE") << level;
  }
}

TEST_F(LineFormatTest, KeepsOneRecordOnOneLine) {
  const struct {
    std::string message;
    const char* line;
  } rows[] = {
      {"a\nb\r\nc", "a\\nb\\r\\nc"},
      {"\x1b[31mred", "\\x1B[31mred"},
      {"tab\tstays", "tab\tstays"},
      {"\x7f\x01", "\\x7F\\x01"},
      {std::string("zero\0byte", 9), "zero\\x00byte"},
      {"line\xE2\x80\xA8separator\xE2\x80\xA9", "line\\u2028separator\\u2029"},
      {"next\xC2\x85line", "next\\u0085line"},
      {"caf\xC3\xA9 \xF0\x9F\x98\x80", "caf\xC3\xA9 \xF0\x9F\x98\x80"},
      {"cut \xC3", "cut \\xC3"},
      {"overlong \xC0\xAF", "overlong \\xC0\\xAF"},
      {"surrogate \xED\xA0\x80", "surrogate \\xED\\xA0\\x80"},
      {"%Message% %n {} %s", "%Message% %n {} %s"},
  };
  Record record = _record;
  for (const auto& row : rows) {
    record.message = row.message;
    EXPECT_EQ(Formatted("%Message%", record), row.line);
  }
}

TEST_F(LineFormatTest, KeepsOneLineWhateverChannelAndFormatHold) {
  Record record = _record;
  record.channel = "net\n[FATAL] forged\x1b[2J";
  EXPECT_EQ(Formatted("%Channel%|%Message%", record), "net\\n[FATAL] forged\\x1B[2J|the text");
  const struct {
    const char* format;
    const char* line;
  } rows[] = {
      {"first\nsecond %Message%", "first\\nsecond the text"},
      {"\xE2\x80\xA8%Severity%", "\\u2028ERROR"},
      {"cut \xE2\x80%Severity%", "cut \\xE2\\x80ERROR"},
      {"%TimeStamp(format=\"%H\n%M\x1b\")%", "14\\n07\\x1B"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Formatted(row.format, _record), row.line) << row.format;
  }
}

TEST_F(LineFormatTest, FollowsTheSecondOfEachRecord) {
  Record record = _record;
  EXPECT_EQ(Formatted("%TimeStamp%", record), "2019-03-05 14:07:09.000042");
  record.time = {1551794830, 999999999};
  EXPECT_EQ(Formatted("%TimeStamp%", record), "2019-03-05 14:07:10.999999");
  record.time = {1551794829, 0};
  EXPECT_EQ(Formatted("%TimeStamp%", record), "2019-03-05 14:07:09.000000");
}

}  // namespace
