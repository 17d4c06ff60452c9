#include "platform/src/VYXLoggingAdapter/sink_set.h"

#include <algorithm>
#include <mutex>

namespace VYX::Logging {

namespace {

bool SomeAccepts(const SinkSet::Sinks& iSinks, int iLevel, std::string_view iChannel) {
  return std::any_of(iSinks.begin(), iSinks.end(),
                     [&](const std::shared_ptr<Sink>& iSink) { return iSink->Accepts(iLevel, iChannel); });
}

void WriteTo(const SinkSet::Sinks& iSinks, const Record& iRecord) noexcept {
  for (const std::shared_ptr<Sink>& sink : iSinks) {
    if (sink->Accepts(iRecord.level, iRecord.channel)) {
      sink->Write(iRecord);
    }
  }
}

}  // namespace

void SinkSet::Add(std::shared_ptr<Sink> iSink) {
  const std::lock_guard guard(_lock);
  _additional.push_back(std::move(iSink));
  _additionalCount.store(_additional.size(), std::memory_order_release);
}

void SinkSet::Remove(const Sink* iSink) {
  std::shared_ptr<Sink> removed;
  const std::lock_guard guard(_lock);
  const auto place = std::find_if(_additional.begin(), _additional.end(),
                                  [iSink](const std::shared_ptr<Sink>& iOther) { return iOther.get() == iSink; });
  if (place != _additional.end()) {
    removed = std::move(*place);
    _additional.erase(place);
    _additionalCount.store(_additional.size(), std::memory_order_release);
  }
}

SinkSet::Sinks SinkSet::Additional() const {
  if (_additionalCount.load(std::memory_order_acquire) == 0) {
    return {};
  }
  const std::lock_guard guard(_lock);
  return _additional;
}

bool SinkSet::Accepts(int iLevel, std::string_view iChannel) const {
  return _filter.Accepts(iLevel, iChannel) &&
         (SomeAccepts(_sinks, iLevel, iChannel) || SomeAccepts(Additional(), iLevel, iChannel));
}

void SinkSet::Write(const Record& iRecord) const noexcept {
  if (!_filter.Accepts(iRecord.level, iRecord.channel)) {
    return;
  }
  WriteTo(_sinks, iRecord);
  try {
    WriteTo(Additional(), iRecord);
  } catch (const std::exception&) {
    // No memory for the list of additional sinks: the others have the line.
  }
}

void SinkSet::Flush() const noexcept {
  for (const std::shared_ptr<Sink>& sink : _sinks) {
    sink->Flush();
  }
}

}  // namespace VYX::Logging
