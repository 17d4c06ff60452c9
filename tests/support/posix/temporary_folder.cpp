#include "support/temporary_folder.h"

#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace VYX::Test {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() : _path((fs::temp_directory_path() / "vyx_test_XXXXXX").string()) {
  if (::mkdtemp(_path.data()) == nullptr) {
    throw std::runtime_error("no temporary folder " + _path);
  }
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(_path, ignored);
}

std::string TemporaryFolder::Native(std::string_view iRelative) const {
  return iRelative.empty() ? _path : _path + "/" + std::string(iRelative);
}

KORUnicodeString TemporaryFolder::Path(std::string_view iRelative) const {
  return KORUnicodeString(std::string_view(Native(iRelative)));
}

std::string TemporaryFolder::MakeFolder(std::string_view iRelative) const {
  fs::create_directories(Native(iRelative));
  return Native(iRelative);
}

std::string TemporaryFolder::MakeFile(std::string_view iRelative, std::string_view iContent) const {
  std::ofstream(Native(iRelative), std::ios::binary) << iContent;
  return Native(iRelative);
}

bool TemporaryFolder::CanMakeLinks() {
  return true;
}

std::string TemporaryFolder::MakeLink(std::string_view iRelative, const std::string& iTarget) const {
  fs::create_symlink(iTarget, Native(iRelative));
  return Native(iRelative);
}

std::vector<std::string> TemporaryFolder::Names(std::string_view iRelative) const {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(Native(iRelative))) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string ContentOf(const std::string& iNativePath) {
  std::ifstream file(iNativePath, std::ios::binary);
  if (!file) {
    return "<unreadable>";
  }
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

int CountOpenDescriptors() {
  const fs::directory_iterator descriptors("/proc/self/fd");
  return static_cast<int>(std::distance(begin(descriptors), end(descriptors)));
}

}  // namespace VYX::Test
