#include "faults/memory_scenarios.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "KORSysBase/KORResult.h"
#include "VYXInfStringUtil.h"
#include "VYXInfUri.h"
#include "VYXListAccess.h"
#include "VYXPropertyTree.h"

namespace VYX::Test {
namespace {

using Util = VYXInfStringUtil;

constexpr const char* kText = R"({"list":[1,2.5,3],"long":"a text that is too long to stand in the object itself",)"
                              R"("mixed":[1,"x",{"deep":{"er":[[1],[2]]}}],"tree":{"flag":true,"null":null}})";

// A text reads whole, or the failure is told.
class Parsing final : public Scenario {
 public:
  Parsing() : _text(kText) { _whole.Parse(_text); }

  long Run() override { return _tree.Parse(_text); }

  void Check(const Ending& iEnding) override { EXPECT_TRUE(iEnding.code < 0 || _tree == _whole); }

 private:
  const KORUnicodeString _text;
  VYXPropertyTree _whole;
  VYXPropertyTree _tree;
};

class Printing final : public Scenario {
 public:
  Printing() : _printed("before") {
    _tree.Parse(kText);
    _tree.Stringify(_whole);
  }

  long Run() override { return _tree.Stringify(_printed); }

  void Check(const Ending& iEnding) override {
    EXPECT_EQ(_printed, iEnding.code < 0 ? KORUnicodeString("before") : _whole);
  }

 private:
  VYXPropertyTree _tree;
  KORUnicodeString _whole;
  KORUnicodeString _printed;
};

class Copying final : public Scenario {
 public:
  Copying() {
    _tree.Parse(kText);
    _copy.SetBoolean("old", true);
    _old = _copy;
  }

  long Run() override {
    _copy = _tree;
    return S_OK;
  }

  void Check(const Ending& iEnding) override { EXPECT_TRUE(_copy == (iEnding.code < 0 ? _old : _tree)); }

 private:
  VYXPropertyTree _tree;
  VYXPropertyTree _old;
  VYXPropertyTree _copy;
};

// A text is changed as asked, or is as it was.
class Editing final : public Scenario {
 public:
  using Work = long (*)(KORUnicodeString& ioText);

  explicit Editing(Work iWork) : _work(iWork), _text(kBefore) {
    _whole = kBefore;
    _work(_whole);
  }

  long Run() override { return _work(_text); }

  void Check(const Ending& iEnding) override {
    EXPECT_EQ(_text, iEnding.code < 0 ? KORUnicodeString(kBefore) : _whole);
    EXPECT_NE(_whole, kBefore) << "the work does nothing";
  }

 private:
  static constexpr const char* kBefore =
      "Gr\xC3\xBC\xC3\x9F"
      "e, a text with a few words and %C3%BC inside it";

  const Work _work;
  KORUnicodeString _text;
  KORUnicodeString _whole;
};

template <long (*kWork)(KORUnicodeString&)>
std::unique_ptr<Scenario> MakeEditing() {
  return std::make_unique<Editing>(kWork);
}

long Append(KORUnicodeString& ioText) {
  ioText.Append(ioText);
  return S_OK;
}
long Insert(KORUnicodeString& ioText) {
  ioText.Insert(5, ioText);
  return S_OK;
}
long Replace(KORUnicodeString& ioText) {
  ioText.ReplaceAll(" ", ", and many a longer text between the words, ");
  return S_OK;
}
long ToUpper(KORUnicodeString& ioText) {
  ioText.ToUpper();
  return S_OK;
}
long SplitAndJoin(KORUnicodeString& ioText) {
  ioText = Util::Join(Util::Split(ioText, " "), " <-> ");
  return S_OK;
}
long SplitIntoVector(KORUnicodeString& ioText) {
  ioText = Util::Concatenate(Util::SplitV(ioText, "e", true), "some other text");
  return S_OK;
}
long Cut(KORUnicodeString& ioText) {
  ioText = Util::SubString(ioText, 2, 40) + Util::Crop(ioText, 30) + Util::Trim(ioText);
  return S_OK;
}
long Capitalize(KORUnicodeString& ioText) {
  ioText = Util::ConvertCamelToSnake(Util::Capitalize(ioText));
  return S_OK;
}
long EncodeComponent(KORUnicodeString& ioText) {
  ioText = Util::EncodeURIComponent(Util::DecodeURIComponent(ioText));
  return S_OK;
}
long EscapeForScript(KORUnicodeString& ioText) {
  ioText = Util::EscapeStringForJS("\"" + ioText + "\"");
  return S_OK;
}
// The two below leave the empty text where they fail.
long Take(long iCode, KORUnicodeString& ioResult, KORUnicodeString& oText) {
  if (iCode >= 0) {
    oText = std::move(ioResult);
  } else {
    EXPECT_TRUE(ioResult.IsEmpty());
  }
  return iCode;
}
long EncodeBase64(KORUnicodeString& ioText) {
  KORUnicodeString encoded;
  const long code = Util::EncodeToBase64(ioText, encoded);
  return Take(code, encoded, ioText);
}
long DecodeBase64(KORUnicodeString& ioText) {
  constexpr const char* kEncoded = "YSB0ZXh0IHRoYXQgaXMgdG9vIGxvbmcgdG8gc3RhbmQgaW4gdGhlIG9iamVjdA==";
  KORUnicodeString decoded;
  const long code = Util::DecodeFromBase64(kEncoded, decoded);
  return Take(code, decoded, ioText);
}
long Hash(KORUnicodeString& ioText) {
  return Util::Base64Hash(ioText, Util::HashAlgo::SHA256, ioText);
}
long ReadUri(KORUnicodeString& ioText) {
  VYXInfUri uri;
  const long code = uri.TrySet("https://example.org:8080/a/long/path/to/something?first=1&second=2#fragment");
  if (code >= 0) {
    ioText = uri.GetString();
  }
  return code;
}

}  // namespace

std::vector<NamedScenario> MemoryScenarios() {
  return {{"Parse", Maker<Parsing>(), 2},
          {"Print", Maker<Printing>(), 2},
          {"Copy", Maker<Copying>(), 2, true},
          {"Append", MakeEditing<Append>, 2, true},
          {"Insert", MakeEditing<Insert>, 2, true},
          {"Replace", MakeEditing<Replace>, 2, true},
          {"ToUpper", MakeEditing<ToUpper>, 2, true},
          {"SplitAndJoin", MakeEditing<SplitAndJoin>, 2, true},
          {"SplitIntoVector", MakeEditing<SplitIntoVector>, 2, true},
          {"Cut", MakeEditing<Cut>, 2, true},
          {"Capitalize", MakeEditing<Capitalize>, 2, true},
          {"EncodeComponent", MakeEditing<EncodeComponent>, 2, true},
          {"EscapeForScript", MakeEditing<EscapeForScript>, 2, true},
          {"EncodeBase64", MakeEditing<EncodeBase64>, 2, true},
          {"DecodeBase64", MakeEditing<DecodeBase64>, 2, true},
          {"Hash", MakeEditing<Hash>, 2, true},
          {"ReadUri", MakeEditing<ReadUri>, 2, true}};
}

}  // namespace VYX::Test
