#pragma once

#include <cstdint>
#include <string_view>

#include "platform/os/clock.h"

namespace VYX::Logging {

/// One message on its way to the sinks. The texts belong to the caller of the logger.
struct Record {
  int level;
  std::string_view channel;
  std::string_view message;
  Os::WallTime time;
  std::uint32_t threadId;
  std::int32_t processId;
};

}  // namespace VYX::Logging
