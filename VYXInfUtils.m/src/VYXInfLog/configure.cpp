#include <memory>
#include <string>

#include "KORSysBase/KORPath.h"
#include "VYXInfLog/logger_access.h"
#include "VYXInfLog/settings.h"
#include "VYXInfSystemUtil.h"
#include "VYXLoggingAdapter/ILoggerFactory.h"
#include "VYXLoggingAdapter/TextFileSink.h"
#include "internal/FailureTrace.h"
#include "platform/os/output_redirection.h"

namespace VYX::Internal {

namespace {

using Logging::ILoggerFactory;
using Logging::TextFileSink;

bool RedirectOutputs(const KORUnicodeString& iFile) {
  KORUnicodeString native;
  return KORNativePath(iFile, native) >= 0 && Os::RedirectOutputs(native.ConvertToChar()).IsOk();
}

std::shared_ptr<ILoggerFactory> FactoryForFile(const KORUnicodeString& iFile, const KORUnicodeString& iFilter) {
  KORUnicodeString folder;
  if (VYXInfSystemUtil::SplitFilePath(iFile, &folder, nullptr) < 0) {
    return nullptr;
  }
  return ILoggerFactory::create(TextFileSink(folder, iFile, kLogFormat, iFilter), nullptr);
}

// With a file, the process's own outputs go into it, and the logger writes to the console, which is then the file.
std::shared_ptr<ILoggerFactory> MakeFactory(const LoggerSettings& iSettings) {
  if (!iSettings.config.IsEmpty()) {
    return ILoggerFactory::create(iSettings.config, nullptr);
  }
  const KORUnicodeString filter = FilterFor(iSettings.level);
  if (iSettings.file.IsEmpty() || RedirectOutputs(iSettings.file)) {
    return ILoggerFactory::create(kLogFormat, filter, ILoggerFactory::kConsoleOutput, nullptr);
  }
  return FactoryForFile(iSettings.file, filter);
}

std::shared_ptr<VYXInfLog> BuildConfigured(const void* iSettings) {
  const LoggerSettings& settings = *static_cast<const LoggerSettings*>(iSettings);
  return LoggerAccess::MakeOver(MakeFactory(settings), settings.config.IsEmpty() ? settings.level : INFO);
}

}  // namespace

KORUnicodeString FilterFor(VYXInfLogLevel iLevel) {
  return KORUnicodeString(std::string_view("%Severity% <= " + std::to_string(static_cast<int>(iLevel))));
}

bool Configure(const LoggerSettings& iSettings) {
  return LoggerAccess::ReplaceDefault(LoggerMode::Configured, &BuildConfigured, &iSettings);
}

KORUnicodeString Describe(const LoggerSettings& iSettings) {
  KORUnicodeString text("Level=");
  text += VYXInfLog::LevelToString(iSettings.level);
  text += ", File=<";
  text += iSettings.file;
  text += ">, Config=<";
  text += iSettings.config;
  text += ">";
  return text;
}

}  // namespace VYX::Internal
