#include "support/captured_stdout.h"

#include <algorithm>
#include <cctype>
#include <ostream>
#include <string_view>

#include "VYXInfLog/logger_access.h"

namespace VYX::Test {

namespace {

LogLine Parse(std::string_view iLine) {
  // date; level; process id; thread id; text
  std::string_view fields[4];
  std::string_view rest = iLine;
  for (std::string_view& field : fields) {
    const std::size_t end = rest.find("; ");
    if (end == std::string_view::npos) {
      return {"", std::string(iLine)};
    }
    field = rest.substr(0, end);
    rest.remove_prefix(end + 2);
  }
  return {std::string(fields[1]), std::string(rest)};
}

}  // namespace

void PrintTo(const LogLine& iLine, std::ostream* ioStream) {
  *ioStream << iLine.level << " '" << iLine.text << "'";
}

std::vector<LogLine> CapturedStdout::LogLines() {
  const std::string text = Text();
  std::vector<LogLine> lines;
  std::string_view rest = text;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    lines.push_back(Parse(rest.substr(0, end)));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return lines;
}

ConsoleLevel::ConsoleLevel(int iLevel) {
  Internal::LoggerAccess::InstallConsole(static_cast<VYXInfLogLevel>(iLevel));
}

ConsoleLevel::~ConsoleLevel() {
  Internal::LoggerAccess::InstallConsole(INFO);
}

bool IsTrace(const LogLine& iLine, const std::string& iKind, const std::string& iSource) {
  const std::string start = iKind + " (VYXInfrastructure/VYXInfUtils.m/src/" + iSource;
  if (iLine.level != "ERROR" || !iLine.text.starts_with(start) || !iLine.text.ends_with(")")) {
    return false;
  }
  const std::size_t colon = iLine.text.rfind(':');
  if (colon == std::string::npos || colon < start.size()) {
    return false;
  }
  const std::string number = iLine.text.substr(colon + 1, iLine.text.size() - colon - 2);
  return !number.empty() && number[0] != '0' &&
         std::all_of(number.begin(), number.end(), [](unsigned char iDigit) { return std::isdigit(iDigit) != 0; });
}

}  // namespace VYX::Test
