#include <charconv>
#include <iostream>
#include <string_view>

#include "platform/os/processes.h"

namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;
constexpr int kUsageError = 2;

constexpr std::string_view kUsage =
    "Usage: VYXInfParentProcessKiller.exe -wait PID\n"
    "Ends the process of that number and returns when it is gone: 0, also for one that was gone before;\n"
    "1 where it cannot be ended, 2 for other arguments. A process that took over the number is left alone.\n";

// The number of a process that may be ended; 0 for any other text.
VYX::Os::ProcessId ToProcessId(std::string_view iText) {
  VYX::Os::ProcessId id = 0;
  const char* const end = iText.data() + iText.size();
  const auto result = std::from_chars(iText.data(), end, id);
  return result.ec == std::errc() && result.ptr == end && id > 1 ? id : 0;
}

}  // namespace

int main(int iCount, char** iArguments) {
  const bool hasTwoArguments = iCount == 3 && std::string_view(iArguments[1]) == "-wait";
  const VYX::Os::ProcessId process = hasTwoArguments ? ToProcessId(iArguments[2]) : 0;
  if (process == 0) {
    std::cerr << kUsage;
    return kUsageError;
  }
  const VYX::Os::Status status = VYX::Os::EndOlderProcess(process);
  if (!status.IsOk()) {
    std::cerr << "Cannot end process " << process << ": " << status.Describe() << '\n';
    return kFailure;
  }
  return kSuccess;
}
