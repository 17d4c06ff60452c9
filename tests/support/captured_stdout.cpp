#include "support/captured_stdout.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <ostream>
#include <stdexcept>
#include <string_view>

#include "VYXInfLog/logger_access.h"

namespace VYX::Test {

namespace {

int OpenAnonymousFile() {
  const char* const folder = std::getenv("TMPDIR");
  std::string name = std::string(folder == nullptr ? "/tmp" : folder) + "/captured_XXXXXX";
  const int file = ::mkstemp(name.data());
  if (file < 0) {
    throw std::runtime_error("no file to capture standard output in " + name);
  }
  ::unlink(name.c_str());
  return file;
}

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

CapturedStdout::CapturedStdout() {
  std::fflush(stdout);
  _file = OpenAnonymousFile();
  _saved = ::dup(STDOUT_FILENO);
  ::dup2(_file, STDOUT_FILENO);
}

CapturedStdout::~CapturedStdout() {
  std::fflush(stdout);
  ::dup2(_saved, STDOUT_FILENO);
  ::close(_saved);
  ::close(_file);
}

std::string CapturedStdout::Text() {
  std::fflush(stdout);
  std::string text(static_cast<std::size_t>(::lseek(_file, 0, SEEK_END)), '\0');
  const ssize_t count = ::pread(_file, text.data(), text.size(), 0);
  text.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  return text;
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
