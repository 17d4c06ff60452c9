#include <gtest/gtest.h>

#include "VYXInfLog.h"

namespace {

struct LevelName {
  int value;
  const char* name;
};

TEST(LevelToString, NamesEveryValue) {
  const LevelName rows[] = {{0, "FATAL"}, {1, "ERROR"}, {2, "WARN"},   {3, "INFO"},        {4, "DEBUG"},
                            {5, "TRACE"}, {6, "TRACE"}, {-1, "TRACE"}, {1 << 30, "TRACE"}, {INT32_MIN, "TRACE"}};
  for (const LevelName& row : rows) {
    EXPECT_STREQ(VYXInfLog::LevelToString(static_cast<VYXInfLogLevel>(row.value)), row.name) << row.value;
  }
}

struct LevelText {
  const char* text;
  VYXInfLogLevel level;
};

TEST(LevelFromString, FindsNamesInAnyCase) {
  const LevelText rows[] = {{"FATAL", FATAL}, {"ERROR", ERROR}, {"WARN", WARN},    {"INFO", INFO},
                            {"DEBUG", DEBUG}, {"TRACE", TRACE}, {"info", INFO},    {"Debug", DEBUG},
                            {"", WARN},       {"INFO ", WARN},  {"VERBOSE", WARN}, {nullptr, WARN}};
  for (const LevelText& row : rows) {
    EXPECT_EQ(VYXInfLog::LevelFromString(row.text, WARN), row.level) << (row.text == nullptr ? "null" : row.text);
  }
}

TEST(LevelNames, CompileWithAndWithoutTheEnumeration) {
  EXPECT_EQ(INFO, VYXInfLogLevel::INFO);
  EXPECT_EQ(ERROR, VYXInfLogLevel::ERROR);
  EXPECT_EQ(static_cast<int>(FATAL), 0);
  EXPECT_EQ(static_cast<int>(TRACE), 5);
}

}  // namespace
