#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "VYXLoggingAdapter/ILoggerFactory.h"
#include "platform/src/VYXLoggingAdapter/sink_set.h"

namespace VYX::Logging {

/// The back end over one set of sinks.
class Factory : public ILoggerFactory {
 public:
  Factory(SinkSet::Sinks iSinks, Filter iFilter)
      : _sinks(std::make_shared<SinkSet>(std::move(iSinks), std::move(iFilter))) {}

  std::shared_ptr<ISinkHandle> AddSink(const TextFileSink& iSink) override;
  void Flush() override { _sinks->Flush(); }
  std::shared_ptr<ILogger> CreateLogger(const char* iChannel) override;

 private:
  std::shared_ptr<SinkSet> _sinks;
};

/// What a format and a filter text say; where one is unreadable false, and the reason with its place stands on standard
/// error.
bool ParseTexts(std::string_view iFormat, std::string_view iFilter, LineFormat& oFormat, Filter& oFilter);

}  // namespace VYX::Logging
