#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "KORSysBase/KORResult.h"
#include "KORSysBase/KORSysZipFile.h"
#include "VYXInfSystemUtil.h"
#include "faults/scenario.h"
#include "support/zip_builder.h"

namespace VYX::Test {
namespace {

using Util = VYXInfSystemUtil;

// An archive object that decodes and encodes large entries piece by piece.
std::unique_ptr<KORSysZipFile> MakeZip() {
  KORSysZipLimits limits;
  limits.maxInMemory = 2000;
  auto zip = std::make_unique<KORSysZipFile>();
  zip->SetLimits(limits);
  return zip;
}

std::string EntryOf(const KORUnicodeString& iArchive, const char* iName) {
  QB::Binary content;
  const long code = Util::ReadFileFromZipArchive(iArchive, iName, content, true);
  return code < 0 ? "<unreadable>" : std::string(content.GetData(), content.GetSize());
}

// One small file is deflated in memory, one large one piece by piece.
class ZipCreating final : public Scenario {
 public:
  ZipCreating() : _archive(_folder.Path("a.zip")), _small(_folder.Path("small")), _large(_folder.Path("large")) {
    _folder.MakeFile("small", "content");
    _folder.MakeFile("large", _content);
    _folder.MakeFile("a.zip", "old");
  }

  long Run() override {
    const std::unique_ptr<KORSysZipFile> zip = std::move(_zip);
    long code = zip->OpenZip(_archive, KORSysZipOpenMode::Create, 0);
    for (const KORUnicodeString* const file : {&_small, &_large}) {
      code = code < 0 ? code : zip->AddFile(file, 1, 0, nullptr, 0);
    }
    return code < 0 ? code : zip->Close(0);
  }

  void Check(const Ending& iEnding) override {
    const bool isOld = ContentOf(_folder.Native("a.zip")) == "old";
    EXPECT_TRUE(isOld || (EntryOf(_archive, "small") == "content" && EntryOf(_archive, "large") == _content));
    EXPECT_TRUE(iEnding.code < 0 || !isOld) << "an archive that was not made is told";
    if (!iEnding.mayLeaveFile) {
      EXPECT_EQ(_folder.Names(), (std::vector<std::string>{"a.zip", "large", "small"}));
    }
  }

 private:
  const std::string _content = std::string(5000, 'l') + "end";
  std::unique_ptr<KORSysZipFile> _zip = MakeZip();
  const KORUnicodeString _archive;
  const KORUnicodeString _small;
  const KORUnicodeString _large;
};

std::string SampleArchive(const std::string& iLarge) {
  return BuiltArchive{{{"sub/a", "new"}, {"sub/deep/b", iLarge, true}, {"c", iLarge}}}.Bytes();
}

class ZipExtracting final : public Scenario {
 public:
  ZipExtracting() : _archive(_folder.Path("a.zip")), _target(_folder.Path("out")) {
    _folder.MakeFile("a.zip", SampleArchive(_content));
    _folder.MakeFolder("out/sub");
    _folder.MakeFile("out/sub/a", "old");
    _folder.MakeFile("out/mine", "mine");
  }

  long Run() override {
    const std::unique_ptr<KORSysZipFile> zip = std::move(_zip);
    long code = zip->OpenZip(_archive, KORSysZipOpenMode::Browse, 0);
    code = code < 0 ? code : zip->ExtractAll(_target, 0, nullptr);
    return code < 0 ? code : zip->Close(0);
  }

  void Check(const Ending& iEnding) override {
    EXPECT_EQ(ContentOf(_folder.Native("out/mine")), "mine");
    const std::string replaced = ContentOf(_folder.Native("out/sub/a"));
    EXPECT_TRUE(replaced == "old" || replaced == "new") << replaced;
    if (iEnding.code >= 0) {
      EXPECT_EQ(replaced, "new");
      EXPECT_EQ(ContentOf(_folder.Native("out/sub/deep/b")), _content);
      EXPECT_EQ(ContentOf(_folder.Native("out/c")), _content);
    }
    if (!iEnding.mayLeaveFolder) {
      const bool isDone = iEnding.code >= 0;
      const std::vector<std::string> names =
          isDone ? std::vector<std::string>{"c", "mine", "sub"} : std::vector<std::string>{"mine", "sub"};
      EXPECT_EQ(_folder.Names("out"), names);
    }
  }

 private:
  const std::string _content = std::string(5000, 'b');
  std::unique_ptr<KORSysZipFile> _zip = MakeZip();
  const KORUnicodeString _archive;
  const KORUnicodeString _target;
};

class ZipReading final : public Scenario {
 public:
  ZipReading() : _archive(_folder.Path("a.zip")), _name("sub/deep/b"), _pieces("c") {
    _folder.MakeFile("a.zip", SampleArchive(_content));
  }

  long Run() override {
    const long code = Util::ReadFileFromZipArchive(_archive, _name, _read, true);
    return code < 0 ? code : ReadInPieces();
  }

  void Check(const Ending& iEnding) override {
    const std::string read(_read.GetData() == nullptr ? "" : _read.GetData(), _read.GetSize());
    EXPECT_TRUE(read.empty() || read == _content);
    if (iEnding.code >= 0) {
      EXPECT_EQ(read, _content);
      EXPECT_EQ(std::string(_buffer, sizeof _buffer), _content.substr(0, sizeof _buffer));
    }
  }

 private:
  long ReadInPieces() {
    const std::unique_ptr<KORSysZipFile> zip = std::move(_zip);
    long code = zip->OpenZip(_archive, KORSysZipOpenMode::Read, 0);
    code = code < 0 ? code : zip->OpenFileInZip(_pieces, 0, 0);
    std::uint64_t count = 0;
    code = code < 0 ? code : zip->ReadBufferInZip(_buffer, sizeof _buffer, &count);
    code = code < 0 ? code : zip->CloseFileInZip();
    return code < 0 ? code : zip->Close(0);
  }

  const std::string _content = std::string(5000, 'b');
  std::unique_ptr<KORSysZipFile> _zip = MakeZip();
  const KORUnicodeString _archive;
  const KORUnicodeString _name;
  const KORUnicodeString _pieces;
  QB::Binary _read;
  char _buffer[3000] = {};
};

}  // namespace

std::vector<NamedScenario> ZipScenarios() {
  return {{"ZipCreate", Maker<ZipCreating>(), 100},
          {"ZipExtract", Maker<ZipExtracting>(), 200},
          {"ZipRead", Maker<ZipReading>(), 50}};
}

}  // namespace VYX::Test
