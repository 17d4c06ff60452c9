#pragma once

#include "KORSysTS/KORUnicodeString.h"
#include "VYXInfLog.h"

namespace VYX::Internal {

/// How the default logger is to be configured.
struct LoggerSettings {
  VYXInfLogLevel level = INFO;
  KORUnicodeString file;    // the log file; empty means the console
  KORUnicodeString config;  // a settings file of the back end; wins over level and file
};

/// The format of every logger and sink that the library configures itself.
inline constexpr const char* kLogFormat = "[%TimeStamp%][%ThreadID%][%Channel%][%Severity%] %Message%";

/// The filter that lets pass what is as severe as a level, or more.
KORUnicodeString FilterFor(VYXInfLogLevel iLevel);

/// Lets the environment override the settings: VYX_LOG_CONFIG_FILE, then VYX_LOG_OUTPUT, then VYX_LOG_LEVEL where no
/// settings file is in force.
void ApplyEnvironment(LoggerSettings& ioSettings, const KORUnicodeString& iAppName);

/// Installs the configured default logger; false where one is in force.
bool Configure(const LoggerSettings& iSettings);

/// The settings as the report lines show them: "Level=INFO, File=<>, Config=<>".
KORUnicodeString Describe(const LoggerSettings& iSettings);

}  // namespace VYX::Internal
