#include <stdlib.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORSysZipFile.h"
#include "KORSysTS/KORUnicodeString.h"
#include "fuzz/support/fuzz_input.h"
#include "fuzz/support/memory_file.h"
#include "fuzz/support/require.h"
#include "fuzz/support/zip_input.h"

// Any archive, extracted into a folder deep inside others: nothing appears or changes outside of it, no link is made,
// and a refused archive leaves nothing.

namespace {

using namespace VYX::Fuzz;
namespace fs = std::filesystem;

constexpr std::string_view kPlace = "a/b/c/d/e/f/g/h";

// A folder in memory where there is one.
std::string MakeRoot() {
  std::string path = fs::exists("/dev/shm") ? "/dev/shm/fuzz_XXXXXX" : "/tmp/fuzz_XXXXXX";
  Require(mkdtemp(path.data()) != nullptr, "a temporary folder can be made");
  return path;
}

class Surroundings {
 public:
  Surroundings() : _root(MakeRoot()) {
    fs::create_directories(Folder());
    for (fs::path folder = Folder(); folder != _root; folder = folder.parent_path()) {
      std::ofstream(folder / "beside") << "untouched";
    }
    std::ofstream(_root / "beside") << "untouched";
    _before = Outside();
  }
  ~Surroundings() {
    std::error_code ignored;
    fs::remove_all(_root, ignored);
  }

  fs::path Folder() const { return _root / kPlace; }
  fs::path Target() const { return Folder() / "target"; }

  void CheckOutside() const { Require(Outside() == _before, "nothing outside the target changed"); }

 private:
  // Everything around the target: path, size and time of the last change.
  std::vector<std::string> Outside() const {
    std::vector<std::string> entries;
    for (auto entry = fs::recursive_directory_iterator(_root); entry != fs::end(entry); ++entry) {
      if (entry->path() == Target()) {
        entry.disable_recursion_pending();
      } else {
        const auto changed = entry->is_directory() ? 0 : entry->last_write_time().time_since_epoch().count();
        entries.push_back(entry->path().string() + ":" + std::to_string(changed));
      }
    }
    std::sort(entries.begin(), entries.end());
    return entries;
  }

  fs::path _root;
  std::vector<std::string> _before;
};

void CheckInside(const fs::path& iTarget) {
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(iTarget)) {
    const fs::file_status status = entry.symlink_status();
    Require(fs::is_regular_file(status) || fs::is_directory(status), "only files and folders are made");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  static MemoryFile file;
  static const Surroundings surroundings;
  FuzzInput input(iData, iSize);
  const unsigned long options = input.Flag() ? KORSysZipFile::kUtf8Names : 0UL;
  KORSysZipLimits limits;
  limits.maxEntries = 100;
  limits.maxTotalSize = 1 << 20;
  limits.isCaseIgnored = input.Flag();
  limits.arePortableNamesRequired = input.Flag();
  file.Write(MakeZip(input));
  KORSysZipFile zip(0);
  zip.SetLimits(limits);
  const std::string target = surroundings.Target().string();
  if (zip.OpenZip(KORUnicodeString(std::string_view(file.Path())), KORSysZipOpenMode::Browse, 0) >= 0) {
    if (zip.ExtractAll(KORUnicodeString(std::string_view(target)), options, nullptr) >= 0) {
      CheckInside(surroundings.Target());
      fs::remove_all(surroundings.Target());
    }
    Require(!fs::exists(surroundings.Target()), "a refused archive leaves nothing");
    surroundings.CheckOutside();
  }
  KORError::KORCleanLastError();
  return 0;
}
