#include "platform/src/VYXLoggingAdapter/file_sink.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "support/child_process.h"
#include "support/injected_faults.h"
#include "support/temporary_folder.h"

namespace {

using testing::ElementsAre;
using VYX::Logging::FileNamePattern;
using VYX::Logging::FileSink;
using VYX::Logging::FileSinkOptions;
using VYX::Logging::Filter;
using VYX::Logging::LineFormat;
using VYX::Logging::ParseError;
using VYX::Logging::Record;
using VYX::Test::ContentOf;
using VYX::Test::RunInChild;

class FileSinkTest : public testing::Test {
 protected:
  FileSinkOptions Options(const char* iName = "a.log") {
    FileSinkOptions options;
    options.folder = _folder.Native();
    options.name = FileNamePattern(iName);
    return options;
  }
  static std::unique_ptr<FileSink> Make(FileSinkOptions iOptions) {
    ParseError error;
    return std::make_unique<FileSink>(std::move(iOptions), *LineFormat::Parse("%Message%", error), Filter());
  }
  static void Write(FileSink& ioSink, std::string_view iMessage, int iLevel = 3, std::int64_t iSecond = 1000) {
    ioSink.Write(Record{iLevel, "VYX", iMessage, {iSecond, 0}, 1, ::getpid()});
  }

  VYX::Test::TemporaryFolder _folder;
};

TEST_F(FileSinkTest, WritesEachLineBeforeItReturns) {
  const auto sink = Make(Options());
  Write(*sink, "one");
  EXPECT_EQ(ContentOf(_folder.Native("a.log")), "one\n");
  Write(*sink, "two");
  EXPECT_EQ(ContentOf(_folder.Native("a.log")), "one\ntwo\n");
}

TEST_F(FileSinkTest, AppendsOrEmptiesAsAsked) {
  _folder.MakeFile("a.log", "old\n");
  Write(*Make(Options()), "appended");
  EXPECT_EQ(ContentOf(_folder.Native("a.log")), "old\nappended\n");
  FileSinkOptions options = Options();
  options.append = false;
  const auto sink = Make(options);
  Write(*sink, "first");
  Write(*sink, "second");
  EXPECT_EQ(ContentOf(_folder.Native("a.log")), "first\nsecond\n");
}

TEST_F(FileSinkTest, MakesItsFolder) {
  FileSinkOptions options = Options();
  options.folder = _folder.Native("new/er");
  Write(*Make(options), "text");
  EXPECT_EQ(ContentOf(_folder.Native("new/er/a.log")), "text\n");
}

TEST_F(FileSinkTest, HoldsLinesBackOnlyWhenAskedAndNeverErrors) {
  FileSinkOptions options = Options();
  options.autoFlush = false;
  const auto sink = Make(options);
  Write(*sink, "held back");
  EXPECT_EQ(ContentOf(_folder.Native("a.log")), "");
  Write(*sink, "error", 1);
  EXPECT_EQ(ContentOf(_folder.Native("a.log")), "held back\nerror\n");
  Write(*sink, "again");
  sink->Flush();
  EXPECT_EQ(ContentOf(_folder.Native("a.log")), "held back\nerror\nagain\n");
  Write(*sink, std::string(70000, 'x'));
  EXPECT_EQ(ContentOf(_folder.Native("a.log")).size(), 22U + 70001U);
}

TEST_F(FileSinkTest, WritesWhatIsHeldBackWhenItDies) {
  FileSinkOptions options = Options();
  options.autoFlush = false;
  auto sink = Make(options);
  Write(*sink, "last words");
  sink.reset();
  EXPECT_EQ(ContentOf(_folder.Native("a.log")), "last words\n");
}

TEST_F(FileSinkTest, AForkedChildDoesNotRepeatWhatIsHeldBack) {
  FileSinkOptions options = Options();
  options.autoFlush = false;
  auto sink = Make(options);
  Write(*sink, "parent");
  const auto child = RunInChild([&sink] {
    Write(*sink, "child");
    sink->Flush();
    std::_Exit(0);
  });
  EXPECT_TRUE(child.IsGood());
  sink.reset();
  EXPECT_EQ(ContentOf(_folder.Native("a.log")), "child\nparent\n");
}

TEST_F(FileSinkTest, BeginsANewFileWhenOneIsFull) {
  FileSinkOptions options = Options("a_%2N.log");
  options.rotationSize = 10;
  const auto sink = Make(options);
  for (const char* text : {"12345678", "2", "3", "4", "5", "6", "longer than the limit", "8"}) {
    Write(*sink, text);
  }
  EXPECT_EQ(ContentOf(_folder.Native("a_00.log")), "12345678\n");
  EXPECT_EQ(ContentOf(_folder.Native("a_01.log")), "2\n3\n4\n5\n6\n");
  EXPECT_EQ(ContentOf(_folder.Native("a_02.log")), "longer than the limit\n");
  EXPECT_EQ(ContentOf(_folder.Native("a_03.log")), "8\n");
}

TEST_F(FileSinkTest, NumbersFullFilesWhereTheNameHasNoPlace) {
  FileSinkOptions options = Options();
  options.rotationSize = 4;
  const auto sink = Make(options);
  for (const char* text : {"one", "two", "six"}) {
    Write(*sink, text);
  }
  EXPECT_THAT(_folder.Names(), ElementsAre("a.log", "a.log.1", "a.log.2"));
  EXPECT_EQ(ContentOf(_folder.Native("a.log.1")), "one\n");
  EXPECT_EQ(ContentOf(_folder.Native("a.log.2")), "two\n");
  EXPECT_EQ(ContentOf(_folder.Native("a.log")), "six\n");
}

TEST_F(FileSinkTest, KeepsSoManyFullFilesAndMovesThemToTheTarget) {
  FileSinkOptions options = Options("a_%N.log");
  options.rotationSize = 2;
  options.maxFiles = 2;
  options.target = _folder.Native("full");
  const auto sink = Make(options);
  for (const char* text : {"0", "1", "2", "3", "4"}) {
    Write(*sink, text);
  }
  EXPECT_THAT(_folder.Names("full"), ElementsAre("a_2.log", "a_3.log"));
  EXPECT_THAT(_folder.Names(), ElementsAre("a_4.log", "full"));
}

TEST_F(FileSinkTest, OpensAFileAnewThatWasMovedOrRemoved) {
  const auto sink = Make(Options());
  Write(*sink, "one", 3, 1000);
  std::filesystem::rename(_folder.Native("a.log"), _folder.Native("moved.log"));
  Write(*sink, "two", 3, 1001);
  std::filesystem::remove(_folder.Native("a.log"));
  Write(*sink, "three", 3, 1002);
  EXPECT_EQ(ContentOf(_folder.Native("moved.log")), "one\n");
  EXPECT_EQ(ContentOf(_folder.Native("a.log")), "three\n");
}

TEST_F(FileSinkTest, StaysInItsFolderWhenTheCurrentFolderChanges) {
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::create_directory(_folder.Native("first"));
  std::filesystem::create_directory(_folder.Native("second"));
  std::filesystem::current_path(_folder.Native("first"));
  FileSinkOptions options = Options("a_%N.log");
  options.folder.clear();
  options.rotationSize = 4;
  options.maxFiles = 1;
  options.target = "full";
  const auto sink = Make(options);
  std::filesystem::current_path(_folder.Native("second"));
  Write(*sink, "one", 3, 1000);
  Write(*sink, "two", 3, 1001);
  std::filesystem::current_path(before);
  EXPECT_THAT(_folder.Names("first"), ElementsAre("a_1.log", "full"));
  EXPECT_THAT(_folder.Names("first/full"), ElementsAre("a_0.log"));
  EXPECT_THAT(_folder.Names("second"), ElementsAre());
}

TEST_F(FileSinkTest, ComesBackWithItsFolder) {
  FileSinkOptions options = Options();
  options.folder = _folder.Native("gone");
  const auto sink = Make(options);
  Write(*sink, "one", 3, 1000);
  std::filesystem::remove_all(_folder.Native("gone"));
  Write(*sink, "two", 3, 1001);
  EXPECT_EQ(ContentOf(_folder.Native("gone/a.log")), "two\n");
}

TEST_F(FileSinkTest, IsNotInheritedByPrograms) {
  const auto sink = Make(Options());
  Write(*sink, "text");
  const auto child = RunInChild([] { ::execl("/bin/sh", "sh", "-c", "ls -l /proc/self/fd", nullptr); });
  EXPECT_EQ(child.output.find("a.log"), std::string::npos) << child.output;
  EXPECT_NE(child.output.find("/proc/"), std::string::npos) << child.output;
}

// A disk with room for so many bytes more; the outputs of the process are elsewhere.
std::size_t gRoom = 0;
ssize_t (*gWrite)(int, const void*, std::size_t) = nullptr;

ssize_t WriteWhileThereIsRoom(int iFile, const void* iData, std::size_t iSize) {
  if (iFile <= STDERR_FILENO) {
    return gWrite(iFile, iData, iSize);
  }
  if (gRoom == 0) {
    errno = ENOSPC;
    return -1;
  }
  const ssize_t written = gWrite(iFile, iData, std::min(iSize, gRoom));
  gRoom -= static_cast<std::size_t>(written);
  return written;
}

TEST_F(FileSinkTest, ReportsTroubleOnceAndResumes) {
  const auto child = RunInChild([this] {
    const VYX::Test::SavedSystemCalls saved;
    gWrite = saved.Real().Write;
    VYX::Os::Posix::Calls().Write = &WriteWhileThereIsRoom;
    const auto sink = Make(Options());
    gRoom = 8;
    Write(*sink, "one");
    Write(*sink, "more than fits");
    Write(*sink, "nothing fits");
    gRoom = 100;
    Write(*sink, "resumed");
    gRoom = 0;
    Write(*sink, "second trouble");
  });
  ASSERT_TRUE(child.IsGood());
  const std::string report = "Logging: cannot write '" + _folder.Native("a.log") + "': No space left on device\n";
  EXPECT_EQ(child.error, report + report);
  EXPECT_EQ(ContentOf(_folder.Native("a.log")), "one\nmore\nresumed\n");
}

TEST_F(FileSinkTest, CompletesShortAndInterruptedWrites) {
  const auto sink = Make(Options());
  const VYX::Test::ShortTransfers transfers(3);
  Write(*sink, "a line of more than three bytes");
  EXPECT_EQ(ContentOf(_folder.Native("a.log")), "a line of more than three bytes\n");
}

TEST_F(FileSinkTest, WritesAHugeMessageWhole) {
  const std::string message(std::size_t{64} << 20U, 'x');
  const auto sink = Make(Options());
  Write(*sink, message);
  Write(*sink, "next");
  EXPECT_TRUE(ContentOf(_folder.Native("a.log")) == message + "\nnext\n");
}

TEST_F(FileSinkTest, SaysOnceThatItCannotOpen) {
  const auto child = RunInChild([this] {
    FileSinkOptions options = Options();
    options.folder = _folder.MakeFile("file", "in the way");
    const auto sink = Make(options);
    EXPECT_FALSE(sink->Open());
    Write(*sink, "one");
    Write(*sink, "two");
  });
  EXPECT_TRUE(child.IsGood());
  EXPECT_EQ(child.error, "Logging: cannot open '" + _folder.Native("file/a.log") + "': Not a directory\n");
}

mode_t PermissionsOf(const std::string& iPath) {
  struct stat info {};
  EXPECT_EQ(::stat(iPath.c_str(), &info), 0) << iPath;
  return info.st_mode & 0777U;
}

TEST_F(FileSinkTest, IsNotReadableForOthersWhateverTheMask) {
  for (const mode_t mask : {0U, 022U, 077U}) {
    for (const bool isAppended : {true, false}) {
      const std::string name = std::to_string(mask) + (isAppended ? "a" : "w");
      const mode_t former = ::umask(mask);
      FileSinkOptions options = Options(name.c_str());
      options.append = isAppended;
      EXPECT_TRUE(Make(options)->Open());
      ::umask(former);
      EXPECT_EQ(PermissionsOf(_folder.Native(name)), 0640U & ~mask) << name;
    }
  }
}

TEST_F(FileSinkTest, KeepsThePermissionsOfAnExistingFile) {
  const std::string path = _folder.MakeFile("a.log", "old\n");
  ASSERT_EQ(::chmod(path.c_str(), 0604), 0);
  const auto sink = Make(Options());
  Write(*sink, "new");
  EXPECT_EQ(PermissionsOf(path), 0604U);
  EXPECT_EQ(ContentOf(path), "old\nnew\n");
}

TEST_F(FileSinkTest, RefusesALinkWhereEverybodyMayMakeOne) {
  const std::string victim = _folder.MakeFile("victim", "precious");
  const std::string shared = _folder.MakeFolder("shared");
  _folder.MakeLink("shared/a.log", victim);
  _folder.MakeLink("shared/dangling.log", _folder.Native("made by link"));
  for (const mode_t mode : {01777U, 0757U}) {
    ASSERT_EQ(::chmod(shared.c_str(), mode), 0);
    for (const bool isAppended : {true, false}) {
      for (const char* const name : {"shared/a.log", "shared/dangling.log"}) {
        FileSinkOptions options = Options(name);
        options.append = isAppended;
        const auto child = RunInChild([&] {
          const auto sink = Make(options);
          EXPECT_FALSE(sink->Open());
          Write(*sink, "one");
        });
        EXPECT_EQ(child.error, "Logging: cannot open '" + _folder.Native(name) + "': Permission denied\n");
      }
    }
  }
  EXPECT_EQ(ContentOf(victim), "precious");
  EXPECT_THAT(_folder.Names(), ElementsAre("shared", "victim"));
}

TEST_F(FileSinkTest, FollowsALinkWhereOnlyItsOwnersMayMakeOne) {
  const std::string elsewhere = _folder.MakeFile("elsewhere.log", "");
  _folder.MakeLink("a.log", elsewhere);
  const auto sink = Make(Options());
  Write(*sink, "one");
  EXPECT_EQ(ContentOf(elsewhere), "one\n");
}

// Every line of a file, taken apart as "<writer>:<number>:<padding of its own length>".
void ExpectEveryLineOnce(const std::string& iContent, int iWriters, int iLines) {
  std::vector<int> next(static_cast<std::size_t>(iWriters), 0);
  std::string_view rest = iContent;
  while (!rest.empty()) {
    const std::size_t end = rest.find('\n');
    ASSERT_NE(end, std::string_view::npos);
    const std::string line(rest.substr(0, end));
    rest.remove_prefix(end + 1);
    const std::size_t first = line.find(':');
    const std::size_t second = line.find(':', first + 1);
    ASSERT_NE(second, std::string::npos) << line.substr(0, 80);
    const std::size_t writer = std::stoul(line);
    ASSERT_LT(writer, next.size());
    ASSERT_EQ(std::stoi(line.substr(first + 1)), next[writer]) << "writer " << writer;
    const std::size_t padding = line.size() - second - 1;
    ASSERT_EQ(padding, static_cast<std::size_t>(next[writer] * 7919 % 3000)) << "writer " << writer;
    ++next[writer];
  }
  EXPECT_THAT(next, testing::Each(iLines));
}

void WriteNumbered(FileSink& ioSink, int iWriter, int iLines) {
  for (int line = 0; line < iLines; ++line) {
    const std::string text = std::to_string(iWriter) + ":" + std::to_string(line) + ":" +
                             std::string(static_cast<std::size_t>(line * 7919 % 3000), 'x');
    ioSink.Write(Record{3, "VYX", text, {1000, 0}, 1, ::getpid()});
  }
}

TEST_F(FileSinkTest, ThreadsTearNoLine) {
  const auto sink = Make(Options());
  std::vector<std::thread> threads;
  for (int writer = 0; writer < 8; ++writer) {
    threads.emplace_back([&sink, writer] { WriteNumbered(*sink, writer, 2000); });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  ExpectEveryLineOnce(ContentOf(_folder.Native("a.log")), 8, 2000);
}

TEST_F(FileSinkTest, ProcessesTearNoLine) {
  std::vector<pid_t> children;
  for (int writer = 0; writer < 4; ++writer) {
    const pid_t child = ::fork();
    if (child == 0) {
      WriteNumbered(*Make(Options()), writer, 2000);
      std::_Exit(0);
    }
    children.push_back(child);
  }
  for (const pid_t child : children) {
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }
  ExpectEveryLineOnce(ContentOf(_folder.Native("a.log")), 4, 2000);
}

TEST_F(FileSinkTest, AKillLosesNoLineThatWasWritten) {
  for (int round = 0; round < 20; ++round) {
    const std::string name = "killed" + std::to_string(round) + ".log";
    int progress[2];
    ASSERT_EQ(::pipe(progress), 0);
    const pid_t child = ::fork();
    if (child == 0) {
      const auto sink = Make(Options(name.c_str()));
      for (int line = 0;; ++line) {
        Write(*sink, std::to_string(line));
        if (::write(progress[1], &line, sizeof line) != sizeof line) {
          std::_Exit(1);
        }
      }
    }
    ::close(progress[1]);
    int last = -1;
    for (int read = 0; read <= 50 * round; ++read) {
      ASSERT_EQ(::read(progress[0], &last, sizeof last), static_cast<ssize_t>(sizeof last));
    }
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    while (::read(progress[0], &last, sizeof last) == static_cast<ssize_t>(sizeof last)) {
    }
    ::close(progress[0]);
    const std::string content = ContentOf(_folder.Native(name));
    EXPECT_NE(("\n" + content).find("\n" + std::to_string(last) + "\n"), std::string::npos) << round;
    EXPECT_TRUE(content.ends_with('\n'));
  }
}

}  // namespace
