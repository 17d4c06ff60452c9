#include "platform/src/VYXLoggingAdapter/factory.h"

#include <new>
#include <optional>

#include "KORSysBase/KORPath.h"
#include "VYXLoggingAdapter/TextFileSink.h"
#include "platform/os/console.h"
#include "platform/os/native_path.h"
#include "platform/src/VYXLoggingAdapter/channel_logger.h"
#include "platform/src/VYXLoggingAdapter/console_sink.h"
#include "platform/src/VYXLoggingAdapter/file_sink.h"
#include "platform/src/VYXLoggingAdapter/settings_file.h"

namespace VYX::Logging {

namespace {

// Keeps an additional sink in its set.
class SinkHandle : public ISinkHandle {
 public:
  SinkHandle(std::shared_ptr<SinkSet> iSet, std::shared_ptr<Sink> iSink) : _set(std::move(iSet)), _sink(iSink.get()) {
    _set->Add(std::move(iSink));
  }
  ~SinkHandle() override { _set->Remove(_sink); }
  SinkHandle(const SinkHandle&) = delete;
  SinkHandle& operator=(const SinkHandle&) = delete;

 private:
  std::shared_ptr<SinkSet> _set;
  const Sink* _sink;
};

void ReportUnreadable(std::string_view iWhat, std::string_view iText, const ParseError& iError) {
  Os::WriteErrorConsole("Logging: the " + std::string(iWhat) + " '" + std::string(iText) +
                        "' is unreadable at character " + std::to_string(iError.position) + ": " + iError.reason +
                        "\n");
}

// The host's spelling of a path; the path itself where the host has none for it, so that opening it fails with its
// name.
std::string NativePath(const std::string& iPath) {
  KORUnicodeString native;
  return KORNativePath(KORUnicodeString(std::string_view(iPath)), native) < 0 ? iPath : native.ConvertToChar();
}

std::shared_ptr<FileSink> MakeFileSink(const TextFileSink& iDescription) {
  LineFormat format;
  Filter filter;
  if (!ParseTexts(iDescription.GetFormat(), iDescription.GetFilter(), format, filter)) {
    return nullptr;
  }
  FileSinkOptions options;
  options.folder = NativePath(iDescription.GetDirectory());
  std::string name = NativePath(iDescription.GetFile());
  // A file that is given with its folder stands there.
  options.name = FileNamePattern::Literal(name);
  if (name.find(Os::NativeSeparator()) != std::string::npos) {
    options.folder.clear();
  }
  auto sink = std::make_shared<FileSink>(std::move(options), std::move(format), std::move(filter));
  return sink->Open() ? sink : nullptr;
}

std::shared_ptr<ILoggerFactory> Answer(std::shared_ptr<ILoggerFactory> iFactory, bool* oIsMade) {
  if (oIsMade != nullptr) {
    *oIsMade = iFactory != nullptr;
  }
  return iFactory;
}

// Makes a part of the back end; an empty one, told on standard error, where memory runs out.
template <class Make>
auto MakeOrTell(Make iMake) -> decltype(iMake()) {
  try {
    return iMake();
  } catch (const std::bad_alloc&) {
    Os::WriteErrorConsole("Logging: out of memory\n");
    return nullptr;
  }
}

}  // namespace

bool ParseTexts(std::string_view iFormat, std::string_view iFilter, LineFormat& oFormat, Filter& oFilter) {
  ParseError error;
  std::optional<LineFormat> format = LineFormat::Parse(iFormat, error);
  if (!format) {
    ReportUnreadable("format", iFormat, error);
    return false;
  }
  std::optional<Filter> filter = Filter::Parse(iFilter, error);
  if (!filter) {
    ReportUnreadable("filter", iFilter, error);
    return false;
  }
  oFormat = std::move(*format);
  oFilter = std::move(*filter);
  return true;
}

std::shared_ptr<ISinkHandle> Factory::AddSink(const TextFileSink& iSink) {
  return MakeOrTell([&]() -> std::shared_ptr<ISinkHandle> {
    std::shared_ptr<FileSink> sink = MakeFileSink(iSink);
    return sink == nullptr ? nullptr : std::make_shared<SinkHandle>(_sinks, std::move(sink));
  });
}

std::shared_ptr<ILogger> Factory::CreateLogger(const char* iChannel) {
  return MakeOrTell([&]() -> std::shared_ptr<ILogger> {
    return std::make_shared<ChannelLogger>(_sinks, iChannel == nullptr ? "" : iChannel);
  });
}

std::shared_ptr<ILoggerFactory> ILoggerFactory::create(const char* iConfigPath, bool* oIsMade) {
  return Answer(MakeOrTell([&]() -> std::shared_ptr<ILoggerFactory> {
                  SettingsFile settings;
                  std::string error;
                  if (!settings.Read(iConfigPath == nullptr ? "" : iConfigPath, error)) {
                    Os::WriteErrorConsole("Logging: " + error + "\n");
                    return nullptr;
                  }
                  return std::make_shared<Factory>(settings.TakeSinks(), settings.TakeFilter());
                }),
                oIsMade);
}

std::shared_ptr<ILoggerFactory> ILoggerFactory::create(const char* iFormat, const char* iFilter, int iOutput,
                                                       bool* oIsMade) {
  return Answer(MakeOrTell([&]() -> std::shared_ptr<ILoggerFactory> {
                  LineFormat format;
                  Filter filter;
                  if (iOutput != kConsoleOutput || !ParseTexts(iFormat, iFilter, format, filter)) {
                    return nullptr;
                  }
                  SinkSet::Sinks sinks{std::make_shared<ConsoleSink>(std::move(format), std::move(filter))};
                  return std::make_shared<Factory>(std::move(sinks), Filter());
                }),
                oIsMade);
}

std::shared_ptr<ILoggerFactory> ILoggerFactory::create(const TextFileSink& iSink, bool* oIsMade) {
  return Answer(MakeOrTell([&]() -> std::shared_ptr<ILoggerFactory> {
                  std::shared_ptr<FileSink> sink = MakeFileSink(iSink);
                  return sink == nullptr ? nullptr
                                         : std::make_shared<Factory>(SinkSet::Sinks{std::move(sink)}, Filter());
                }),
                oIsMade);
}

}  // namespace VYX::Logging
