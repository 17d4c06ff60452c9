#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "VYXInfLog.h"
#include "support/child_process.h"
#include "support/temporary_folder.h"

namespace VYX::Test {

/// Each test runs in a child: the default logger and the outputs belong to the whole process.
class Init : public testing::Test {
 protected:
  using Variables = std::vector<std::pair<std::string, const char*>>;

  ChildResult Run(const std::function<void()>& iBody, Variables iEnvironment = {}) {
    Variables environment{{"VYX_LOG_CONFIG_FILE", nullptr}, {"VYX_LOG_OUTPUT", nullptr}, {"VYX_LOG_LEVEL", nullptr}};
    environment.insert(environment.end(), iEnvironment.begin(), iEnvironment.end());
    const ChildResult result = RunInChild(iBody, environment);
    EXPECT_TRUE(result.IsGood()) << result.code << "\n" << result.output << result.error;
    return result;
  }
  static void Log(VYXInfLogLevel iLevel, const char* iText) {
    const auto logger = VYXInfLog::GetDefaultLogger();
    if (!logger->IsFiltered(iLevel)) {
      logger->Log(iLevel, iText);
    }
  }
  std::string SettingsFile() {
    return _folder.MakeFile("log.ini", "[Sinks.A]\nDestination=TextFile\nFormat=[%Severity%] %Message%\nFileName=" +
                                           _folder.Native("settings.log") + "\n");
  }

  TemporaryFolder _folder;
};

}  // namespace VYX::Test
