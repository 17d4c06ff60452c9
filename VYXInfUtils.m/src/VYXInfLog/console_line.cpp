#include <algorithm>
#include <cstddef>
#include <new>
#include <string>
#include <string_view>

#include "VYXInfLog.h"
#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"
#include "platform/os/console.h"

namespace {

// Where no memory is left for a line, its level and the beginning of its text are written without any.
void WriteShortenedLine(const char* iLevel, const char* iText) noexcept {
  char line[256];
  std::size_t length = 0;
  for (const std::string_view part :
       {std::string_view(iLevel), std::string_view("; "), std::string_view(iText == nullptr ? "" : iText)}) {
    const std::size_t count = std::min(part.size(), sizeof line - 1 - length);
    std::copy_n(part.data(), count, line + length);
    length += count;
  }
  line[length++] = '\n';
  VYX::Os::WriteConsole({line, length});
}

}  // namespace

// date and time; level; process id; thread id; text
void VYXInfLog::WriteConsoleLine(VYXInfLogLevel iLevel, const char* iText) const try {
  // The first line of a process is no later than the reference of its elapsed time.
  VYXInfSystemUtil::GetElapsedSeconds(0.0);

  std::string line;
  const auto addField = [&line](const auto& iField) {
    VYX::Internal::AppendPiece(line, iField);
    line.append("; ");
  };
  addField(VYXInfSystemUtil::GetCurrentDateTimeString("%Y-%m-%d_%H-%M-%S"));
  addField(LevelToString(iLevel));
  addField(VYXInfSystemUtil::GetPID());
  addField(VYXInfSystemUtil::GetCurrentThreadId());
  VYX::Internal::AppendPiece(line, iText);
  line.push_back('\n');
  VYX::Os::WriteConsole(line);
} catch (const std::bad_alloc&) {
  WriteShortenedLine(LevelToString(iLevel), iText);
}
