#include "platform/src/VYXLoggingAdapter/channel_logger.h"

#include "platform/os/clock.h"
#include "platform/os/process_identity.h"
#include "platform/src/VYXLoggingAdapter/severity.h"

namespace VYX::Logging {

void ChannelLogger::Write(int iLevel, const char* iText) {
  const Record record{iLevel,
                      _channel,
                      iText == nullptr ? std::string_view() : std::string_view(iText),
                      Os::CurrentWallTime(),
                      Os::CurrentThreadId(),
                      Os::CurrentProcessId()};
  _sinks->Write(record);
}

std::uint32_t ChannelLogger::AcceptedLevels() const {
  std::uint32_t accepted = kLevelsKnown;
  for (int level = 0; level < kLevelCount; ++level) {
    if (!IsFiltered(level)) {
      accepted |= 1U << static_cast<unsigned>(level);
    }
  }
  return accepted;
}

}  // namespace VYX::Logging
