#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <regex>
#include <string>
#include <vector>

#include "VYXInfLog.h"
#include "VYXInfSystemUtil.h"
#include "init_testing.h"
#include "support/child_process.h"
#include "support/host.h"
#include "support/temporary_folder.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using VYX::Test::ChildResult;
using VYX::Test::ContentOf;
using VYX::Test::Init;

const char* const kInternalError = "[FATAL] ********** Internal error: Logging not closed before shutdown. **********";

// The lines of a log as "[LEVEL] text": a back end's line loses time and thread, a console line time and numbers. The
// place of a failure trace becomes "(...)".
std::vector<std::string> Lines(const std::string& iLog) {
  static const std::regex backEnd("^\\[[^\\]]*\\]\\[\\d+\\]\\[VYX\\](\\[[A-Z]+\\]) ");
  static const std::regex console("^[-0-9_]+; ([A-Z]+); \\d+; \\d+; ");
  static const std::regex site("\\(VYXInfrastructure/VYXInfUtils\\.m/src/VYXInfLog/\\w+\\.cpp:\\d+\\)");
  std::vector<std::string> lines;
  std::size_t start = 0;
  while (start < iLog.size()) {
    const std::size_t end = std::min(iLog.find('\n', start), iLog.size());
    std::string line = iLog.substr(start, end - start);
    line = std::regex_replace(line, backEnd, "$1 ");
    line = std::regex_replace(line, console, "[$1] ");
    lines.push_back(std::regex_replace(line, site, "(...)"));
    start = end + 1;
  }
  return lines;
}

TEST_F(Init, WritesToTheConsoleWithoutAFile) {
  const ChildResult child = Run([] {
    if (!VYXInfLog::Init(DEBUG, "", "App")) {
      std::_Exit(1);
    }
    Log(DEBUG, "shown");
    Log(TRACE, "filtered");
    VYXInfLog::Close();
    Log(INFO, "after");
  });
  EXPECT_THAT(Lines(child.output),
              ElementsAre("[INFO] VYXInfLog::Init SUCCEEDED", "[INFO]     Input: Level=DEBUG, File=<>, Config=<>",
                          "[INFO]     Used : Level=DEBUG, File=<>, Config=<>", "[DEBUG] shown",
                          "[INFO] VYXInfLog::Close", "[INFO] after"));
  EXPECT_EQ(child.error, "");
}

TEST_F(Init, WritesTheFormatThatIsFixed) {
  const ChildResult child = Run([] {
    VYXInfLog::Init(ERROR, "", "");
    Log(ERROR, "the text");
    VYXInfLog::Close();
  });
  const std::regex form(
      "\\[\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{6}\\]\\[\\d+\\]\\[VYX\\]\\[ERROR\\] the text\n");
  EXPECT_TRUE(std::regex_match(child.output, form)) << child.output;
}

TEST_F(Init, RedirectsTheOutputsIntoTheFileAndBack) {
  const KORUnicodeString file = _folder.Path("x.log");
  const ChildResult child = Run([&file] {
    std::printf("before\n");
    Log(INFO, "console");
    VYXInfLog::Init(INFO, file, "App");
    std::printf("printf\n");
    Log(INFO, "one");
    std::cout << "cout\n";
    Log(INFO, "two");
    std::cout.flush();
    std::fflush(stdout);
    if (std::system("echo child; echo error >&2") != 0) {
      std::_Exit(1);
    }
    std::fprintf(stderr, "stderr\n");
    Log(INFO, "three");
    std::printf("buffered\n");
    VYXInfLog::Close();
    std::printf("after\n");
  });
  const std::string path(file);
  EXPECT_THAT(Lines(child.output), ElementsAre("before", "[INFO] console", "[INFO] Redirecting logging.", "after"));
  EXPECT_EQ(child.error, "");
  EXPECT_THAT(
      Lines(ContentOf(_folder.Native("x.log"))),
      ElementsAre("[INFO] Redirecting logging.", "[INFO] VYXInfLog::Init SUCCEEDED",
                  "[INFO]     Input: Level=INFO, File=<" + path + ">, Config=<>",
                  "[INFO]     Used : Level=INFO, File=<" + path + ">, Config=<>", "printf", "[INFO] one", "cout",
                  "[INFO] two", "child", "error", "stderr", "[INFO] three", "buffered", "[INFO] VYXInfLog::Close"));
}

TEST_F(Init, EmptiesTheFileFirstAndCanBeRepeatedAfterClose) {
  const KORUnicodeString first = _folder.Path("first.log");
  const KORUnicodeString second = _folder.Path("second.log");
  _folder.MakeFile("first.log", "old content\n");
  Run([&] {
    VYXInfLog::Init(ERROR, first, "");
    Log(ERROR, "one");
    VYXInfLog::Close();
    VYXInfLog::Init(ERROR, second, "");
    Log(ERROR, "two");
    std::printf("printed\n");
    VYXInfLog::Close();
  });
  EXPECT_THAT(Lines(ContentOf(_folder.Native("first.log"))), ElementsAre("[ERROR] one"));
  EXPECT_THAT(Lines(ContentOf(_folder.Native("second.log"))), ElementsAre("[ERROR] two", "printed"));
}

TEST_F(Init, RefusesASecondOneAndSaysSo) {
  const ChildResult child = Run([] {
    VYXInfLog::Init(INFO, "", "");
    if (VYXInfLog::Init(DEBUG, "", "") || VYXInfLog::InitFromFile("none.ini")) {
      std::_Exit(1);
    }
    Log(DEBUG, "still filtered");
    VYXInfLog::Close();
  });
  EXPECT_THAT(Lines(child.output),
              ElementsAre("[INFO] VYXInfLog::Init SUCCEEDED", "[INFO]     Input: Level=INFO, File=<>, Config=<>",
                          "[INFO]     Used : Level=INFO, File=<>, Config=<>", "[INFO] VYXInfLog::Init FAILED",
                          "[INFO]     Input: Level=DEBUG, File=<>, Config=<>",
                          "[INFO]     Used : Level=DEBUG, File=<>, Config=<>", "[INFO] VYXInfLog::InitFromFile FAILED",
                          "[INFO]     Input: Level=INFO, File=<>, Config=<none.ini>",
                          "[INFO]     Used : Level=INFO, File=<>, Config=<none.ini>", "[INFO] VYXInfLog::Close"));
}

TEST_F(Init, FallsBackToTheConsoleWhenTheFileCannotBeOpened) {
  const KORUnicodeString file = _folder.Path("in the way/x.log");
  _folder.MakeFile("in the way", "");
  const ChildResult child = Run([&file] {
    if (!VYXInfLog::Init(INFO, file, "")) {
      std::_Exit(1);
    }
    VYXInfLog::Close();
  });
  const std::string path(file);
  EXPECT_THAT(Lines(child.output),
              ElementsAre("[ERROR] Failed to initialize logging framework", "[INFO] VYXInfLog::Init SUCCEEDED",
                          "[INFO]     Input: Level=INFO, File=<" + path + ">, Config=<>",
                          "[INFO]     Used : Level=INFO, File=<" + path + ">, Config=<>", "[INFO] VYXInfLog::Close"));
  EXPECT_EQ(child.error, "Logging: cannot open '" + _folder.Native("in the way/x.log") + "': Not a directory\n");
}

TEST_F(Init, FollowsASettingsFile) {
  const KORUnicodeString settings(SettingsFile().c_str());
  Run([&settings] {
    if (!VYXInfLog::InitFromFile(settings)) {
      std::_Exit(1);
    }
    Log(TRACE, "everything passes");
    VYXInfLog::Close();
  });
  const std::string path(settings);
  EXPECT_THAT(Lines(ContentOf(_folder.Native("settings.log"))),
              ElementsAre("[INFO] VYXInfLog::InitFromFile SUCCEEDED",
                          "[INFO]     Input: Level=INFO, File=<>, Config=<" + path + ">",
                          "[INFO]     Used : Level=INFO, File=<>, Config=<" + path + ">", "[TRACE] everything passes",
                          "[INFO] VYXInfLog::Close"));
}

TEST_F(Init, SaysWhyASettingsFileIsUnreadable) {
  const std::string settings = _folder.MakeFile("bad.ini", "[Sinks.A]\nDestination=Nowhere\n");
  const ChildResult child = Run([&settings] { VYXInfLog::InitFromFile(settings.c_str()); });
  EXPECT_EQ(child.error, "Logging: settings file '" + settings + "', line 2: the destination 'Nowhere' is unknown\n");
  EXPECT_THAT(Lines(child.output),
              ElementsAre("[ERROR] Failed to initialize logging framework", "[INFO] VYXInfLog::InitFromFile SUCCEEDED",
                          "[INFO]     Input: Level=INFO, File=<>, Config=<" + settings + ">",
                          "[INFO]     Used : Level=INFO, File=<>, Config=<" + settings + ">"));
}

TEST_F(Init, EnvironmentChoosesTheConsoleInAnyCase) {
  for (const char* value : {"CONSOLE", "console", "Console"}) {
    const KORUnicodeString file = _folder.Path("x.log");
    const ChildResult child = Run(
        [&file] {
          VYXInfLog::Init(DEBUG, file, "");
          VYXInfLog::Close();
        },
        {{"VYX_LOG_OUTPUT", value}});
    EXPECT_THAT(Lines(child.output),
                ElementsAre("[INFO] VYXInfLog::Init SUCCEEDED",
                            "[INFO]     Input: Level=DEBUG, File=<" + std::string(file) + ">, Config=<>",
                            "[INFO]     Used : Level=DEBUG, File=<>, Config=<>", "[INFO] VYXInfLog::Close"));
    EXPECT_THAT(_folder.Names(), IsEmpty());
  }
}

TEST_F(Init, EnvironmentConsoleClearsASettingsFileToo) {
  const ChildResult child = Run(
      [] {
        VYXInfLog::InitFromFile("none.ini");
        VYXInfLog::Close();
      },
      {{"VYX_LOG_OUTPUT", "CONSOLE"}, {"VYX_LOG_LEVEL", "debug"}});
  EXPECT_THAT(Lines(child.output),
              ElementsAre("[INFO] VYXInfLog::InitFromFile SUCCEEDED",
                          "[INFO]     Input: Level=INFO, File=<>, Config=<none.ini>",
                          "[INFO]     Used : Level=DEBUG, File=<>, Config=<>", "[INFO] VYXInfLog::Close"));
}

TEST_F(Init, EnvironmentFolderGetsAFileOfThisRun) {
  const std::string folder = _folder.MakeFolder("logs");
  Run(
      [] {
        VYXInfLog::Init(INFO, "", "My:App");
        VYXInfLog::Close();
      },
      {{"VYX_LOG_OUTPUT", folder.c_str()}});
  const std::vector<std::string> names = _folder.Names("logs");
  ASSERT_EQ(names.size(), 1U);
  EXPECT_TRUE(std::regex_match(names[0], std::regex("My_App_\\d{4}-\\d\\d-\\d\\d_\\d\\d-\\d\\d-\\d\\d_\\d+\\.log")))
      << names[0];
  EXPECT_THAT(Lines(ContentOf(folder + "/" + names[0])),
              ElementsAre("[INFO] VYXInfLog::Init SUCCEEDED", "[INFO]     Input: Level=INFO, File=<>, Config=<>",
                          "[INFO]     Used : Level=INFO, File=<" + folder + "\\" + names[0] + ">, Config=<>",
                          "[INFO] VYXInfLog::Close"));
}

TEST_F(Init, EnvironmentSettingsFileWinsOverAll) {
  const std::string settings = SettingsFile();
  const KORUnicodeString file = _folder.Path("x.log");
  Run(
      [&file] {
        VYXInfLog::Init(FATAL, file, "");
        VYXInfLog::Close();
      },
      {{"VYX_LOG_CONFIG_FILE", settings.c_str()}, {"VYX_LOG_OUTPUT", "CONSOLE"}, {"VYX_LOG_LEVEL", "TRACE"}});
  EXPECT_THAT(
      Lines(ContentOf(_folder.Native("settings.log"))),
      ElementsAre("[INFO] VYXInfLog::Init SUCCEEDED",
                  "[INFO]     Input: Level=FATAL, File=<" + std::string(file) + ">, Config=<>",
                  "[INFO]     Used : Level=FATAL, File=<>, Config=<" + settings + ">", "[INFO] VYXInfLog::Close"));
}

TEST_F(Init, EnvironmentLevelCountsWhereNoSettingsFileIsInForce) {
  const struct {
    const char* value;
    const char* used;
  } rows[] = {{"ERROR", "ERROR"}, {"trace", "TRACE"}, {"LOUD", "WARN"}, {"", "WARN"}};
  for (const auto& row : rows) {
    const ChildResult child = Run(
        [] {
          VYXInfLog::Init(WARN, "", "");
          const auto logger = VYXInfLog::GetDefaultLogger();
          int level = 0;
          while (level <= 5 && !logger->IsFiltered(static_cast<VYXInfLogLevel>(level))) {
            ++level;
          }
          logger->Log(FATAL, VYXInfLog::LevelToString(static_cast<VYXInfLogLevel>(level - 1)));
          VYXInfLog::Close();
        },
        {{"VYX_LOG_LEVEL", row.value}});
    EXPECT_THAT(Lines(child.output), testing::Contains(std::string("[FATAL] ") + row.used)) << row.value;
  }
}

TEST_F(Init, MissingFilesInTheEnvironmentAreTracedAndIgnored) {
  const std::string nowhere = _folder.Native("nowhere");
  const ChildResult child = Run(
      [] {
        VYXInfLog::Init(INFO, "", "");
        VYXInfLog::Close();
      },
      {{"VYX_LOG_CONFIG_FILE", nowhere.c_str()}, {"VYX_LOG_OUTPUT", nowhere.c_str()}, {"VYX_LOG_LEVEL", "DEBUG"}});
  EXPECT_THAT(Lines(child.output),
              ElementsAre("[ERROR] FAILURE RETURN (...)", "[ERROR] FAILURE RETURN (...)", "[INFO] Redirecting logging.",
                          "[INFO] Redirecting logging.", "[INFO] VYXInfLog::Init SUCCEEDED",
                          "[INFO]     Input: Level=INFO, File=<>, Config=<>",
                          "[INFO]     Used : Level=DEBUG, File=<>, Config=<>", "[INFO] VYXInfLog::Close"));
}

TEST_F(Init, StrangePathsInTheEnvironmentAreTracedAndIgnored) {
  const std::string broken = _folder.MakeFolder("two\nlines");
  const std::string escape = _folder.MakeFile("\x1b[2J.ini", "[Core]\nDisableLogging=true\n");
  const std::string endless(65536, 'x');
  const std::string upwards = _folder.Native("nowhere/../../../nowhere");
  const std::string conversions = _folder.Native("%N%Y%s%n");
  for (const std::string& value : {broken, escape, endless, upwards, conversions}) {
    const ChildResult child = Run(
        [] {
          VYXInfLog::Init(WARN, "", "");
          VYXInfLog::Close();
        },
        {{"VYX_LOG_CONFIG_FILE", value.c_str()}, {"VYX_LOG_OUTPUT", value.c_str()}, {"VYX_LOG_LEVEL", "no level"}});
    EXPECT_THAT(Lines(child.output), ElementsAre("[ERROR] FAILURE RETURN (...)", "[ERROR] FAILURE RETURN (...)",
                                                 "[INFO] Redirecting logging."))
        << value.substr(0, 200);
  }
  EXPECT_THAT(_folder.Names("two\nlines"), ElementsAre());
}

TEST_F(Init, LevelsOutsideTheTableAreShownAsTrace) {
  const ChildResult child = Run([] {
    VYXInfLog::Init(static_cast<VYXInfLogLevel>(9), "", "");
    VYXInfLog::Close();
  });
  EXPECT_THAT(Lines(child.output), testing::Contains("[INFO]     Used : Level=TRACE, File=<>, Config=<>"));
}

TEST_F(Init, ExitClosesLoggingThatIsStillOpen) {
  const KORUnicodeString file = _folder.Path("x.log");
  const ChildResult child = Run([&file] {
    VYXInfLog::Init(WARN, file, "");
    Log(WARN, "last");
  });
  EXPECT_EQ(child.output, "");
  EXPECT_THAT(Lines(ContentOf(_folder.Native("x.log"))),
              ElementsAre("[WARN] last", "[WARN] Abnormal end -> closing logging"));
}

TEST_F(Init, AReferenceKeptOverCloseStillLogs) {
  const ChildResult child = Run([] {
    VYXInfLog::Init(ERROR, "", "");
    const auto kept = VYXInfLog::GetDefaultLogger();
    VYXInfLog::Close();
    kept->Log(ERROR, "through the retired logger");
  });
  EXPECT_THAT(Lines(child.output), ElementsAre("[ERROR] through the retired logger"));
  EXPECT_EQ(child.output.find(kInternalError), std::string::npos);
}

TEST_F(Init, LoggingAfterTheOutputsWereClosedHarmsNothing) {
  Run([] {
    VYX::Test::CloseStandardOutput();
    Log(ERROR, "nowhere");
    VYXInfLog::Init(INFO, "", "");
    Log(ERROR, "nowhere");
    VYXInfLog::Close();
  });
}

TEST_F(Init, ABrokenPipeHarmsNothing) {
  Run([] {
    VYX::Test::BreakStandardOutput();
    Log(ERROR, "nowhere");
    VYXInfLog::Init(INFO, "", "");
    VYXInfLog::Close();
  });
}

TEST_F(Init, LoggingBeforeMainAndWhileStaticObjectsDieIsSafe) {
  const ChildResult child = Run([] { VYX::Test::Become(VYX_BEFORE_MAIN_PROGRAM); });
  EXPECT_THAT(Lines(child.output), ElementsAre("[INFO] global", "[INFO] local", "[INFO] Redirecting logging.",
                                               "[INFO] after close", "[INFO] local", "[INFO] global"));
}

TEST_F(Init, TheExampleOfTheSettingsFileWorks) {
  const ChildResult child = Run([this] {
    if (::chdir(_folder.Native().c_str()) != 0) {
      std::_Exit(1);
    }
    VYXInfLog::InitFromFile(VYX_SOURCE_FOLDER "/resources/logging/settings.ini");
    Log(DEBUG, "debug");
    Log(TRACE, "trace");
    Log(ERROR, "error");
    VYXInfLog::Close();
  });
  EXPECT_EQ(child.error, "");
  EXPECT_EQ(child.output, "ERROR: error\n");
  EXPECT_THAT(Lines(ContentOf(_folder.Native("logs/main_0.log"))),
              ElementsAre("[INFO] VYXInfLog::InitFromFile SUCCEEDED", testing::_, testing::_, "[DEBUG] debug",
                          "[ERROR] error", "[INFO] VYXInfLog::Close"));
  EXPECT_TRUE(
      std::regex_match(ContentOf(_folder.Native("logs/errors.log")), std::regex("\\d\\d:\\d\\d:\\d\\d error\n")));
}

struct LogsInStaticDestruction {
  ~LogsInStaticDestruction() { VYXInfLog::GetDefaultLogger()->Log(ERROR, "static destruction"); }
};

TEST_F(Init, LoggingInStaticDestructionIsSafe) {
  const ChildResult child = Run([] { static const LogsInStaticDestruction logs; });
  EXPECT_THAT(Lines(child.output), ElementsAre("[ERROR] static destruction"));
}

}  // namespace
