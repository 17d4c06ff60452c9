#include "platform/src/VYXLoggingAdapter/settings_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <regex>
#include <string>

#include "VYXLoggingAdapter/ILogger.h"
#include "VYXLoggingAdapter/ILoggerFactory.h"
#include "support/captured_stdout.h"
#include "support/child_process.h"
#include "support/temporary_folder.h"

namespace {

using VYX::Logging::ILogger;
using VYX::Logging::ILoggerFactory;
using VYX::Test::ContentOf;

class SettingsFileTest : public testing::Test {
 protected:
  std::shared_ptr<ILogger> LoggerFor(const std::string& iSettings) {
    const auto factory = ILoggerFactory::create(_folder.MakeFile("log.ini", iSettings).c_str(), nullptr);
    return factory == nullptr ? nullptr : factory->CreateLogger("VYX");
  }
  // The reason why settings are refused; empty when they are not.
  std::string Refusal(const std::string& iSettings) {
    VYX::Logging::SettingsFile settings;
    std::string error;
    const std::string path = _folder.MakeFile("log.ini", iSettings);
    if (settings.Read(path, error)) {
      return "";
    }
    const std::string start = "settings file '" + path + "', ";
    return error.starts_with(start) ? error.substr(start.size()) : error;
  }

  VYX::Test::TemporaryFolder _folder;
};

TEST_F(SettingsFileTest, MakesTheSinksThatItNames) {
  const auto logger = LoggerFor(
      "# comment\n"
      "[Core]\n"
      "Filter = \"%Severity% <= 4\"\n"
      "\n"
      "[Sinks.All]\n"
      "Destination = TextFile\n"
      "FileName = \"" +
      _folder.Native("all.log") +
      "\"\n"
      "Format = \"%Severity%: %Message%\"\n"
      "[Sinks.Errors]\n"
      "  Destination=TextFile\n"
      "  FileName=" +
      _folder.Native("errors.log") +
      "\n"
      "  Filter=%Severity% <= ERROR & %Channel% = VYX\n"
      "  Format=%Message%\n"
      "  AutoFlush=false\n");
  ASSERT_NE(logger, nullptr);
  EXPECT_FALSE(logger->IsFiltered(4));
  EXPECT_TRUE(logger->IsFiltered(5));
  logger->Write(3, "info");
  logger->Write(1, "error");
  logger->Write(5, "trace");
  EXPECT_EQ(ContentOf(_folder.Native("all.log")), "INFO: info\nERROR: error\n");
  EXPECT_EQ(ContentOf(_folder.Native("errors.log")), "error\n");
}

TEST_F(SettingsFileTest, HasADefaultFormat) {
  const auto logger = LoggerFor("[Sinks.A]\nDestination=TextFile\nFileName=" + _folder.Native("a.log") + "\n");
  ASSERT_NE(logger, nullptr);
  logger->Write(2, "text");
  const std::regex line("\\[\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{6}\\]\\[\\d+\\]\\[VYX\\]\\[WARN\\] text\n");
  EXPECT_TRUE(std::regex_match(ContentOf(_folder.Native("a.log")), line)) << ContentOf(_folder.Native("a.log"));
}

TEST_F(SettingsFileTest, WritesToTheConsole) {
  VYX::Test::CapturedStdout captured;
  const auto logger = LoggerFor("[Sinks.A]\nDestination=Console\nFormat=<%Message%>\n");
  ASSERT_NE(logger, nullptr);
  logger->Write(2, "text");
  EXPECT_EQ(captured.Text(), "<text>\n");
}

TEST_F(SettingsFileTest, DisablesLogging) {
  const auto logger = LoggerFor("[Core]\nDisableLogging=true\n[Sinks.A]\nDestination=Console\n");
  ASSERT_NE(logger, nullptr);
  EXPECT_TRUE(logger->IsFiltered(0));
}

TEST_F(SettingsFileTest, RotatesAsAsked) {
  const auto logger =
      LoggerFor("[Sinks.A]\nDestination=TextFile\nFormat=%Message%\nRotationSize=3\nMaxFiles=1\nFileName=" +
                _folder.Native("a_%N.log") + "\nTarget=" + _folder.Native("old") + "\nAppend=false\n");
  ASSERT_NE(logger, nullptr);
  for (const char* text : {"a", "b", "c", "d", "e", "f"}) {
    logger->Write(3, text);
  }
  EXPECT_EQ(_folder.Names("old").size(), 1U);
}

// A system log of the test's own.
class LogSocket {
 public:
  explicit LogSocket(const std::string& iPath) : _socket(::socket(AF_UNIX, SOCK_DGRAM, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, iPath.data(), iPath.size());
    EXPECT_EQ(::bind(_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  }
  ~LogSocket() { ::close(_socket); }
  LogSocket(const LogSocket&) = delete;
  LogSocket& operator=(const LogSocket&) = delete;

  std::string Receive() {
    char buffer[4096];
    const ssize_t size = ::recv(_socket, buffer, sizeof buffer, MSG_DONTWAIT);
    return size < 0 ? "<nothing>" : std::string(buffer, static_cast<std::size_t>(size));
  }

 private:
  int _socket;
};

TEST_F(SettingsFileTest, SendsToTheSystemLog) {
  const std::string path = _folder.Native("log");
  const std::string settings = "[Sinks.A]\nDestination=Syslog\nFormat=%Message%\nTarget=" + path + "\n";
  const struct {
    int level;
    const char* priority;
  } rows[] = {{0, "<10>"}, {1, "<11>"}, {2, "<12>"}, {3, "<14>"}, {4, "<15>"}, {5, "<15>"}, {9, "<15>"}};
  auto socket = std::make_unique<LogSocket>(path);
  const auto logger = LoggerFor(settings);
  ASSERT_NE(logger, nullptr);
  for (const auto& row : rows) {
    logger->Write(row.level, "the text");
    const std::string message = socket->Receive();
    const std::regex form("<\\d+>[A-Z][a-z]{2} [ 123]\\d \\d\\d:\\d\\d:\\d\\d VYX\\[" + std::to_string(::getpid()) +
                          "\\]: the text");
    EXPECT_TRUE(std::regex_match(message, form)) << message;
    EXPECT_TRUE(message.starts_with(row.priority)) << message;
  }
  socket.reset();
  ::unlink(path.c_str());
  const auto child = VYX::Test::RunInChild([&logger] {
    logger->Write(3, "lost");
    logger->Write(3, "lost");
  });
  EXPECT_EQ(child.error, "Logging: cannot send to '" + path + "': No such file or directory\n");
  socket = std::make_unique<LogSocket>(path);
  logger->Write(3, "back again");
  EXPECT_TRUE(socket->Receive().ends_with(": back again"));
}

TEST_F(SettingsFileTest, RefusesWhatItDoesNotKnowWithItsLine) {
  const struct {
    const char* settings;
    const char* refusal;
  } rows[] = {
      {"[Core]\nFiltre=x\n", "line 2: the setting 'Filtre' is unknown in [Core]"},
      {"[Core]\nFilter=%Severity\n", "line 2: unreadable filter at character 1: %Severity% or %Channel% was expected"},
      {"[Core]\nDisableLogging=maybe\n", "line 2: DisableLogging takes true or false, not 'maybe'"},
      {"[Cores]\nFilter=\n", "line 2: the section [Cores] is unknown"},
      {"Filter=\n", "line 1: the section [] is unknown"},
      {"[Sinks.A]\nColour=red\n", "line 2: the setting 'Colour' is unknown in [Sinks.A]"},
      {"[Sinks.A]\n\nFormat=%Time%\n", "line 3: unreadable format at character 1: the placeholder 'Time' is unknown"},
      {"[Sinks.A]\nFormat=%Message%\n", "line 2: [Sinks.A] names no Destination"},
      {"[Sinks.A]\nDestination=Printer\n", "line 2: the destination 'Printer' is unknown"},
      {"[Sinks.A]\nDestination=SimpleEventLog\n", "line 2: the destination SimpleEventLog exists on Windows only"},
      {"[Sinks.A]\nDestination=TextFile\n", "line 2: [Sinks.A] writes a text file and names no FileName"},
      {"[Sinks.A]\nRotationSize=big\n", "line 2: RotationSize takes a whole number, not 'big'"},
      {"[Sinks.A]\nMaxFiles=-1\n", "line 2: MaxFiles takes a whole number, not '-1'"},
      {"[Sinks.A]\nno setting\n", "line 2: neither a section nor a setting"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Refusal(row.settings), row.refusal) << row.settings;
  }
  EXPECT_EQ(Refusal("[Core]\n# fine\n[Sinks.A]\nFormat=" + std::string(300, 'x') + "\n"),
            "line 4: [Sinks.A] names no Destination");
}

TEST_F(SettingsFileTest, SaysThatTheFileIsUnreadable) {
  VYX::Logging::SettingsFile settings;
  std::string error;
  EXPECT_FALSE(settings.Read(_folder.Native("none.ini"), error));
  EXPECT_EQ(error, "cannot read the settings file '" + _folder.Native("none.ini") + "': No such file or directory");
  const auto child = VYX::Test::RunInChild([this] {
    bool isMade = true;
    const std::string path = _folder.MakeFile("bad.ini", "[Core]\nX=1\n");
    if (ILoggerFactory::create(path.c_str(), &isMade) != nullptr || isMade) {
      std::_Exit(1);
    }
  });
  EXPECT_TRUE(child.IsGood());
  EXPECT_EQ(child.error, "Logging: settings file '" + _folder.Native("bad.ini") +
                             "', line 2: the setting 'X' is unknown in [Core]\n");
}

}  // namespace
