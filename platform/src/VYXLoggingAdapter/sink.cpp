#include "platform/src/VYXLoggingAdapter/sink.h"

#include <exception>

namespace VYX::Logging {

namespace {

// What a line longer than memory allows is cut to.
constexpr std::size_t kShortenedLine = 256;

}  // namespace

void Sink::Write(const Record& iRecord) noexcept {
  try {
    std::string line;
    line.reserve(iRecord.message.size() + 96);
    _format.Append(iRecord, line);
    line.push_back('\n');
    WriteLine(iRecord, line);
    _shortage.Clear();
  } catch (const std::exception&) {
    // No memory for the whole line: its beginning says more than nothing.
    if (iRecord.message.size() > kShortenedLine) {
      Record shortened = iRecord;
      shortened.message = iRecord.message.substr(0, kShortenedLine);
      Write(shortened);
      return;
    }
    _shortage.Report("a line is lost", "out of memory");
  }
}

}  // namespace VYX::Logging
