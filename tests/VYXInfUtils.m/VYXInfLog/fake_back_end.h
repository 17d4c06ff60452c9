#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "VYXLoggingAdapter/ILogger.h"
#include "VYXLoggingAdapter/ILoggerFactory.h"

namespace VYX::Test {

/// Keeps what was written; shared, so that it outlives the logger.
struct Record {
  std::mutex lock;
  std::vector<std::pair<int, std::string>> messages;
  int threshold = 3;
  std::string channel;
};

/// A channel logger that keeps messages instead of writing them.
class RecordingLogger : public Logging::ILogger {
 public:
  explicit RecordingLogger(std::shared_ptr<Record> iRecord) : _record(std::move(iRecord)) {}
  bool IsFiltered(int iLevel) const override { return iLevel > _record->threshold; }
  void Write(int iLevel, const char* iText) override {
    const std::lock_guard guard(_record->lock);
    _record->messages.emplace_back(iLevel, iText);
  }

 private:
  std::shared_ptr<Record> _record;
};

/// A back end over one record; without a record it gives no channel logger.
class RecordingFactory : public Logging::ILoggerFactory {
 public:
  explicit RecordingFactory(std::shared_ptr<Record> iRecord) : _record(std::move(iRecord)) {}
  std::shared_ptr<Logging::ISinkHandle> AddSink(const Logging::TextFileSink&) override { return nullptr; }
  void Flush() override {}
  std::shared_ptr<Logging::ILogger> CreateLogger(const char* iChannel) override {
    if (_record == nullptr) {
      return nullptr;
    }
    _record->channel = iChannel;
    return std::make_shared<RecordingLogger>(_record);
  }

 private:
  std::shared_ptr<Record> _record;
};

}  // namespace VYX::Test
