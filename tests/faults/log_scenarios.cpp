#include <gtest/gtest.h>

#include <string>

#include "KORSysBase/KORResult.h"
#include "VYXInfi18n.h"
#include "VYXLoggingAdapter/ILogger.h"
#include "VYXLoggingAdapter/ILoggerFactory.h"
#include "VYXLoggingAdapter/TextFileSink.h"
#include "faults/scenario.h"
#include "support/catalog_folder.h"

namespace VYX::Test {
namespace {

using Logging::ILoggerFactory;
using Logging::TextFileSink;

constexpr int kInfo = 3;

// Writes three lines through a back end; E_FAIL where there is none.
long WriteLines(const std::shared_ptr<ILoggerFactory>& iFactory) {
  const auto logger = iFactory == nullptr ? nullptr : iFactory->CreateLogger("VYX");
  if (logger == nullptr) {
    return E_FAIL;
  }
  for (const char* const line : {"first", "second", "third"}) {
    logger->Write(kInfo, line);
  }
  iFactory->Flush();
  return S_OK;
}

// The lines that arrived stand whole and in order behind what was there before.
bool AreWholeLines(const std::string& iContent, bool& oIsComplete) {
  std::string rest = iContent;
  int count = 0;
  for (const std::string line : {"old\n", "first\n", "second\n", "third\n"}) {
    if (rest.starts_with(line)) {
      rest.erase(0, line.size());
      ++count;
    }
  }
  oIsComplete = count == 4;
  return rest.empty();
}

// A line that cannot be written is lost, and that is told on standard error; half a line may stand where the disk took
// no more, ended before the next one.
class LoggingToFile final : public Scenario {
 public:
  LoggingToFile() : _path(_folder.MakeFile("a.log", "old\n")), _sink("", _path.c_str(), "%Message%", "") {}

  long Run() override { return WriteLines(ILoggerFactory::create(_sink, nullptr)); }

  void Check(const Ending& iEnding) override {
    const std::string content = ContentOf(_path);
    bool isComplete = false;
    EXPECT_TRUE(AreWholeLines(content, isComplete)) << content;
    EXPECT_TRUE(isComplete || iEnding.isTold) << "a lost line is told";
  }

 private:
  const std::string _path;
  const TextFileSink _sink;
};

class LoadingSettings final : public Scenario {
 public:
  LoadingSettings() : _log(_folder.MakeFile("a.log", "old\n")) {
    _settings = _folder.MakeFile("log.ini",
                                 "[Sinks.File]\nDestination=TextFile\nFormat=%Message%\nAppend=true\n"
                                 "FileName=" +
                                     _log + "\n");
  }

  long Run() override {
    bool isMade = false;
    const long code = WriteLines(ILoggerFactory::create(_settings.c_str(), &isMade));
    return isMade ? code : E_FAIL;
  }

  void Check(const Ending& iEnding) override {
    const std::string content = ContentOf(_log);
    bool isComplete = false;
    EXPECT_TRUE(AreWholeLines(content, isComplete)) << content;
    EXPECT_TRUE(isComplete || iEnding.isTold) << "a lost line is told";
  }

 private:
  const std::string _log;
  std::string _settings;
};

// What the host refused once is asked for again.
class LoadingCatalog final : public Scenario {
 public:
  LoadingCatalog() : _environment(UserOf(_catalogs.Root(), "fr_CA.UTF-8")), _catalog("Faults"), _key("Hello") {
    _catalogs.Write("Faults.fr.json", R"({"Hello": "Bonjour {0}"})");
    _catalogs.Write("Faults.json", R"({"Hello": "Hello {0}"})");
  }

  long Run() override {
    _text = VYXInfi18n::GetLocalizedString(_catalog, _key, _name);
    return _text == "Bonjour you" ? S_OK : E_FAIL;
  }

  void Check(const Ending&) override {
    EXPECT_TRUE(_text == "Bonjour you" || _text == "Hello you" || _text.IsEmpty()) << _text;
    EXPECT_EQ(VYXInfi18n::GetLocalizedString(_catalog, _key, _name), "Bonjour you");
  }

 private:
  const CatalogFolder _catalogs;
  const Environment _environment;
  const KORUnicodeString _catalog;
  const KORUnicodeString _key;
  const KORUnicodeString _name = "you";
  KORUnicodeString _text;
};

}  // namespace

std::vector<NamedScenario> LogScenarios() {
  return {{"LogToFile", Maker<LoggingToFile>(), 30},
          {"LoadSettings", Maker<LoadingSettings>(), 40},
          {"LoadCatalog", Maker<LoadingCatalog>(), 20, true}};
}

}  // namespace VYX::Test
