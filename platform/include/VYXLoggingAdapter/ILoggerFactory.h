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
  ISinkHandle() = default;
  ISinkHandle(const ISinkHandle&) = default;
  ISinkHandle& operator=(const ISinkHandle&) = default;
};

/**
 * The logging back end: makes channel loggers and takes sinks. Every operation may be called from several threads at
 * once.
 *
 * The order of the virtual operations is fixed.
 */
class VYX_EXPORT ILoggerFactory {
 public:
  virtual ~ILoggerFactory();

  /// Adds a file that is written while the answered handle is referenced; empty on failure.
  virtual std::shared_ptr<ISinkHandle> AddSink(const TextFileSink& iSink) = 0;

  /// Hands everything that is still buffered to the operating system.
  virtual void Flush() = 0;

  /// The logger of a channel; empty on failure.
  virtual std::shared_ptr<ILogger> CreateLogger(const char* iChannel) = 0;

 protected:
  ILoggerFactory() = default;
  ILoggerFactory(const ILoggerFactory&) = default;
  ILoggerFactory& operator=(const ILoggerFactory&) = default;
};

}  // namespace VYX::Logging
