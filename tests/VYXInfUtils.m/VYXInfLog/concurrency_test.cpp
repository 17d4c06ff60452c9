#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdint>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "VYXInfLog.h"
#include "support/child_process.h"
#include "support/temporary_folder.h"

namespace {

// Sizes from 1 byte to 64 KiB, mostly small, the same for writer and reader.
std::size_t PaddingOf(int iWriter, int iLine) {
  const std::uint32_t mixed =
      (static_cast<std::uint32_t>(iWriter) * 7919U + static_cast<std::uint32_t>(iLine)) * 2654435761U;
  return iLine % 500 == 499 ? 65000 : (mixed >> 16) % 120;
}

void WriteNumbered(int iWriter, int iLines) {
  for (int line = 0; line < iLines; ++line) {
    const std::string text =
        std::to_string(iWriter) + ":" + std::to_string(line) + ":" + std::string(PaddingOf(iWriter, line), 'x');
    VYXInfLog::GetDefaultLogger()->Log(ERROR, text.c_str());
  }
}

// Counts lines "...[ERROR] writer:line:xxx"; every writer's lines have to come once each, whole, in order.
class LineCheck {
 public:
  explicit LineCheck(int iWriters) : _next(static_cast<std::size_t>(iWriters), 0) {}

  void Take(const std::string& iLog) {
    std::size_t start = 0;
    while (start < iLog.size()) {
      const std::size_t end = iLog.find('\n', start);
      ASSERT_NE(end, std::string::npos) << "a line without its end";
      TakeLine(std::string_view(iLog).substr(start, end - start));
      start = end + 1;
    }
  }
  void ExpectAll(int iLines) const {
    for (std::size_t writer = 0; writer < _next.size(); ++writer) {
      EXPECT_EQ(_next[writer], iLines) << "writer " << writer;
    }
  }

 private:
  void TakeLine(std::string_view iLine) {
    const std::size_t mark = iLine.find("[ERROR] ");
    if (mark == std::string_view::npos) {
      return;
    }
    const std::string text(iLine.substr(mark + 8));
    const std::size_t first = text.find(':');
    const std::size_t second = text.find(':', first + 1);
    ASSERT_NE(second, std::string::npos) << text.substr(0, 100);
    const std::size_t writer = std::stoul(text);
    ASSERT_LT(writer, _next.size());
    ASSERT_EQ(std::stoi(text.substr(first + 1)), _next[writer]) << "writer " << writer;
    ASSERT_EQ(text.size() - second - 1, PaddingOf(static_cast<int>(writer), _next[writer]));
    ++_next[writer];
  }

  std::vector<int> _next;
};

std::string FileSettings(const VYX::Test::TemporaryFolder& iFolder) {
  return iFolder.MakeFile(
      "log.ini", "[Sinks.A]\nDestination=TextFile\nFilter=%Severity% = 1\nFileName=" + iFolder.Native("a.log") + "\n");
}

void RunThreads(int iThreads, int iLines) {
  std::vector<std::thread> threads;
  for (int thread = 0; thread < iThreads; ++thread) {
    threads.emplace_back(&WriteNumbered, thread, iLines);
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
}

#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
constexpr int kLines = 5000;
constexpr int kProcessLines = 2000;
constexpr int kCycles = 500;
#else
constexpr int kLines = 100000;
constexpr int kProcessLines = 20000;
constexpr int kCycles = 10000;
#endif

TEST(Concurrency, SixteenThreadsIntoOneFile) {
  const VYX::Test::TemporaryFolder folder;
  const std::string settings = FileSettings(folder);
  const auto child = VYX::Test::RunInChild([&settings] {
    VYXInfLog::InitFromFile(settings.c_str());
    RunThreads(16, kLines);
    VYXInfLog::Close();
  });
  ASSERT_TRUE(child.IsGood());
  LineCheck check(16);
  check.Take(VYX::Test::ContentOf(folder.Native("a.log")));
  check.ExpectAll(kLines);
}

TEST(Concurrency, EightProcessesIntoOneFile) {
  const VYX::Test::TemporaryFolder folder;
  const std::string settings = FileSettings(folder);
  std::vector<pid_t> children;
  for (int writer = 0; writer < 8; ++writer) {
    const pid_t child = ::fork();
    if (child == 0) {
      VYXInfLog::InitFromFile(settings.c_str());
      WriteNumbered(writer, kProcessLines);
      VYXInfLog::Close();
      std::_Exit(0);
    }
    children.push_back(child);
  }
  for (const pid_t child : children) {
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }
  LineCheck check(8);
  check.Take(VYX::Test::ContentOf(folder.Native("a.log")));
  check.ExpectAll(kProcessLines);
}

TEST(Concurrency, NoLineVanishesWhileLoggingIsConfiguredAndClosed) {
  const VYX::Test::TemporaryFolder folder;
  const std::string settings = FileSettings(folder);
  constexpr int kThreads = 16;
  const auto child = VYX::Test::RunInChild([&settings] {
    std::atomic<bool> stop{false};
    std::thread cycles([&] {
      for (int cycle = 0; cycle < kCycles; ++cycle) {
        VYXInfLog::InitFromFile(settings.c_str());
        VYXInfLog::Close();
      }
      stop = true;
    });
    RunThreads(kThreads, kLines);
    cycles.join();
    VYXInfLog::Close();
  });
  ASSERT_TRUE(child.IsGood()) << child.code << child.error;
  // A line stands in the file or on the console, by the moment of its writing.
  std::vector<int> seen(kThreads, 0);
  for (const std::string& log : {VYX::Test::ContentOf(folder.Native("a.log")), child.output}) {
    std::size_t start = 0;
    while (start < log.size()) {
      const std::size_t end = log.find('\n', start);
      ASSERT_NE(end, std::string::npos);
      const std::string_view line = std::string_view(log).substr(start, end - start);
      const std::size_t inFile = line.find("[ERROR] ");
      const std::size_t onConsole = line.find("; ERROR; ");
      if (inFile != std::string_view::npos) {
        ++seen.at(std::stoul(std::string(line.substr(inFile + 8, 3))));
      } else if (onConsole != std::string_view::npos) {
        const std::size_t text = line.find("; ", line.find("; ", onConsole + 9) + 2) + 2;
        ++seen.at(std::stoul(std::string(line.substr(text, 3))));
      }
      start = end + 1;
    }
  }
  EXPECT_EQ(seen, std::vector<int>(kThreads, kLines));
}

void IgnoreSignal(int) {}

// Signals whose handler interrupts system calls, without a pause.
TEST(Concurrency, ASignalStormTearsNoLine) {
  const VYX::Test::TemporaryFolder folder;
  const std::string settings = FileSettings(folder);
  constexpr int kStormLines = kLines / 5;
  const auto child = VYX::Test::RunInChild([&settings] {
    struct sigaction action {};
    action.sa_handler = &IgnoreSignal;
    ::sigaction(SIGUSR1, &action, nullptr);
    VYXInfLog::InitFromFile(settings.c_str());
    std::atomic<bool> stop{false};
    const pthread_t writer = ::pthread_self();
    std::thread storm([&stop, writer] {
      while (!stop.load()) {
        ::pthread_kill(writer, SIGUSR1);
      }
    });
    WriteNumbered(0, kStormLines);
    stop = true;
    storm.join();
    VYXInfLog::Close();
  });
  ASSERT_TRUE(child.IsGood());
  LineCheck check(1);
  check.Take(VYX::Test::ContentOf(folder.Native("a.log")));
  check.ExpectAll(kStormLines);
}

}  // namespace
