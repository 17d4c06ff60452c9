#include "platform/src/VYXLoggingAdapter/trouble.h"

#include <exception>
#include <string>

#include "platform/os/console.h"

namespace VYX::Logging {

void Trouble::Report(std::string_view iWhat, std::string_view iCause) noexcept {
  if (_isReported.exchange(true, std::memory_order_relaxed)) {
    return;
  }
  try {
    std::string line("Logging: ");
    line.append(iWhat).append(": ").append(iCause).append("\n");
    Os::WriteErrorConsole(line);
  } catch (const std::exception&) {
    Os::WriteErrorConsole("Logging: out of memory\n");
  }
}

}  // namespace VYX::Logging
