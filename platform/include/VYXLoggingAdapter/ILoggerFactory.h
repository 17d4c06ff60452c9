#pragma once

#include <memory>

#include "VYXExport.h"

namespace VYX::Logging {

class ILogger;
class TextFileSink;

/// What AddSink answers: the sink is active while its handle is referenced.
class VYX_EXPORT ISinkHandle {
 public:
  virtual ~ISinkHandle();

 protected:
  /// @{
  /// For derived classes.
  ISinkHandle() = default;
  ISinkHandle(const ISinkHandle&) = default;
  ISinkHandle& operator=(const ISinkHandle&) = default;
  /// @}
};

/**
 * The logging back end: makes channel loggers and takes sinks. Every operation may be called from several threads at
 * once.
 *
 * The order of the virtual operations is fixed.
 */
class VYX_EXPORT ILoggerFactory {
 public:
  /// The output value of a back end on standard output.
  static constexpr int kConsoleOutput = 1;

  /**
   * A back end as a settings file says. Empty when the file is unreadable or says something unknown: one line on
   * standard error then names file, line and reason.
   *
   * @param iConfigPath the settings file; docs/logging.md describes its dialect.
   * @param oIsMade whether the back end was made; may be null.
   */
  static std::shared_ptr<ILoggerFactory> create(const char* iConfigPath, bool* oIsMade);

  /**
   * A back end on standard output. Empty for any other output and for an unreadable format or filter, of which one line
   * on standard error tells the place.
   *
   * @param iFormat how a record becomes a line.
   * @param iFilter which records are written; the empty text takes all.
   * @param iOutput kConsoleOutput.
   * @param oIsMade whether the back end was made; may be null.
   */
  static std::shared_ptr<ILoggerFactory> create(const char* iFormat, const char* iFilter, int iOutput, bool* oIsMade);

  /// A back end that writes a log file. Empty for an unreadable format or filter and when the file cannot be opened.
  static std::shared_ptr<ILoggerFactory> create(const TextFileSink& iSink, bool* oIsMade);

  virtual ~ILoggerFactory();

  /// Adds a file that is written while the answered handle is referenced; empty on failure.
  virtual std::shared_ptr<ISinkHandle> AddSink(const TextFileSink& iSink) = 0;

  /// Hands everything that is still buffered to the operating system.
  virtual void Flush() = 0;

  /// The logger of a channel; empty on failure.
  virtual std::shared_ptr<ILogger> CreateLogger(const char* iChannel) = 0;

 protected:
  /// @{
  /// For derived classes.
  ILoggerFactory() = default;
  ILoggerFactory(const ILoggerFactory&) = default;
  ILoggerFactory& operator=(const ILoggerFactory&) = default;
  /// @}
};

}  // namespace VYX::Logging
