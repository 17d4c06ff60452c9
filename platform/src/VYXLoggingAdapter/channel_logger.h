#pragma once

#include <memory>
#include <string>
#include <utility>

#include "VYXLoggingAdapter/ILogger.h"
#include "platform/src/VYXLoggingAdapter/sink_set.h"

namespace VYX::Logging {

/// The logger of one channel over a set of sinks.
class ChannelLogger : public ILogger {
 public:
  ChannelLogger(std::shared_ptr<SinkSet> iSinks, std::string iChannel)
      : _sinks(std::move(iSinks)), _channel(std::move(iChannel)) {}

  bool IsFiltered(int iLevel) const override { return !_sinks->Accepts(iLevel, _channel); }
  void Write(int iLevel, const char* iText) override;
  std::uint32_t AcceptedLevels() const override;

 private:
  std::shared_ptr<SinkSet> _sinks;
  std::string _channel;
};

}  // namespace VYX::Logging
