#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/os/folders.h"
#include "support/injected_faults.h"
#include "support/temporary_folder.h"
#include "support/unprivileged.h"

namespace VYX::Os {
namespace {

using VYX::Test::ContentOf;
using VYX::Test::TemporaryFolder;

TEST(RemoveTree, RemovesEverythingInside) {
  const TemporaryFolder folder;
  folder.MakeFolder("t/a/b/c");
  folder.MakeFolder("t/a2");
  folder.MakeFile("t/f", "1");
  folder.MakeFile("t/a/b/f", "2");
  folder.MakeFile("t/a/not_\xff_utf8", "3");
  RemovalReport report;
  EXPECT_TRUE(RemoveTree(folder.Native("t/"), report).IsOk());
  EXPECT_EQ(report.removed, 8U);
  EXPECT_EQ(report.failed, 0U);
  EXPECT_TRUE(folder.Names().empty());
}

TEST(RemoveTree, NeverFollowsALink) {
  const TemporaryFolder folder;
  folder.MakeFolder("outside/deep");
  folder.MakeFile("outside/deep/precious", "kept");
  folder.MakeFolder("t/a");
  folder.MakeLink("t/a/to_folder", "../../outside");
  folder.MakeLink("t/to_file", folder.Native("outside/deep/precious"));
  folder.MakeLink("t/dangling", "nowhere");
  folder.MakeLink("t/loop", ".");
  RemovalReport report;
  EXPECT_TRUE(RemoveTree(folder.Native("t"), report).IsOk());
  EXPECT_EQ(ContentOf(folder.Native("outside/deep/precious")), "kept");
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"outside"});
}

TEST(RemoveTree, RefusesALinkAndPlacesThatAreNeverMeant) {
  const TemporaryFolder folder;
  folder.MakeFolder("t");
  folder.MakeFile("t/f", "kept");
  folder.MakeLink("l", "t");
  const std::string paths[] = {
      folder.Native("l"),   folder.Native("l/"),  folder.Native("t/f"), folder.Native("none"), "", "/",
      folder.Native("t/."), folder.Native("t/..")};
  for (const std::string& path : paths) {
    RemovalReport report;
    EXPECT_FALSE(RemoveTree(path, report).IsOk()) << path;
    EXPECT_EQ(report.failed, 1U) << path;
    EXPECT_EQ(report.removed, 0U) << path;
  }
  EXPECT_EQ(ContentOf(folder.Native("t/f")), "kept");
}

// Deeper than any path can name, so it is made and removed folder by folder.
TEST(RemoveTree, TakesAnyDepthWithFewDescriptors) {
  const TemporaryFolder folder;
  constexpr int kDepth = 5000;
  int current = ::open(folder.MakeFolder("t").c_str(), O_RDONLY | O_DIRECTORY);
  for (int depth = 0; depth < kDepth; ++depth) {
    ASSERT_EQ(::mkdirat(current, "deeper", 0777), 0);
    const int next = ::openat(current, "deeper", O_RDONLY | O_DIRECTORY);
    ::close(current);
    current = next;
  }
  ::close(current);
  rlimit former{};
  ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &former), 0);
  const rlimit tight{static_cast<rlim_t>(VYX::Test::CountOpenDescriptors() + 8), former.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &tight), 0);
  RemovalReport report;
  const Status status = RemoveTree(folder.Native("t"), report);
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &former), 0);
  EXPECT_TRUE(status.IsOk()) << status.Describe();
  EXPECT_EQ(report.removed, kDepth + 1U);
}

TEST(RemoveTree, GoesOnAfterAFailureAndReportsTheFirst) {
  const TemporaryFolder folder;
  ASSERT_EQ(::chmod(folder.Native().c_str(), 0777), 0);
  folder.MakeFolder("t/locked");
  folder.MakeFolder("t/open");
  folder.MakeFile("t/locked/f", "kept");
  folder.MakeFile("t/open/f", "gone");
  for (const char* name : {"t", "t/open", "t/locked/f", "t/open/f"}) {
    ASSERT_EQ(::chmod(folder.Native(name).c_str(), 0777), 0);
  }
  ASSERT_EQ(::chmod(folder.Native("t/locked").c_str(), 0555), 0);
  EXPECT_TRUE(VYX::Test::HoldsForOrdinaryUser([&] {
    RemovalReport report;
    const Status status = RemoveTree(folder.Native("t"), report);
    return status.GetNative() == EACCES && report.failed >= 1 && report.firstPath == folder.Native("t/locked/f");
  }));
  EXPECT_EQ(ContentOf(folder.Native("t/locked/f")), "kept");
  EXPECT_EQ(ContentOf(folder.Native("t/open/f")), "<unreadable>");
}

TEST(RemoveTree, EveryFailingCallIsReportedOrHarmlessAndLeaksNothing) {
  const int descriptors = VYX::Test::CountOpenDescriptors();
  int total = 0;
  for (int k = 0; k <= total; ++k) {  // 0 counts the calls
    const TemporaryFolder folder;
    folder.MakeFolder("t/a/b");
    folder.MakeFile("t/a/b/f", "");
    folder.MakeFile("t/f", "");
    RemovalReport report;
    Status status;
    {
      const VYX::Test::InjectedFaults faults(k, EIO, true);
      status = RemoveTree(folder.Native("t"), report);
      total = k == 0 ? faults.Count() : total;
    }
    const bool isGone = ::access(folder.Native("t").c_str(), F_OK) != 0;
    EXPECT_EQ(status.IsOk(), isGone) << "call " << k << " of " << total;
    EXPECT_EQ(report.failed == 0, isGone) << "call " << k << " of " << total;
    EXPECT_EQ(VYX::Test::CountOpenDescriptors(), descriptors) << "call " << k << " of " << total;
  }
  EXPECT_GT(total, 10);
}

}  // namespace
}  // namespace VYX::Os
