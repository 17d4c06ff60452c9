#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "KORSysBase/KORResult.h"
#include "VYXInfFileHelper.h"
#include "VYXInfSystemUtil.h"
#include "faults/scenario.h"
#include "platform/os/native_path.h"

namespace VYX::Test {
namespace {

using Util = VYXInfSystemUtil;

std::vector<std::string> Sorted(const KORListValKORUnicodeString& iTexts) {
  std::vector<std::string> sorted;
  for (const KORUnicodeString& text : iTexts) {
    sorted.push_back(text.ConvertToChar());
  }
  std::sort(sorted.begin(), sorted.end());
  return sorted;
}

// What the folders hold is found whole, or the failure is told and what was found is right.
class Listing final : public Scenario {
 public:
  Listing() : _path(_folder.Path()) {
    _folder.MakeFolder("d");
    _folder.MakeFile("a", "");
    _folder.MakeFile("b", "");
  }

  long Run() override {
    _files = Util::ListFileNamesFromDirectory(_path, _all, &_folders);
    return _files.Size() == 2 && _folders.Size() == 1 ? S_OK : E_FAIL;
  }

  void Check(const Ending& iEnding) override {
    EXPECT_THAT(Sorted(_files), ::testing::IsSubsetOf({"a", "b"}));
    EXPECT_THAT(Sorted(_folders), ::testing::IsSubsetOf({"d"}));
    EXPECT_TRUE(iEnding.code >= 0 || !iEnding.isHostSound);
  }

 private:
  const KORUnicodeString _path;
  const KORListValKORUnicodeString _all;
  KORListValKORUnicodeString _files;
  KORListValKORUnicodeString _folders;
};

class Walking final : public Scenario {
 public:
  Walking() : _path(_folder.Path()) {
    _folder.MakeFolder("d/e");
    _folder.MakeFile("a", "");
    _folder.MakeFile("d/b", "");
    _folder.MakeFile("d/e/c", "");
  }

  long Run() override {
    constexpr unsigned int kFlags = Util::ENUM_FILES | Util::ENUM_FOLDERS | Util::ENUM_RECURSIVE | Util::ENUM_RELATIVE;
    _found = Util::EnumDirectories(_path, _none, kFlags, {});
    return _found.size() == 5 ? S_OK : E_FAIL;
  }

  void Check(const Ending& iEnding) override {
    const std::vector<KORUnicodeString> kAll = {"a", "d\\", "d\\b", "d\\e\\", "d\\e\\c"};
    EXPECT_THAT(_found, ::testing::IsSubsetOf(kAll));
    EXPECT_TRUE(iEnding.code >= 0 || !iEnding.isHostSound);
  }

 private:
  const KORUnicodeString _path;
  const KORUnicodeString _none;
  std::vector<KORUnicodeString> _found;
};

class Creating final : public Scenario {
 public:
  Creating() : _path(_folder.Path("old/a/b/c")) {
    _folder.MakeFolder("old");
    _folder.MakeFile("old/f", "old");
  }

  long Run() override { return Util::CreateDirectoryRecursively(_path); }

  void Check(const Ending& iEnding) override {
    EXPECT_EQ(ContentOf(_folder.Native("old/f")), "old");
    EXPECT_TRUE(iEnding.code < 0 || std::filesystem::is_directory(_folder.Native("old/a/b/c")));
  }

 private:
  const KORUnicodeString _path;
};

// A folder of a name of this run's own in the host's place for such folders.
class TemporaryLife final : public Scenario {
 public:
  TemporaryLife() : _name("vyx_faults_"), _text("text"), _sub("sub\\deep"), _file("sub\\deep\\file") {
    static int number = 0;
    _name.Append(std::to_string(::getpid()) + "_" + std::to_string(++number) + "_");
    static_cast<void>(Os::ToNativePath(Util::GetTempFolderPath().ToStringView(), _place));
  }
  ~TemporaryLife() override {
    for (const std::string& left : Left()) {
      std::filesystem::remove_all(_place + "/" + left);
    }
  }

  long Run() override {
    VYXInfFileHelper helper;
    KORUnicodeString folder;
    long code = helper.CreateTmpDir(_name, folder);
    if (code >= 0) {
      code = Util::CreateDirectoryRecursively(folder + _sub);
    }
    return code < 0 ? code : Util::SaveToFile(folder + _file, _text, 0);
  }

  void Check(const Ending& iEnding) override {
    if (!iEnding.mayLeaveFolder) {
      EXPECT_THAT(Left(), ::testing::IsEmpty());
    }
  }

 private:
  std::vector<std::string> Left() const {
    std::vector<std::string> left;
    for (const auto& entry : std::filesystem::directory_iterator(_place)) {
      if (entry.path().filename().string().starts_with(_name.ConvertToChar())) {
        left.push_back(entry.path().filename().string());
      }
    }
    return left;
  }

  KORUnicodeString _name;
  const KORUnicodeString _text;
  const KORUnicodeString _sub;
  const KORUnicodeString _file;
  std::string _place;
};

}  // namespace

std::vector<NamedScenario> FolderScenarios() {
  return {{"ListFolder", Maker<Listing>(), 15},
          {"WalkFolders", Maker<Walking>(), 50},
          {"CreateFolders", Maker<Creating>(), 20},
          {"TemporaryFolderLife", Maker<TemporaryLife>(), 80, true}};
}

}  // namespace VYX::Test
