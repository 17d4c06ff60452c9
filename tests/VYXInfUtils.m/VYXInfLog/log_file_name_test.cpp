#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "VYXInfLog.h"
#include "VYXInfSystemUtil.h"
#include "support/captured_stdout.h"
#include "support/temporary_folder.h"

namespace {

using testing::ElementsAre;
using VYX::Test::CapturedStdout;
using VYX::Test::Detail;
using VYX::Test::FailureReturnIn;

std::string RunPart() {
  return std::string(VYXInfSystemUtil::GetStartDateTimeString("%Y-%m-%d_%H-%M-%S")) + "_" +
         std::to_string(VYXInfSystemUtil::GetPID()) + ".log";
}

TEST(LogFileName, HoldsNameStartTimeAndProcess) {
  const VYX::Test::TemporaryFolder folder;
  const struct {
    const char* appName;
    std::string start;
  } rows[] = {{"My App", "My App_"}, {"", ""}, {"a:b*c", "a_b_c_"}, {"caf\xC3\xA9", "caf\xC3\xA9_"}};
  for (const auto& row : rows) {
    KORUnicodeString name;
    EXPECT_TRUE(VYXInfLog::BuildLogFileName(name, row.appName, folder.Path()));
    EXPECT_EQ(name, (folder.Path() + "\\" + row.start.c_str() + RunPart().c_str())) << row.appName;
  }
}

TEST(LogFileName, StandsInTheTemporaryFolderByDefault) {
  CapturedStdout captured;
  KORUnicodeString name;
  EXPECT_TRUE(VYXInfLog::BuildLogFileName(name, "", ""));
  EXPECT_EQ(name, (VYXInfSystemUtil::GetTempFolderPath() + "\\" + RunPart().c_str()));
}

TEST(LogFileName, NeedsItsFolder) {
  const VYX::Test::TemporaryFolder folder;
  CapturedStdout captured;
  KORUnicodeString name("untouched");
  EXPECT_FALSE(VYXInfLog::BuildLogFileName(name, "App", folder.Path("nowhere")));
  EXPECT_EQ(name, "untouched");
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn("VYXInfLog"), Detail("Directory does not exist")));
}

}  // namespace
