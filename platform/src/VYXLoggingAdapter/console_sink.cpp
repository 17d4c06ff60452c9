#include "platform/src/VYXLoggingAdapter/console_sink.h"

#include "platform/os/console.h"

namespace VYX::Logging {

void ConsoleSink::WriteLine(const Record&, std::string_view iLine) {
  Os::WriteConsole(iLine);
}

}  // namespace VYX::Logging
