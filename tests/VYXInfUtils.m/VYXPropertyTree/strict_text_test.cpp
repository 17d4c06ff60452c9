#include "VYXPropertyTree/strict_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORResult.h"
#include "VYXPropertyTree.h"
#include "tree_testing.h"

namespace VYX::Test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string StrictTextOf(const VYXPropertyTree& iTree, int iIndent = 0) {
  return VYXPropertyTreeUtils::StringifyStrict(iTree, iIndent).ConvertToChar();
}

VYXPropertyTree Sample() {
  VYXPropertyTree tree;
  Put(tree, "b", ArrayOf(json::Value(1.0), ArrayOf(), ObjectOf({}), ObjectOf({{"x", 0.5}})));
  tree.SetString("a", "text");
  Put(tree, "c", json::Value());
  tree.SetBoolean("d", true);
  return tree;
}

TEST(StringifyStrict, WithoutIndentIsCompact) {
  EXPECT_EQ(StrictTextOf(VYXPropertyTree()), "{}");
  EXPECT_EQ(StrictTextOf(Sample()), R"({"a":"text","b":[1,[],{},{"x":0.5}],"c":null,"d":true})");
  EXPECT_EQ(StrictTextOf(Sample(), -1), StrictTextOf(Sample()));
  EXPECT_EQ(StrictTextOf(Sample(), INT_MIN), StrictTextOf(Sample()));
}

TEST(StringifyStrict, IndentsByLevel) {
  constexpr const char* kText = R"({
  "a": "text",
  "b": [
    1,
    [],
    {},
    {
      "x": 0.5
    }
  ],
  "c": null,
  "d": true
})";
  EXPECT_EQ(StrictTextOf(Sample(), 2), kText);
  EXPECT_EQ(StrictTextOf(VYXPropertyTree(), 2), "{}");
  VYXPropertyTree tree;
  tree.SetBoolean("k", true);
  const std::string widest = "{\n" + std::string(16, ' ') + "\"k\": true\n}";
  EXPECT_EQ(StrictTextOf(tree, 16), widest);
  EXPECT_EQ(StrictTextOf(tree, 17), widest);
  EXPECT_EQ(StrictTextOf(tree, INT_MAX), widest);
}

TEST(StringifyStrict, WritesTheShortestNumberThatReadsBack) {
  const struct {
    double number;
    const char* text;
  } rows[] = {
      {0, "0"},
      {-0.0, "-0"},
      {1, "1"},
      {-42, "-42"},
      {100000, "100000"},
      {0.1, "0.1"},
      {1.0 / 3, "0.3333333333333333"},
      {9007199254740992.0, "9007199254740992"},
      {-9007199254740992.0, "-9007199254740992"},
      {1e17, "1e+17"},
      {1e300, "1e+300"},
      {5e-324, "5e-324"},
      {std::numeric_limits<double>::max(), "1.7976931348623157e+308"},
      {-2.5e-7, "-2.5e-07"},
  };
  for (const auto& row : rows) {
    VYXPropertyTree tree;
    tree.SetDouble("k", row.number);
    EXPECT_EQ(StrictTextOf(tree), "{\"k\":" + std::string(row.text) + "}");
    VYXPropertyTree again;
    ASSERT_EQ(again.Parse(VYXPropertyTreeUtils::StringifyStrict(tree)), S_OK);
    EXPECT_TRUE(again == tree) << row.text;
  }
}

TEST(StringifyStrict, EscapesEveryControlCharacter) {
  std::string controls;
  for (char code = 0; code < 0x20; ++code) {
    controls += code;
  }
  VYXPropertyTree tree;
  tree.SetString(KORUnicodeString(std::string_view("k\0\x1F/\"", 5)),
                 KORUnicodeString(controls + "\x7F\xC3\xA9\xF0\x9F\x98\x80"));
  EXPECT_EQ(StrictTextOf(tree),
            R"({"k\u0000\u001f/\"":"\u0000\u0001\u0002\u0003\u0004\u0005\u0006\u0007\b\t\n\u000b\f\r\u000e\u000f)"
            R"(\u0010\u0011\u0012\u0013\u0014\u0015\u0016\u0017\u0018\u0019\u001a\u001b\u001c\u001d\u001e\u001f)"
            "\x7F\xC3\xA9\xF0\x9F\x98\x80\"}");
  VYXPropertyTree again;
  ASSERT_EQ(again.Parse(VYXPropertyTreeUtils::StringifyStrict(tree)), S_OK);
  EXPECT_TRUE(again == tree);
}

struct Refused {
  json::Value value;
  const char* reason;
};

TEST(StringifyStrict, RefusesWhatJsonCannotHold) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  json::Object illFormedKey;
  illFormedKey.Set("x~/\xFF", json::Value());
  Refused rows[] = {
      {json::Value(std::numeric_limits<double>::quiet_NaN()), "The number at '/k' cannot stand in JSON: nan"},
      {json::Value(kInfinity), "The number at '/k' cannot stand in JSON: inf"},
      {ArrayOf(json::Value(), ArrayOf(json::Value(1.0), json::Value(-kInfinity))),
       "The number at '/k/1/1' cannot stand in JSON: -inf"},
      {ArrayOf(ObjectOf({{"a/b~c", kInfinity}})), "The number at '/k/0/a~1b~0c' cannot stand in JSON: inf"},
      {Text("\xED\xA0\x80"), "The text at '/k' cannot stand in JSON: it is no UTF-8"},
      {ArrayOf(Text("good"), Text("cut \xC3")), "The text at '/k/1' cannot stand in JSON: it is no UTF-8"},
      {json::Value(std::move(illFormedKey)), "The key at '/k/x~0~1\xFF' cannot stand in JSON: it is no UTF-8"},
  };
  for (Refused& row : rows) {
    SCOPED_TRACE(row.reason);
    VYXPropertyTree tree;
    tree.SetBoolean("before", true);
    Put(tree, "k", std::move(row.value));
    KORUnicodeString text("untouched");
    long code = S_OK;
    auto lines = LinesOf([&] { code = VYXPropertyTreeUtils::StringifyStrict(tree, text); });
    EXPECT_EQ(code, E_FAIL);
    EXPECT_EQ(text, "untouched");
    EXPECT_THAT(lines, ElementsAre(FailureReturnIn("VYXPropertyTree/"), Detail(row.reason)));
    lines = LinesOf([&] { text = VYXPropertyTreeUtils::StringifyStrict(tree); });
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_THAT(lines,
                ElementsAre(FailureReturnIn("VYXPropertyTree/"), Detail(row.reason), FailureLogIn("VYXPropertyTree/")));
  }
}

TEST(StringifyStrict, OfATreeWithoutRootFails) {
  const VYXPropertyTree tree = RootlessTree();
  KORError::KORSetLastError(E_FAIL, "pending");
  KORUnicodeString text("before");
  EXPECT_THAT(
      LinesOf([&] { text = VYXPropertyTreeUtils::StringifyStrict(tree, 2); }),
      ElementsAre(FailureReturnIn("VYXPropertyTree/"), Line("ERROR", "pending"), FailureLogIn("VYXPropertyTree/")));
  EXPECT_TRUE(text.IsEmpty());
}

TEST(StringifyStrict, IsSilentOnSuccess) {
  KORUnicodeString text("replaced");
  long code = E_FAIL;
  EXPECT_THAT(LinesOf([&] { code = VYXPropertyTreeUtils::StringifyStrict(Sample(), text, 2); }), IsEmpty());
  EXPECT_EQ(code, S_OK);
  EXPECT_THAT(text.ConvertToChar(), HasSubstr("\n  \"b\": [\n    1,"));
}

}  // namespace
}  // namespace VYX::Test
