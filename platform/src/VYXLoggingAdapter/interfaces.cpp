#include "VYXLoggingAdapter/ILogger.h"
#include "VYXLoggingAdapter/ILoggerFactory.h"

namespace VYX::Logging {

// Defined here, so that the type information of the interfaces has one home in the shared library.
ILogger::~ILogger() = default;
std::uint32_t ILogger::AcceptedLevels() const {
  return 0;
}
ISinkHandle::~ISinkHandle() = default;
ILoggerFactory::~ILoggerFactory() = default;

}  // namespace VYX::Logging
