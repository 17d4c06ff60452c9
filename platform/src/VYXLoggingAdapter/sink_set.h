#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/src/VYXLoggingAdapter/filter.h"
#include "platform/src/VYXLoggingAdapter/fork_safe_mutex.h"
#include "platform/src/VYXLoggingAdapter/sink.h"

namespace VYX::Logging {

/**
 * The sinks of a back end: those that it was made with, which stay, and those that come and go with their handles.
 *
 * May be used by several threads at once. No lock is taken while there are no additional sinks.
 */
class SinkSet {
 public:
  using Sinks = std::vector<std::shared_ptr<Sink>>;

  /// A record has to pass iFilter before any sink is asked.
  SinkSet(Sinks iSinks, Filter iFilter) : _sinks(std::move(iSinks)), _filter(std::move(iFilter)) {}

  void Add(std::shared_ptr<Sink> iSink);
  void Remove(const Sink* iSink);

  /// True when some sink takes a record of this level on this channel.
  bool Accepts(int iLevel, std::string_view iChannel) const;

  /// Writes the record to every sink that takes it.
  void Write(const Record& iRecord) const noexcept;

  void Flush() const noexcept;

 private:
  Sinks Additional() const;

  const Sinks _sinks;
  const Filter _filter;
  mutable ForkSafeMutex _lock;
  Sinks _additional;
  std::atomic<std::size_t> _additionalCount{0};
};

}  // namespace VYX::Logging
