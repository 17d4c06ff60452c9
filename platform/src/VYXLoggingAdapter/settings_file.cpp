#include "platform/src/VYXLoggingAdapter/settings_file.h"

#include <charconv>
#include <optional>
#include <vector>

#include "KORSysBase/KORPath.h"
#include "platform/os/file_guard.h"
#include "platform/src/VYXLoggingAdapter/console_sink.h"
#include "platform/src/VYXLoggingAdapter/event_log_sink.h"
#include "platform/src/VYXLoggingAdapter/file_sink.h"
#include "platform/src/VYXLoggingAdapter/syslog_sink.h"

namespace VYX::Logging {

namespace {

constexpr const char* kDefaultFormat = "[%TimeStamp%][%ThreadID%][%Channel%][%Severity%] %Message%";
constexpr const char* kSystemLogSocket = "/dev/log";
constexpr const char* kEventSource = "VYX";
constexpr std::string_view kSinkPrefix = "Sinks.";
constexpr std::size_t kLargestFile = 1024 * 1024;
constexpr std::size_t kPiece = 4096;

std::string Unquoted(const std::string& iValue) {
  const bool isQuoted = iValue.size() >= 2 && iValue.front() == '"' && iValue.back() == '"';
  return isQuoted ? iValue.substr(1, iValue.size() - 2) : iValue;
}

std::optional<bool> ToFlag(const std::string& iValue) {
  if (iValue == "true" || iValue == "1" || iValue == "yes" || iValue == "on") {
    return true;
  }
  if (iValue == "false" || iValue == "0" || iValue == "no" || iValue == "off") {
    return false;
  }
  return std::nullopt;
}

std::optional<std::uint64_t> ToNumber(const std::string& iValue) {
  std::uint64_t number = 0;
  const char* const end = iValue.data() + iValue.size();
  const auto [stop, failure] = std::from_chars(iValue.data(), end, number);
  return failure == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

Os::Status ReadSmallFile(const std::string& iPath, std::string& oText) {
  Os::FileDescriptor file = 0;
  Os::Status status = Os::OpenFile(iPath, Os::OpenMode::Read, file);
  if (!status.IsOk()) {
    return status;
  }
  const Os::FileGuard guard(file);
  std::string text;
  std::size_t size = 0;
  std::size_t read = kPiece;
  while (status.IsOk() && read == kPiece && size <= kLargestFile) {
    text.resize(size + kPiece);
    status = Os::ReadFully(file, text.data() + size, kPiece, read);
    size += read;
  }
  if (status.IsOk() && size > kLargestFile) {
    return Os::Failure::FileTooLarge();
  }
  text.resize(size);
  oText = std::move(text);
  return status;
}

}  // namespace

struct SettingsFile::SinkSettings {
  std::string section;
  std::size_t line = 0;
  std::string destination;
  std::size_t destinationLine = 0;
  std::string fileName;
  LineFormat format;
  Filter filter;
  FileSinkOptions file;
};

bool SettingsFile::Fail(std::size_t iLine, std::string iReason) {
  _failedLine = iLine;
  _reason = std::move(iReason);
  return false;
}

bool SettingsFile::Read(const std::string& iPath, std::string& oError) {
  std::string text;
  KORUnicodeString native(std::string_view{iPath});
  static_cast<void>(KORNativePath(native, native));
  const Os::Status status = ReadSmallFile(native.ConvertToChar(), text);
  if (!status.IsOk()) {
    oError = "cannot read the settings file '" + iPath + "': " + status.Describe();
    return false;
  }
  if (!TakeText(text)) {
    oError = "settings file '" + iPath + "', line " + std::to_string(_failedLine) + ": " + _reason;
    return false;
  }
  return true;
}

bool SettingsFile::TakeText(const std::string& iText) {
  std::vector<Adapters::IniEntry> entries;
  if (const std::size_t line = Adapters::ReadIniText(iText, entries); line != 0) {
    return Fail(line, "neither a section nor a setting");
  }
  std::vector<SinkSettings> sinks;
  for (Adapters::IniEntry& entry : entries) {
    entry.value = Unquoted(entry.value);
    if (entry.section == "Core") {
      if (!TakeCore(entry)) {
        return false;
      }
      continue;
    }
    if (!entry.section.starts_with(kSinkPrefix)) {
      return Fail(entry.line, "the section [" + entry.section + "] is unknown");
    }
    if (sinks.empty() || sinks.back().section != entry.section) {
      sinks.push_back(NewSink(entry));
    }
    if (!TakeSink(sinks.back(), entry)) {
      return false;
    }
  }
  for (SinkSettings& sink : sinks) {
    if (!BuildSink(sink)) {
      return false;
    }
  }
  if (_isDisabled) {
    _sinks.clear();
  }
  return true;
}

SettingsFile::SinkSettings SettingsFile::NewSink(const Adapters::IniEntry& iEntry) {
  SinkSettings sink;
  sink.section = iEntry.section;
  sink.line = iEntry.line;
  ParseError none;
  sink.format = *LineFormat::Parse(kDefaultFormat, none);
  return sink;
}

bool SettingsFile::TakeFilterText(const Adapters::IniEntry& iEntry, Filter& oFilter) {
  ParseError error;
  std::optional<Filter> filter = Filter::Parse(iEntry.value, error);
  if (!filter) {
    return Fail(iEntry.line, "unreadable filter at character " + std::to_string(error.position) + ": " + error.reason);
  }
  oFilter = std::move(*filter);
  return true;
}

bool SettingsFile::TakeFlag(const Adapters::IniEntry& iEntry, bool& oFlag) {
  const std::optional<bool> flag = ToFlag(iEntry.value);
  oFlag = flag.value_or(oFlag);
  return flag || Fail(iEntry.line, iEntry.name + " takes true or false, not '" + iEntry.value + "'");
}

bool SettingsFile::TakeNumber(const Adapters::IniEntry& iEntry, std::uint64_t& oNumber) {
  const std::optional<std::uint64_t> number = ToNumber(iEntry.value);
  oNumber = number.value_or(oNumber);
  return number || Fail(iEntry.line, iEntry.name + " takes a whole number, not '" + iEntry.value + "'");
}

bool SettingsFile::TakeCore(const Adapters::IniEntry& iEntry) {
  if (iEntry.name == "Filter") {
    return TakeFilterText(iEntry, _filter);
  }
  if (iEntry.name == "DisableLogging") {
    return TakeFlag(iEntry, _isDisabled);
  }
  return Fail(iEntry.line, "the setting '" + iEntry.name + "' is unknown in [Core]");
}

bool SettingsFile::TakeSink(SinkSettings& ioSink, const Adapters::IniEntry& iEntry) {
  if (iEntry.name == "Destination") {
    ioSink.destination = iEntry.value;
    ioSink.destinationLine = iEntry.line;
    return true;
  }
  if (iEntry.name == "Filter") {
    return TakeFilterText(iEntry, ioSink.filter);
  }
  if (iEntry.name == "Format") {
    ParseError error;
    std::optional<LineFormat> format = LineFormat::Parse(iEntry.value, error);
    if (!format) {
      return Fail(iEntry.line,
                  "unreadable format at character " + std::to_string(error.position) + ": " + error.reason);
    }
    ioSink.format = std::move(*format);
    return true;
  }
  return TakeFileSetting(ioSink, iEntry);
}

bool SettingsFile::TakeFileSetting(SinkSettings& ioSink, const Adapters::IniEntry& iEntry) {
  if (iEntry.name == "FileName") {
    ioSink.fileName = iEntry.value;
    return true;
  }
  if (iEntry.name == "Target") {
    ioSink.file.target = iEntry.value;
    return true;
  }
  if (iEntry.name == "Append") {
    return TakeFlag(iEntry, ioSink.file.append);
  }
  if (iEntry.name == "AutoFlush") {
    return TakeFlag(iEntry, ioSink.file.autoFlush);
  }
  if (iEntry.name == "RotationSize") {
    return TakeNumber(iEntry, ioSink.file.rotationSize);
  }
  if (iEntry.name == "MaxFiles") {
    return TakeNumber(iEntry, ioSink.file.maxFiles);
  }
  return Fail(iEntry.line, "the setting '" + iEntry.name + "' is unknown in [" + ioSink.section + "]");
}

bool SettingsFile::BuildSink(SinkSettings& ioSink) {
  if (ioSink.destination.empty()) {
    return Fail(ioSink.line, "[" + ioSink.section + "] names no Destination");
  }
  if (ioSink.destination == "Console") {
    _sinks.push_back(std::make_shared<ConsoleSink>(std::move(ioSink.format), std::move(ioSink.filter)));
    return true;
  }
  if (ioSink.destination == "Syslog" || ioSink.destination == "SimpleEventLog") {
    return BuildHostSink(ioSink);
  }
  if (ioSink.destination != "TextFile") {
    return Fail(ioSink.destinationLine, "the destination '" + ioSink.destination + "' is unknown");
  }
  if (ioSink.fileName.empty()) {
    return Fail(ioSink.line, "[" + ioSink.section + "] writes a text file and names no FileName");
  }
  ioSink.file.name = FileNamePattern(ioSink.fileName);
  // A file that cannot be opened now is tried again with every line; the trouble is reported by the sink.
  auto sink = std::make_shared<FileSink>(std::move(ioSink.file), std::move(ioSink.format), std::move(ioSink.filter));
  sink->Open();
  _sinks.push_back(std::move(sink));
  return true;
}

// The log that the host keeps for all programs, of one kind or the other.
bool SettingsFile::BuildHostSink(SinkSettings& ioSink) {
  std::string& target = ioSink.file.target;
  if (ioSink.destination == "Syslog") {
    if (!Os::DatagramSocket::IsAvailable()) {
      return Fail(ioSink.destinationLine, "the destination Syslog does not exist on Windows; SimpleEventLog does");
    }
    target = target.empty() ? kSystemLogSocket : target;
    _sinks.push_back(
        std::make_shared<SyslogSink>(std::move(target), std::move(ioSink.format), std::move(ioSink.filter)));
    return true;
  }
  if (!Os::EventLog::IsAvailable()) {
    return Fail(ioSink.destinationLine, "the destination SimpleEventLog exists on Windows only");
  }
  target = target.empty() ? kEventSource : target;
  _sinks.push_back(
      std::make_shared<EventLogSink>(std::move(target), std::move(ioSink.format), std::move(ioSink.filter)));
  return true;
}

}  // namespace VYX::Logging
