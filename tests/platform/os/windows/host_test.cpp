#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <future>
#include <thread>

#include "platform/os/environment.h"
#include "platform/os/files.h"
#include "platform/os/status.h"
#include "platform/os/temporary_folder.h"
#include "platform/os/thread_slot.h"
#include "support/host.h"

namespace VYX::Os {
namespace {

TEST(WindowsStatus, SpeaksAsOnOtherHosts) {
  EXPECT_EQ(Status(2).Describe(), "No such file or directory");
  EXPECT_EQ(Status(5).Describe(), "Permission denied");
  EXPECT_EQ(Status(2).ToResultCode(), -2147024894L);
  EXPECT_FALSE(Status(1006).Describe().empty());
  EXPECT_TRUE(Status(3).IsNotThere());
  EXPECT_TRUE(Failure::DeviceFull().ToErrorNumber() == 112);
}

TEST(WindowsEnvironment, IsUtf8) {
  const char* const text = "\xC3\xA4\xE6\xBC\xA2\xF0\x9F\x98\x80";
  VYX::Test::SetVariable("VYX_TEST_VARIABLE", text);
  EXPECT_STREQ(EnvironmentValue("VYX_TEST_VARIABLE"), text);
  const auto entries = EnvironmentEntries();
  EXPECT_EQ(std::count(entries.begin(), entries.end(), std::string("VYX_TEST_VARIABLE=") + text), 1);
  EXPECT_TRUE(
      std::none_of(entries.begin(), entries.end(), [](const std::string& iEntry) { return iEntry.starts_with("="); }));
  VYX::Test::SetVariable("VYX_TEST_VARIABLE", nullptr);
  EXPECT_EQ(EnvironmentValue("VYX_TEST_VARIABLE"), nullptr);
  EXPECT_EQ(EnvironmentValue(nullptr), nullptr);
}

TEST(WindowsTemporaryFolder, CanBeUsed) {
  const std::string path = UsualTemporaryFolder();
  EXPECT_TRUE(TestWritability(path).IsOk()) << path;
  EXPECT_FALSE(path.ends_with("\\"));
}

std::atomic<int> gDestroyed{0};

void Destroy(void* iValue) {
  gDestroyed += *static_cast<int*>(iValue);
  delete static_cast<int*>(iValue);
}

TEST(WindowsThreadSlot, DestroysTheValuesOfThreadsThatEnd) {
  gDestroyed = 0;
  {
    ThreadSlot slot(Destroy);
    EXPECT_EQ(slot.Get(), nullptr);
    EXPECT_TRUE(slot.Set(new int(1)));
    std::thread([&] { EXPECT_TRUE(slot.Set(new int(10))); }).join();
    EXPECT_EQ(gDestroyed, 10);
    EXPECT_EQ(*static_cast<int*>(slot.Get()), 1);
  }
  EXPECT_EQ(gDestroyed, 11);
}

TEST(WindowsThreadSlot, ForgetsTheValuesOfOtherThreads) {
  gDestroyed = 0;
  int* const forgotten = new int(100);
  std::promise<void> set;
  std::promise<void> end;
  std::thread other;
  {
    ThreadSlot slot(Destroy);
    other = std::thread([&] {
      EXPECT_TRUE(slot.Set(forgotten));
      set.set_value();
      end.get_future().wait();
    });
    set.get_future().wait();
  }
  end.set_value();
  other.join();
  EXPECT_EQ(gDestroyed, 0);
  delete forgotten;
}

}  // namespace
}  // namespace VYX::Os
