#include <string>

#include "VYXInfLog.h"
#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"
#include "platform/os/console.h"

// date and time; level; process id; thread id; text
void VYXInfLog::WriteConsoleLine(VYXInfLogLevel iLevel, const char* iText) const {
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
}
