#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace VYX::Test {

/// Documents of the wild: the *.json files of the folder that VYX_TEST_DATA names, in the environment or in the build.
/// Its tests are skipped where there are none.
class RealDocuments : public testing::Test {
 protected:
  void SetUp() override {
    const char* const named = std::getenv("VYX_TEST_DATA");
    const std::filesystem::path folder = named == nullptr ? VYX_TEST_DATA : named;
    if (!std::filesystem::is_directory(folder)) {
      GTEST_SKIP() << "no folder " << folder << "; VYX_TEST_DATA names the folder of JSON documents";
    }
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (entry.path().extension() == ".json") {
        _paths.push_back(entry.path().string());
      }
    }
    if (_paths.empty()) {
      GTEST_SKIP() << "no *.json file in " << folder;
    }
  }

  std::vector<std::string> _paths;
};

}  // namespace VYX::Test
