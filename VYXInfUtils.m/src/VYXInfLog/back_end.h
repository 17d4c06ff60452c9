#pragma once

#include <memory>

#include "VYXInfLog.h"

/// What a logger with a back end owns. The channel logger goes before the factory that made it.
struct VYXInfLog::BackEnd {
  std::shared_ptr<VYX::Logging::ILoggerFactory> factory;
  std::shared_ptr<VYX::Logging::ILogger> logger;
  bool released = false;  // true once the logger was retired properly
};
