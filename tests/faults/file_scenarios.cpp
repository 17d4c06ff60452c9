#include <gtest/gtest.h>

#include <string>

#include "KORSysBase/KORResult.h"
#include "VYXInfSystemUtil.h"
#include "faults/scenario.h"

namespace VYX::Test {
namespace {

using Util = VYXInfSystemUtil;

constexpr const char* kOld = "what was there before";

class Saving : public Scenario {
 public:
  explicit Saving(int iFlags) : _flags(iFlags), _path(_folder.Path("f")) { _folder.MakeFile("f", kOld); }

  long Run() override {
    return Util::SaveToFile(_path, QB::Binary(_content.data(), _content.size(), nullptr), _flags, true);
  }

 protected:
  std::string _content = std::string(3000, 'n');

 private:
  const int _flags;
  const KORUnicodeString _path;
};

// In place, a failure may leave part of the new content, but behind the old one.
class SavingInPlace final : public Saving {
 public:
  SavingInPlace() : Saving(0) {}

  void Check(const Ending& iEnding) override {
    const std::string content = ContentOf(_folder.Native("f"));
    const std::string whole = kOld + _content;
    EXPECT_EQ(content.substr(0, std::string(kOld).size()), kOld);
    EXPECT_EQ(content, whole.substr(0, content.size()));
    EXPECT_TRUE(iEnding.code < 0 || content == whole) << "a save that did not happen is told";
  }
};

template <int kFlags>
class SavingAtomically final : public Saving {
 public:
  SavingAtomically() : Saving(kFlags | Util::ATOMIC) {}

  void Check(const Ending& iEnding) override {
    const std::string content = ContentOf(_folder.Native("f"));
    const std::string whole = (kFlags & Util::OVERWRITE) != 0 ? _content : kOld + _content;
    EXPECT_TRUE(content == kOld || content == whole) << content;
    EXPECT_TRUE(iEnding.code < 0 || content == whole) << "a save that did not happen is told";
    if (!iEnding.mayLeaveFile) {
      EXPECT_EQ(_folder.Names(), std::vector<std::string>{"f"});
    }
  }
};

class Reading final : public Scenario {
 public:
  Reading() : _path(_folder.Path("f")) { _folder.MakeFile("f", _content); }

  long Run() override { return Util::ReadFile(_path, _read, true); }

  void Check(const Ending& iEnding) override {
    const std::string read(_read.GetData() == nullptr ? "" : _read.GetData(), _read.GetSize());
    EXPECT_EQ(read, iEnding.code < 0 ? "" : _content);
    EXPECT_EQ(ContentOf(_folder.Native("f")), _content);
  }

 private:
  const std::string _content = std::string(3000, 'c');
  const KORUnicodeString _path;
  QB::Binary _read;
};

}  // namespace

std::vector<NamedScenario> FileScenarios() {
  return {{"SaveInPlace", Maker<SavingInPlace>(), 20},
          {"SaveAtomically", Maker<SavingAtomically<Util::OVERWRITE>>(), 50},
          {"AppendAtomically", Maker<SavingAtomically<0>>(), 60},
          {"Read", Maker<Reading>(), 15}};
}

}  // namespace VYX::Test
