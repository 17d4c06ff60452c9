#pragma once

#include <memory>

#include "VYXInfLog.h"

namespace VYX::Internal {

/// What the default logger may be.
enum class LoggerMode : int {
  None = 0,       ///< none, or closed
  Console = 1,    ///< the console default
  Configured = 2  ///< installed on purpose
};

/// The library's own way to make and install loggers; callers have none.
struct LoggerAccess {
  using Builder = std::shared_ptr<VYXInfLog> (*)(const void* iSettings);

  static std::shared_ptr<VYXInfLog> MakeConsole(VYXInfLogLevel iLevel);
  static std::shared_ptr<VYXInfLog> MakeOver(std::shared_ptr<VYX::Logging::ILoggerFactory> iFactory,
                                             VYXInfLogLevel iLevel);

  /**
   * Replaces the default logger under the logger lock. False when the console default meets a logger that is there, or
   * when the mode is in force already.
   *
   * @param iMode the mode to come.
   * @param iBuild makes the logger of the mode, called under the lock; null for mode None.
   * @param iSettings handed to iBuild.
   */
  static bool ReplaceDefault(LoggerMode iMode, Builder iBuild, const void* iSettings);

  /// Puts a console logger of any threshold in place of whatever is the default; tests steer the level with it.
  static void InstallConsole(VYXInfLogLevel iLevel);

  static void Release(VYXInfLog& ioLogger) noexcept { ioLogger.ReleaseLogger(); }
  static bool HasBackEnd(const VYXInfLog& iLogger) noexcept { return iLogger._backEnd != nullptr; }
  /// The channel logger; null in console mode.
  static const VYX::Logging::ILogger* Channel(const VYXInfLog& iLogger) noexcept;
  static VYXInfLogLevel Threshold(const VYXInfLog& iLogger) noexcept { return iLogger._level; }

  /// True while a logger with a back end exists that was not retired.
  static bool IsOpen() noexcept;
};

}  // namespace VYX::Internal
