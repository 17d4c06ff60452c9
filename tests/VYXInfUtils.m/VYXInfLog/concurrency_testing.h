#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "VYXInfLog.h"
#include "support/temporary_folder.h"

/// What the tests of many writers share: lines whose writer, number and length tell what is missing or torn.
namespace VYX::Test {

/// Sizes from 1 byte to 64 KiB, mostly small, the same for writer and reader.
inline std::size_t PaddingOf(int iWriter, int iLine) {
  const std::uint32_t mixed =
      (static_cast<std::uint32_t>(iWriter) * 7919U + static_cast<std::uint32_t>(iLine)) * 2654435761U;
  return iLine % 500 == 499 ? 65000 : (mixed >> 16) % 120;
}

inline void WriteNumbered(int iWriter, int iLines) {
  for (int line = 0; line < iLines; ++line) {
    const std::string text =
        std::to_string(iWriter) + ":" + std::to_string(line) + ":" + std::string(PaddingOf(iWriter, line), 'x');
    VYXInfLog::GetDefaultLogger()->Log(ERROR, text.c_str());
  }
}

/// Counts lines "...[ERROR] writer:line:xxx"; every writer's lines have to come once each, whole, in order.
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

inline std::string FileSettings(const TemporaryFolder& iFolder) {
  return iFolder.MakeFile(
      "log.ini", "[Sinks.A]\nDestination=TextFile\nFilter=%Severity% = 1\nFileName=" + iFolder.Native("a.log") + "\n");
}

inline void RunThreads(int iThreads, int iLines) {
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

}  // namespace VYX::Test
