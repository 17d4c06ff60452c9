#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "VYXInfLog.h"
#include "concurrency_testing.h"
#include "support/child_process.h"
#include "support/temporary_folder.h"

namespace VYX::Test {
namespace {

TEST(Concurrency, SixteenThreadsIntoOneFile) {
  const TemporaryFolder folder;
  const std::string settings = FileSettings(folder);
  const auto child = RunInChild([&settings] {
    VYXInfLog::InitFromFile(settings.c_str());
    RunThreads(16, kLines);
    VYXInfLog::Close();
  });
  ASSERT_TRUE(child.IsGood());
  LineCheck check(16);
  check.Take(ContentOf(folder.Native("a.log")));
  check.ExpectAll(kLines);
}

TEST(Concurrency, NoLineVanishesWhileLoggingIsConfiguredAndClosed) {
  const TemporaryFolder folder;
  const std::string settings = FileSettings(folder);
  constexpr int kThreads = 16;
  const auto child = RunInChild([&settings] {
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
  for (const std::string& log : {ContentOf(folder.Native("a.log")), child.output}) {
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

}  // namespace
}  // namespace VYX::Test
