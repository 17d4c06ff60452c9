#include "platform/src/VYXLoggingAdapter/filter.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using VYX::Logging::Filter;
using VYX::Logging::ParseError;

// The accepted levels of 0 to 6 on channel VYX as digits, or the refusal.
std::string Accepted(std::string_view iFilter) {
  ParseError error;
  const auto filter = Filter::Parse(iFilter, error);
  if (!filter) {
    return "refused at " + std::to_string(error.position) + ": " + error.reason;
  }
  std::string accepted;
  for (int level = 0; level <= 6; ++level) {
    if (filter->Accepts(level, "VYX")) {
      accepted.push_back(static_cast<char>('0' + level));
    }
  }
  return accepted;
}

TEST(Filter, AcceptsByLevelAndChannel) {
  const struct {
    const char* filter;
    const char* accepted;
  } rows[] = {
      {"", "0123456"},
      {"  ", "0123456"},
      {"%Severity% <= 3", "0123"},
      {"%Severity%<=3", "0123"},
      {"%Severity% < 3", "012"},
      {"%Severity% > 3", "456"},
      {"%Severity% >= 3", "3456"},
      {"%Severity% = 3", "3"},
      {"%Severity% != 3", "012456"},
      {"%Severity% <= INFO", "0123"},
      {"%Severity% = \"WARN\"", "2"},
      {"%Severity% <= -1", ""},
      {"%Channel% = VYX", "0123456"},
      {"%Channel% = \"VYX\" & %Severity% = 1", "1"},
      {"%Channel% != VYX", ""},
      {"%Channel% = vyx", ""},
      {"%Channel% < VYZ and %Channel% > VYW", "0123456"},
      {"%Severity% = 0 | %Severity% = 2 & %Severity% = 3", "0"},
      {"(%Severity% = 0 | %Severity% = 2) & %Severity% >= 2", "2"},
      {"not %Severity% = 1 & %Severity% <= 2", "02"},
      {"!(%Severity% = 1 or %Severity% = 3)", "02456"},
      {"!!%Severity% = 1", "1"},
      {"%Severity% = 0 or %Severity% = 1 or %Severity% = 5", "015"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Accepted(row.filter), row.accepted) << row.filter;
  }
}

TEST(Filter, RefusesWhatItCannotRead) {
  const struct {
    const char* filter;
    const char* refusal;
  } rows[] = {
      {"%Severity%", "refused at 11: a comparison (= != < <= > >=) was expected"},
      {"%Severity% <= ", "refused at 15: a value was expected"},
      {"%Severity% <= LOUD", "refused at 15: 'LOUD' is no level"},
      {"%Severity% <= 3x", "refused at 15: '3x' is no level"},
      {"%Level% = 3", "refused at 1: %Severity% or %Channel% was expected"},
      {"(%Severity% = 3", "refused at 16: a closing bracket is missing"},
      {"%Severity% = 3)", "refused at 15: nothing more was expected"},
      {"%Severity% = 3 &", "refused at 17: %Severity% or %Channel% was expected"},
      {"%Channel% = \"VYX", "refused at 13: a closing quote is missing"},
      {"%Severity% = 1 orange", "refused at 16: nothing more was expected"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Accepted(row.filter), row.refusal) << row.filter;
  }
}

TEST(Filter, BoundsItsNesting) {
  const auto nested = [](std::size_t iDepth) {
    return std::string(iDepth, '(') + "%Severity% = 1" + std::string(iDepth, ')');
  };
  EXPECT_EQ(Accepted(nested(50)), "1");
  EXPECT_EQ(Accepted(nested(100000)), "refused at 61: brackets and negations nest too deeply");
  std::string waiting;
  for (int level = 0; level < 58; ++level) {
    waiting += "%Severity% = 9 | %Severity% != 9 & (";
  }
  EXPECT_EQ(Accepted(waiting + "%Severity% = 2" + std::string(58, ')')), "2");
}

}  // namespace
