#pragma once

#include <string>
#include <utility>

#include "platform/adapters/ini_text.h"
#include "platform/src/VYXLoggingAdapter/sink_set.h"

namespace VYX::Logging {

/**
 * Reads the back end's settings file: `[Core]` with Filter and DisableLogging, and a section `[Sinks.Name]` per sink
 * with Destination (Console, TextFile, Syslog, SimpleEventLog), Filter, Format, and for text files FileName, Append,
 * AutoFlush, RotationSize, MaxFiles and Target. Values may stand in double quotes.
 */
class SettingsFile {
 public:
  /// Reads and checks a file. False when it is unreadable or says something unknown; oError then names file, line and
  /// reason.
  bool Read(const std::string& iPath, std::string& oError);

  SinkSet::Sinks TakeSinks() { return std::move(_sinks); }
  Filter TakeFilter() { return std::move(_filter); }

 private:
  struct SinkSettings;

  bool TakeText(const std::string& iText);
  static SinkSettings NewSink(const Adapters::IniEntry& iEntry);
  bool TakeCore(const Adapters::IniEntry& iEntry);
  bool TakeSink(SinkSettings& ioSink, const Adapters::IniEntry& iEntry);
  bool TakeFileSetting(SinkSettings& ioSink, const Adapters::IniEntry& iEntry);
  bool TakeFilterText(const Adapters::IniEntry& iEntry, Filter& oFilter);
  bool TakeFlag(const Adapters::IniEntry& iEntry, bool& oFlag);
  bool TakeNumber(const Adapters::IniEntry& iEntry, std::uint64_t& oNumber);
  bool BuildSink(SinkSettings& ioSink);
  bool BuildHostSink(SinkSettings& ioSink);
  bool Fail(std::size_t iLine, std::string iReason);

  SinkSet::Sinks _sinks;
  Filter _filter;
  bool _isDisabled = false;
  std::size_t _failedLine = 0;
  std::string _reason;
};

}  // namespace VYX::Logging
