#include <memory>
#include <utility>

#include "VYXInfLog.h"
#include "VYXInfLog/back_end.h"
#include "VYXInfLog/default_logger.h"
#include "VYXInfLog/settings.h"
#include "VYXInfSystemUtil.h"
#include "VYXLoggingAdapter/ILoggerFactory.h"
#include "VYXLoggingAdapter/TextFileSink.h"
#include "internal/FailureTrace.h"

using VYX::Internal::FailureReturn;

std::shared_ptr<VYXInfLog::LogSink> VYXInfLog::CreateFileLogger(const KORUnicodeString& iFile, VYXInfLogLevel iLevel) {
  const std::shared_ptr<VYXInfLog> logger = VYX::Internal::CurrentDefaultLogger();
  if (logger == nullptr) {
    return FailureReturn(VYX_HERE, std::shared_ptr<LogSink>());
  }
  // The line has no closing bracket, on purpose.
  VYX::Internal::LogUnlessFiltered(INFO, "VYXInfLog::CreateFileLogger (Level=", LevelToString(iLevel), ", FileName=<",
                                   iFile, ">");
  return logger->AddSink(iFile, iLevel);
}

std::shared_ptr<VYXInfLog::LogSink> VYXInfLog::AddSink(const KORUnicodeString& iFile, VYXInfLogLevel iLevel) {
  if (_backEnd == nullptr) {
    return FailureReturn(VYX_HERE, std::shared_ptr<LogSink>());
  }
  if (iFile.IsEmpty()) {
    return FailureReturn(VYX_HERE, std::shared_ptr<LogSink>());
  }
  KORUnicodeString folder;
  const long code = VYXInfSystemUtil::SplitFilePath(iFile, &folder, nullptr);
  if (code < 0) {
    VYX::Internal::LogPendingError(code);
    return FailureReturn(VYX_HERE, std::shared_ptr<LogSink>());
  }
  const VYX::Logging::TextFileSink description(folder, iFile, VYX::Internal::kLogFormat,
                                               VYX::Internal::FilterFor(iLevel));
  std::shared_ptr<VYX::Logging::ISinkHandle> handle = _backEnd->factory->AddSink(description);
  if (handle == nullptr) {
    return FailureReturn(VYX_HERE, std::shared_ptr<LogSink>());
  }
  VYX::Internal::RefreshAcceptedLevels();
  return std::make_shared<LogSink>(std::move(handle));
}
