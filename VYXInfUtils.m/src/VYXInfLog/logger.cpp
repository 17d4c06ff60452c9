#include <memory>
#include <utility>

#include "VYXInfLog.h"
#include "VYXInfLog/back_end.h"
#include "VYXInfLog/default_logger.h"
#include "VYXInfLog/logger_access.h"
#include "VYXLoggingAdapter/ILogger.h"
#include "VYXLoggingAdapter/ILoggerFactory.h"

namespace {

constexpr const char* kChannel = "VYX";

// The repetition makes the line stand out in any log.
constexpr int kInternalErrorRepetitions = 10;
constexpr const char* kInternalError = "********** Internal error: Logging not closed before shutdown. **********";

}  // namespace

const char* const VYXInfLog::_defaultAppName = "VYX";

VYXInfLog::LogSink::LogSink(std::shared_ptr<VYX::Logging::ISinkHandle> iHandle) : _handle(std::move(iHandle)) {}

VYXInfLog::LogSink::~LogSink() = default;

VYXInfLog::VYXInfLog(VYXInfLogLevel iLevel) noexcept : _level(iLevel) {}

VYXInfLog::VYXInfLog(std::shared_ptr<VYX::Logging::ILoggerFactory> iFactory, VYXInfLogLevel iLevel)
    : _level(iLevel), _backEnd(std::make_unique<BackEnd>()) {
  _backEnd->factory = std::move(iFactory);
  CreateLogger();
}

VYXInfLog::~VYXInfLog() {
  if (_backEnd == nullptr) {
    return;
  }
  VYX::Internal::NoteBackEndClosed(this);
  if (_backEnd->released) {
    return;
  }
  for (int line = 0; line < kInternalErrorRepetitions; ++line) {
    Log(FATAL, kInternalError);
  }
}

void VYXInfLog::CreateLogger() {
  if (_backEnd->factory != nullptr) {
    _backEnd->logger = _backEnd->factory->CreateLogger(kChannel);
  }
  if (_backEnd->logger == nullptr) {
    _backEnd.reset();
    Log(ERROR, "Failed to initialize logging framework");
    return;
  }
  VYX::Internal::NoteBackEndOpened(this);
}

const VYX::Logging::ILogger* VYX::Internal::LoggerAccess::Channel(const VYXInfLog& iLogger) noexcept {
  return iLogger._backEnd == nullptr ? nullptr : iLogger._backEnd->logger.get();
}

void VYXInfLog::ReleaseLogger() noexcept {
  if (_backEnd != nullptr) {
    _backEnd->released = true;
  }
}

void VYXInfLog::Log(VYXInfLogLevel iLevel, const char* iText) {
  if (_backEnd == nullptr) {
    WriteConsoleLine(iLevel, iText);
    return;
  }
  _backEnd->logger->Write(iLevel, iText == nullptr ? "" : iText);
}

bool VYXInfLog::IsFiltered(VYXInfLogLevel iLevel) const {
  return _backEnd == nullptr ? iLevel > _level : _backEnd->logger->IsFiltered(iLevel);
}
