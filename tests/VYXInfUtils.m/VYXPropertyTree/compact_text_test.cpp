#include "VYXPropertyTree/compact_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <string_view>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORResult.h"
#include "VYXPropertyTree.h"
#include "VYXPropertyTreeLists.h"
#include "support/captured_stdout.h"
#include "tree_testing.h"

namespace VYX::Test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Stringify, WritesMembersInKeyOrderWithoutSpace) {
  VYXPropertyTree tree;
  EXPECT_EQ(TextOf(tree), "{}");
  tree.SetBoolean("b", true);
  tree.SetString("a", "x");
  EXPECT_EQ(TextOf(tree), "{\"a\":\"x\",\"b\":true}");
}

TEST(Stringify, WritesEveryAlternative) {
  VYXPropertyTree inner;
  inner.SetInteger("n", 3);
  VYXPropertyTree tree;
  tree.SetBoolean("false", false);
  tree.SetDouble("half", 2.5);
  tree.SetStringList("none", KORListValKORUnicodeString());
  tree.SetPropertyTree("inner", inner);
  tree.SetPropertyTree("empty", VYXPropertyTree());
  Put(tree, "mixed",
      ArrayOf(json::Value(), json::Value(true), json::Value(1.0), Text("t"), ArrayOf(), ObjectOf({{"k", 0}})));
  Put(tree, "null", json::Value());
  EXPECT_EQ(TextOf(tree),
            "{\"empty\":{},\"false\":false,\"half\":2.5,\"inner\":{\"n\":3},"
            "\"mixed\":[null,true,1,\"t\",[],{\"k\":0}],\"none\":[],\"null\":null}");
}

TEST(Stringify, WritesNumbersAsDoubles) {
  VYXPropertyTree tree;
  tree.SetInteger("a", 42);
  tree.SetInteger("b", 123456789012345678);
  tree.SetDouble("c", 0.1);
  tree.SetDouble("d", -0.0);
  tree.SetDouble("e", std::numeric_limits<double>::infinity());
  EXPECT_EQ(TextOf(tree), "{\"a\":42,\"b\":1.2345678901234568e+17,\"c\":0.10000000000000001,\"d\":-0,\"e\":inf}");
}

TEST(Stringify, EscapesKeysAndTexts) {
  VYXPropertyTree tree;
  tree.SetString("k\"\\\n", "\b\f\n\r\t\"\\/'\x01\xC3\xA9");
  EXPECT_EQ(TextOf(tree), "{\"k\\\"\\\\\\n\":\"\\b\\f\\n\\r\\t\\\"\\\\/'\x01\xC3\xA9\"}");
  VYXPropertyTree zero;
  zero.SetString(KORUnicodeString(std::string_view("k\0y", 3)), KORUnicodeString(std::string_view("\0", 1)));
  EXPECT_EQ(TextOf(zero), std::string("{\"k\0y\":\"\0\"}", 11));
}

TEST(Stringify, OfATreeWithoutRootFails) {
  const VYXPropertyTree tree = RootlessTree();
  KORUnicodeString text("before");
  long code = S_OK;
  const auto lines = LinesOf([&] { code = tree.Stringify(text); });
  EXPECT_EQ(code, E_FAIL);
  EXPECT_EQ(text, "before");
  EXPECT_THAT(lines, ElementsAre(FailureReturnIn("VYXPropertyTree")));
}

TEST(Stringify, OfTheUtilityLogsAndAnswersNothing) {
  const VYXPropertyTree tree = RootlessTree();
  KORError::KORSetLastError(E_FAIL, "pending");
  KORUnicodeString text("before");
  const auto lines = LinesOf([&] { text = VYXPropertyTreeUtils::Stringify(tree); });
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_THAT(lines, ElementsAre(FailureReturnIn("VYXPropertyTree"), Line("ERROR", "pending"),
                                 FailureLogIn("VYXPropertyTree")));
  EXPECT_EQ(KORError::KORGetLastError(E_FAIL, nullptr), nullptr);
}

TEST(Stringify, OfTheUtilityIsSilentOnSuccess) {
  KORUnicodeString text;
  EXPECT_THAT(LinesOf([&] { text = VYXPropertyTreeUtils::Stringify(VYXPropertyTree()); }), IsEmpty());
  EXPECT_EQ(text, "{}");
}

/// Random values, small enough that two of them are equal now and then.
class RandomValues {
 public:
  explicit RandomValues(unsigned iSeed) : _random(iSeed) {}

  json::Value Next(int iDepth) {
    static const double kNumbers[] = {0, -0.0, 1, std::nan(""), -std::nan("1"), std::nextafter(1.0, 2.0), INFINITY};
    static constexpr std::string_view kTexts[] = {"", "null", "\\", "\"", "\\\"", "\n", "\\n", ",", "1", "{}"};
    switch (_random() % (iDepth > 0 ? 6U : 4U)) {
      case 0:
        return json::Value();
      case 1:
        return json::Value(_random() % 2 == 0);
      case 2:
        return json::Value(kNumbers[_random() % std::size(kNumbers)]);
      case 3:
        return Text(kTexts[_random() % std::size(kTexts)]);
      case 4: {
        json::Array array;
        for (auto count = _random() % 3; count > 0; --count) {
          array.Append(Next(iDepth - 1));
        }
        return json::Value(std::move(array));
      }
      default: {
        json::Object object;
        for (auto count = _random() % 3; count > 0; --count) {
          object.Set(KORUnicodeString(kTexts[_random() % std::size(kTexts)]), Next(iDepth - 1));
        }
        return json::Value(std::move(object));
      }
    }
  }

 private:
  std::mt19937 _random;
};

TEST(Equality, IsThatOfTheTexts) {
  RandomValues values(17);
  int equalPairs = 0;
  for (int round = 0; round < 200'000; ++round) {
    const json::Value left = values.Next(2);
    const json::Value right = values.Next(2);
    const bool haveEqualText = json::CompactText(left) == json::CompactText(right);
    ASSERT_EQ(json::HaveEqualText(left, right), haveEqualText)
        << json::CompactText(left) << " and " << json::CompactText(right);
    ASSERT_TRUE(json::HaveEqualText(left, json::Value(left)));
    equalPairs += haveEqualText ? 1 : 0;
  }
  EXPECT_GT(equalPairs, 1000);
}

}  // namespace
}  // namespace VYX::Test
