#pragma once

#include <string>
#include <vector>

namespace VYX::Test {

/// One line of the console logger, taken apart.
struct LogLine {
  std::string level;
  std::string text;

  bool operator==(const LogLine&) const = default;
};

/// So that GoogleTest shows a line instead of its bytes.
void PrintTo(const LogLine& iLine, std::ostream* ioStream);

/**
 * Catches what the process writes to standard output while the object lives, at the level of the descriptor. One at a
 * time.
 *
 *     CapturedStdout captured;
 *     tree.GetInteger("k", value);
 *     EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn("VYXPropertyTree"), LogLine{"ERROR", "    MESSAGE:
 * ..."}));
 */
class CapturedStdout {
 public:
  CapturedStdout();
  ~CapturedStdout();
  CapturedStdout(const CapturedStdout&) = delete;
  CapturedStdout& operator=(const CapturedStdout&) = delete;

  /// Everything written so far.
  std::string Text();

  /// The console logger's lines written so far: level and text, in order. A line that is not the logger's has an empty
  /// level.
  std::vector<LogLine> LogLines();

 private:
  int _file;
  int _saved;
};

/// Sets the default logger's console threshold while the object lives; the logger is replaced, so hold no reference
/// over it.
class ConsoleLevel {
 public:
  explicit ConsoleLevel(int iLevel);
  ~ConsoleLevel();
  ConsoleLevel(const ConsoleLevel&) = delete;
  ConsoleLevel& operator=(const ConsoleLevel&) = delete;
};

/// Matches the "FAILURE RETURN (...)" or "FAILURE LOG (...)" line at ERROR of a source whose recorded path begins with
/// "VYXInfrastructure/VYXInfUtils.m/src/" followed by iSource, with a decimal line number.
bool IsTrace(const LogLine& iLine, const std::string& iKind, const std::string& iSource);

}  // namespace VYX::Test

#include <gmock/gmock.h>

namespace VYX::Test {

MATCHER_P(FailureReturnIn, source, "a FAILURE RETURN trace of " + std::string(source)) {
  return IsTrace(arg, "FAILURE RETURN", source);
}
MATCHER_P(FailureLogIn, source, "a FAILURE LOG trace of " + std::string(source)) {
  return IsTrace(arg, "FAILURE LOG", source);
}
MATCHER_P(Detail, text, "the detail line '" + std::string(text) + "'") {
  return arg == LogLine{"ERROR", "    MESSAGE:  " + std::string(text)};
}
MATCHER_P2(Line, level, text, "the " + std::string(level) + " line '" + std::string(text) + "'") {
  return arg == LogLine{level, text};
}

}  // namespace VYX::Test
