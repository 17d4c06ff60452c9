#include "platform/adapters/ini_text.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

// The entries as "line section|name|value" lines, and the number of a line that is refused.
std::string Read(std::string_view iText) {
  std::vector<VYX::Adapters::IniEntry> entries;
  const std::size_t refused = VYX::Adapters::ReadIniText(iText, entries);
  std::ostringstream result;
  for (const auto& entry : entries) {
    result << entry.line << " " << entry.section << "|" << entry.name << "|" << entry.value << "\n";
  }
  if (refused != 0) {
    result << "refused " << refused;
  }
  return result.str();
}

TEST(IniText, IsTakenApart) {
  const struct {
    std::string_view text;
    const char* result;
  } rows[] = {
      {"", ""},
      {"\n\r\n \t\n", ""},
      {"[a]\nb=c", "2 a|b|c\n"},
      {"\xEF\xBB\xBF[a]\r\n b = c \r\n", "2 a|b|c\n"},
      {"b=\n[]\nb=1\n", "1 |b|\n3 |b|1\n"},
      {"# b=1\n; b=2\n  ;b=3\nb=4 ; four\nb=5;6\nb=7\t;8\n", "4 |b|4\n5 |b|5;6\n6 |b|7\n"},
      {"[a] ; comment\nb=c=d\n=e\n", "2 a|b|c=d\n3 a||e\n"},
      {"a=1\n  b=2\n", "1 |a|1\n2 |b|2\n"},
      {"a=1\nno setting\nb=2\n", "1 |a|1\nrefused 2"},
      {"[a\n", "refused 1"},
      {std::string_view("a=1\0\n", 5), "refused 1"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Read(row.text), row.result) << row.text;
  }
}

TEST(IniText, HasLinesOfAnyLength) {
  const std::string value(100'000, 'x');
  EXPECT_EQ(Read("a=" + value + "\n"), "1 |a|" + value + "\n");
}

}  // namespace
