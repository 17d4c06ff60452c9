#pragma once

#include <cstdint>
#include <memory>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

// windows.h defines this name as a macro, and another by means of it, which keeps its value.
#ifdef ERROR
#undef ERROR
#undef RGN_ERROR
#define RGN_ERROR 0
#endif
// Tells the header that stands before the host's wingdi.h to do the same where windows.h comes later.
#define VYX_HAS_LEVEL_ERROR

/**
 * @file
 * The default logger.
 */

/**
 * Message levels, a lower number being more severe. A value outside the named ones is a legal argument everywhere: it
 * is named "TRACE".
 */
enum VYXInfLogLevel : std::int32_t {
  FATAL = 0,  ///< "FATAL"
  ERROR = 1,  ///< "ERROR": failures
  WARN = 2,   ///< "WARN": fallbacks
  INFO = 3,   ///< "INFO": start-up and configuration
  DEBUG = 4,  ///< "DEBUG": refused requests and argument errors
  TRACE = 5   ///< "TRACE": details of file and process operations
};

namespace VYX::Logging {
class ILogger;
class ILoggerFactory;
class ISinkHandle;
}  // namespace VYX::Logging
namespace VYX::Internal {
struct LoggerAccess;
}

/**
 * The one logger of the library and of the programs that use it.
 *
 * A process has one default logger, reached through GetDefaultLogger and never absent: until it is configured it is a
 * console logger at INFO, which writes one line per message to standard output:
 *
 * ```cpp
 * const auto logger = VYXInfLog::GetDefaultLogger();
 * if (!logger->IsFiltered(INFO)) {
 *   logger->Log(INFO, "ready");
 * }
 * ```
 *
 * prints
 *
 * ```text
 * 2019-03-05_14-07-09; INFO; 4242; 4243; ready
 * ```
 *
 * (local time, level, process id, thread id, text). A logger with a back end hands each message to that instead.
 *
 * Loggers are made by the library only. Every operation may be called from several threads at once, before main and
 * while static objects are destroyed.
 */
class VYX_EXPORT VYXInfLog {
 public:
  /// Keeps a log file that was added to a logger open; the file is no longer written when the last reference dies.
  class VYX_EXPORT LogSink {
   public:
    /// Keeps the back end's handle of the file.
    explicit LogSink(std::shared_ptr<VYX::Logging::ISinkHandle> iHandle);
    ~LogSink();

   private:
    std::shared_ptr<VYX::Logging::ISinkHandle> _handle;
  };

  /// "VYX", the application name used when none is given.
  static const char* const _defaultAppName;

  /// The current default logger, never empty: where there is none, a console logger at INFO becomes it.
  static std::shared_ptr<VYXInfLog> GetDefaultLogger();

  /**
   * Configures the default logger from a level and a file.
   *
   * With a file, the process's standard output and standard error go into it, emptied first, until logging is closed,
   * and so do those of the children that it starts; without one the log goes to standard output. Each line reads
   * "[2019-03-05 14:07:09.000042][4243][VYX][INFO] the text".
   *
   * The environment overrides the arguments: `VYX_LOG_CONFIG_FILE` names a settings file of the back end,
   * `VYX_LOG_OUTPUT` is "CONSOLE" or a folder for a file named by BuildLogFileName, `VYX_LOG_LEVEL` names the level
   * where no settings file is in force. What is named there and does not exist is reported with a failure trace and
   * ignored.
   *
   * The log then tells at INFO what was asked for and what is used.
   *
   * @param iLevel the logger's level.
   * @param iFile the log file; empty for standard output.
   * @param iAppName used only in the name of a file that VYX_LOG_OUTPUT asks for.
   * @return true when the logger was installed; false when a configured one is in force. True does not mean that the
   * back end could start: where it cannot, the logger writes to the console and says "Failed to initialize logging
   * framework".
   */
  static bool Init(VYXInfLogLevel iLevel, const KORUnicodeString& iFile, const KORUnicodeString& iAppName);

  /// Configures the default logger from a settings file of the back end, as Init does with VYX_LOG_CONFIG_FILE; the
  /// environment overrides it in the same way.
  static bool InitFromFile(const KORUnicodeString& iConfigFile);

  /**
   * Adds a log file with its own level to the default logger.
   *
   * @param iFile the log file.
   * @param iLevel what is written to it.
   * @return what keeps the file in use; it is written while this is referenced and the logger exists. Empty, after a
   * failure trace, when there is no default logger or it has no back end, and for an empty path or one that cannot be
   * opened.
   */
  static std::shared_ptr<LogSink> CreateFileLogger(const KORUnicodeString& iFile, VYXInfLogLevel iLevel);

  /**
   * Makes the path of a log file of this run: directory, separator, application name without illegal characters and "_"
   * (where there is a name), the process's start time, "_", the process id and ".log".
   *
   * @param oName the path; untouched on failure.
   * @param iAppName the application's name; may be empty.
   * @param iDirectory where the file is to stand; empty for the temporary folder.
   * @return false, after a failure trace, when there is no such folder.
   */
  static bool BuildLogFileName(KORUnicodeString& oName, const KORUnicodeString& iAppName,
                               const KORUnicodeString& iDirectory);

  /**
   * Retires the default logger: writes "VYXInfLog::Close" at INFO through it, and leaves the process without one until
   * GetDefaultLogger makes a new console logger.
   */
  static void Close();

  /**
   * Writes one message, without filtering: that is the caller's test. Never fails towards its caller. A console line is
   * written whole, also when several threads write.
   *
   * @param iLevel the message's level.
   * @param iText UTF-8 text; null is written as the empty text.
   */
  void Log(VYXInfLogLevel iLevel, const char* iText);

  /// True when a message of this level would be dropped: for a console logger, when the level's number is greater than
  /// the logger's threshold.
  bool IsFiltered(VYXInfLogLevel iLevel) const;

  /// The level's name; "TRACE" for every value outside 0 to 5.
  static const char* LevelToString(VYXInfLogLevel iLevel);

  /// The level whose name is iText, whatever its letter case; iDefaultLevel for null, an empty text and an unknown
  /// name.
  static VYXInfLogLevel LevelFromString(const char* iText, VYXInfLogLevel iDefaultLevel);

  /// A logger with a back end that was not retired says so, ten times, at FATAL; any other ends silently.
  ~VYXInfLog();

  VYXInfLog(const VYXInfLog&) = delete;
  VYXInfLog& operator=(const VYXInfLog&) = delete;

 private:
  friend struct VYX::Internal::LoggerAccess;
  struct BackEnd;

  /// A console logger.
  explicit VYXInfLog(VYXInfLogLevel iLevel) noexcept;

  /// A logger over a back end; where the factory is empty or gives no channel logger, a console logger that says so.
  VYXInfLog(std::shared_ptr<VYX::Logging::ILoggerFactory> iFactory, VYXInfLogLevel iLevel);

  void CreateLogger();
  std::shared_ptr<LogSink> AddSink(const KORUnicodeString& iFile, VYXInfLogLevel iLevel);
  void ReleaseLogger() noexcept;
  void WriteConsoleLine(VYXInfLogLevel iLevel, const char* iText) const;

  VYXInfLogLevel _level;
  std::unique_ptr<BackEnd> _backEnd;
};
