#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "VYXPropertyAccess.h"
#include "VYXPropertyTree.h"
#include "tree_testing.h"

namespace VYX::Test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Each question, and the one key of the sample that it answers with true.
template <class Holder>
struct Question {
  bool (Holder::*ask)(const KORUnicodeString&) const;
  std::vector<std::string> keys;
};

template <class Holder>
std::vector<Question<Holder>> Questions() {
  return {
      {&Holder::IsBoolean, {"boolean"}},
      {&Holder::IsNumber, {"integer", "number"}},
      {&Holder::IsString, {"string"}},
      {&Holder::IsPropertyTree, {"object"}},
      {&Holder::IsBooleanList, {"booleans", "mixed"}},
      {&Holder::IsNumberList, {"numbers"}},
      {&Holder::IsStringList, {"strings"}},
      {&Holder::IsPropertyTreeList, {"objects"}},
  };
}

VYXPropertyTree Sample() {
  VYXPropertyTree tree;
  tree.SetBoolean("boolean", false);
  tree.SetDouble("number", 0);
  tree.SetInteger("integer", 1);
  tree.SetString("string", "");
  tree.SetPropertyTree("object", VYXPropertyTree());
  Put(tree, "null", json::Value());
  Put(tree, "empty", ArrayOf());
  Put(tree, "mixed", ArrayOf(json::Value(true), json::Value(1.0)));
  Put(tree, "nulls", ArrayOf(json::Value(), json::Value(true)));
  Put(tree, "arrays", ArrayOf(ArrayOf(json::Value(true))));
  Put(tree, "booleans", ArrayOf(json::Value(true)));
  Put(tree, "numbers", ArrayOf(json::Value(1.0)));
  Put(tree, "strings", ArrayOf(Text("x")));
  Put(tree, "objects", ArrayOf(ObjectOf({})));
  return tree;
}

const char* const kKeys[] = {"absent", "arrays", "boolean", "booleans", "empty",   "integer", "mixed",  "null",
                             "nulls",  "number", "numbers", "object",   "objects", "string",  "strings"};

template <class Holder>
void ExpectAnswers(const Holder& iHolder) {
  for (const Question<Holder>& question : Questions<Holder>()) {
    for (const char* const key : kKeys) {
      const bool isExpected = std::find(question.keys.begin(), question.keys.end(), key) != question.keys.end();
      bool answer = !isExpected;
      const auto lines = LinesOf([&] { answer = (iHolder.*question.ask)(key); });
      EXPECT_EQ(answer, isExpected) << key << " asked about " << question.keys[0];
      EXPECT_THAT(lines, IsEmpty());
    }
  }
  EXPECT_TRUE(iHolder.HasKey("null"));
  EXPECT_FALSE(iHolder.HasKey("absent"));
}

template <class Holder>
void ExpectAnswersOfNothing(const Holder& iHolder) {
  for (const Question<Holder>& question : Questions<Holder>()) {
    bool answer = false;
    EXPECT_THAT(LinesOf([&] { answer = (iHolder.*question.ask)("k"); }),
                ElementsAre(FailureReturnIn("VYXPropertyTree/")));
    EXPECT_TRUE(answer);
  }
  bool answer = true;
  EXPECT_THAT(LinesOf([&] { answer = iHolder.HasKey("k"); }), ElementsAre(FailureReturnIn("VYXPropertyTree/")));
  EXPECT_FALSE(answer);
}

TEST(Kinds, OfATree) {
  ExpectAnswers(Sample());
}

TEST(Kinds, OfAView) {
  VYXPropertyTree tree;
  tree.SetPropertyTree("inner", Sample());
  VYXPropertyAccess access;
  tree.GetPropertyAccess("inner", access, false);
  ExpectAnswers(access);
}

TEST(Kinds, OfNothing) {
  ExpectAnswersOfNothing(RootlessTree());
  ExpectAnswersOfNothing(VYXPropertyAccess());
}

}  // namespace
}  // namespace VYX::Test
