#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORResult.h"
#include "VYXIPropertyTreeVisitor.h"
#include "VYXPropertyTree.h"
#include "VYXPropertyTreeLists.h"
#include "tree_testing.h"

namespace VYX::Test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Notes every call as "operation key value"; throws at the keys "throw" and "throw odd".
class Recorder : public VYXIPropertyTreeVisitor {
 public:
  long VisitNull(const KORUnicodeString& iKey) override { return Note("Null", iKey, ""); }
  long VisitPropertyTreeList(const KORUnicodeString& iKey, const KORListValVYXPropertyTree& iValues) override {
    std::string text;
    for (int position = 1; position <= iValues.Size(); ++position) {
      text += TextOf(iValues[position]);
    }
    return Note("PropertyTreeList", iKey, text);
  }
  long VisitDoubleList(const KORUnicodeString& iKey, const KORRawColldouble& iValues) override {
    return Note("DoubleList", iKey, testing::PrintToString(std::vector<double>(iValues.begin(), iValues.end())));
  }
  long VisitStringList(const KORUnicodeString& iKey, const KORListValKORUnicodeString& iValues) override {
    std::string text;
    for (const KORUnicodeString& value : iValues) {
      text += value.ConvertToChar() + ";";
    }
    return Note("StringList", iKey, text);
  }
  long VisitBooleanList(const KORUnicodeString& iKey, const KORListValvyx_bool& iValues) override {
    std::string text;
    for (int position = 1; position <= iValues.Size(); ++position) {
      text += iValues[position] ? 't' : 'f';
    }
    return Note("BooleanList", iKey, text);
  }
  long VisitString(const KORUnicodeString& iKey, const KORUnicodeString& iValue) override {
    return Note("String", iKey, iValue.ConvertToChar());
  }
  long VisitDouble(const KORUnicodeString& iKey, double iValue) override {
    return Note("Double", iKey, testing::PrintToString(iValue));
  }
  long VisitPropertyTree(const KORUnicodeString& iKey, const VYXPropertyTree& iValue) override {
    return Note("PropertyTree", iKey, TextOf(iValue));
  }
  long VisitBoolean(const KORUnicodeString& iKey, bool iValue) override {
    return Note("Boolean", iKey, iValue ? "true" : "false");
  }

  std::vector<std::string> calls;

 private:
  long Note(const char* iOperation, const KORUnicodeString& iKey, const std::string& iValue) {
    if (iKey == "throw") {
      throw std::runtime_error("from the visitor");
    }
    if (iKey == "throw odd") {
      throw 5;
    }
    calls.push_back(std::string(iOperation) + " " + iKey.ConvertToChar() + " " + iValue);
    return E_FAIL;  // answers are not used
  }
};

VYXPropertyTree Sample() {
  VYXPropertyTree tree;
  Put(tree, "l null", json::Value());
  Put(tree, "k boolean", json::Value(true));
  Put(tree, "j number", json::Value(2.0));
  Put(tree, "i string", Text("x"));
  Put(tree, "h object", ObjectOf({{"x", 1}}));
  Put(tree, "g empty", ArrayOf());
  Put(tree, "f booleans", ArrayOf(json::Value(true), json::Value(false)));
  Put(tree, "e numbers", ArrayOf(json::Value(1.0), json::Value(2.5)));
  Put(tree, "d strings", ArrayOf(Text("x"), Text("y")));
  Put(tree, "c objects", ArrayOf(ObjectOf({{"x", 1}}), ObjectOf({})));
  Put(tree, "b nulls", ArrayOf(json::Value(), json::Value(true)));
  return tree;
}

TEST(Traverse, VisitsEveryMemberInKeyOrder) {
  Recorder recorder;
  long code = E_FAIL;
  EXPECT_THAT(LinesOf([&] { code = Sample().Traverse(recorder); }), IsEmpty());
  EXPECT_EQ(code, S_OK);
  EXPECT_THAT(recorder.calls, ElementsAre("PropertyTreeList c objects {\"x\":1}{}", "StringList d strings x;y;",
                                          "DoubleList e numbers { 1, 2.5 }", "BooleanList f booleans tf",
                                          "StringList g empty ", "PropertyTree h object {\"x\":1}", "String i string x",
                                          "Double j number 2", "Boolean k boolean true", "Null l null "));
}

TEST(Traverse, ReportsAnEmptyListOfNumbersAsOneOfStrings) {
  VYXPropertyTree tree;
  tree.SetDoubleList("k", KORRawColldouble());
  Recorder recorder;
  EXPECT_EQ(tree.Traverse(recorder), S_OK);
  EXPECT_THAT(recorder.calls, ElementsAre("StringList k "));
}

TEST(Traverse, StopsAtAnArrayOfArrays) {
  VYXPropertyTree tree;
  tree.SetBoolean("a", true);
  Put(tree, "b", ArrayOf(ArrayOf()));
  tree.SetBoolean("c", true);
  Recorder recorder;
  long code = S_OK;
  EXPECT_THAT(LinesOf([&] { code = tree.Traverse(recorder); }),
              ElementsAre(FailureReturnIn("VYXPropertyTree/traverse"), Detail("Unexpected visit")));
  EXPECT_EQ(code, E_FAIL);
  EXPECT_THAT(recorder.calls, ElementsAre("Boolean a true"));
}

TEST(Traverse, StopsBeforeAMixedArrayIsVisited) {
  for (json::Value& first : std::vector<json::Value>{json::Value(true), json::Value(1.0), Text("x"), ObjectOf({})}) {
    VYXPropertyTree tree;
    Put(tree, "a", ArrayOf(first, json::Value()));
    Recorder recorder;
    long code = S_OK;
    EXPECT_THAT(LinesOf([&] { code = tree.Traverse(recorder); }),
                ElementsAre(FailureReturnIn("VYXPropertyTree/traverse"), Detail("bad variant access")));
    EXPECT_EQ(code, E_FAIL);
    EXPECT_THAT(recorder.calls, IsEmpty());
  }
}

TEST(Traverse, CatchesTheVisitorsExceptions) {
  VYXPropertyTree tree;
  tree.SetBoolean("a", true);
  tree.SetBoolean("throw", true);
  tree.SetBoolean("z", true);
  Recorder recorder;
  KORError::KORSetLastError(E_FAIL, "pending");
  long code = S_OK;
  EXPECT_THAT(
      LinesOf([&] { code = tree.Traverse(recorder); }),
      ElementsAre(Line("ERROR", "pending"), FailureReturnIn("VYXPropertyTree/traverse"), Detail("from the visitor")));
  EXPECT_EQ(code, E_FAIL);
  EXPECT_THAT(recorder.calls, ElementsAre("Boolean a true"));
  tree.SetBoolean("throw odd", true);
  tree.RemoveKey("throw");
  EXPECT_THROW(tree.Traverse(recorder), int);
}

TEST(Dispatch, VisitsOneMember) {
  Recorder recorder;
  EXPECT_EQ(Sample().Dispatch("j number", recorder), S_OK);
  EXPECT_EQ(Sample().Dispatch("b nulls", recorder), S_OK);
  EXPECT_THAT(recorder.calls, ElementsAre("Double j number 2"));
}

TEST(Dispatch, IsSilentAboutAMissingKey) {
  Recorder recorder;
  long code = E_FAIL;
  EXPECT_THAT(LinesOf([&] { code = Sample().Dispatch("absent", recorder); }), IsEmpty());
  EXPECT_EQ(code, S_FALSE);
  EXPECT_THAT(recorder.calls, IsEmpty());
}

TEST(Dispatch, CatchesExceptions) {
  VYXPropertyTree tree;
  tree.SetBoolean("throw", true);
  Put(tree, "arrays", ArrayOf(ArrayOf()));
  Recorder recorder;
  long codes[2] = {};
  EXPECT_THAT(LinesOf([&] {
                codes[0] = tree.Dispatch("throw", recorder);
                codes[1] = tree.Dispatch("arrays", recorder);
              }),
              ElementsAre(FailureReturnIn("VYXPropertyTree/traverse"), Detail("from the visitor"),
                          FailureReturnIn("VYXPropertyTree/traverse"), Detail("Unexpected visit")));
  EXPECT_THAT(codes, ElementsAre(E_FAIL, E_FAIL));
}

TEST(Traverse, OfATreeWithoutRootFails) {
  const VYXPropertyTree tree = RootlessTree();
  Recorder recorder;
  long codes[2] = {};
  EXPECT_THAT(LinesOf([&] {
                codes[0] = tree.Traverse(recorder);
                codes[1] = tree.Dispatch("k", recorder);
              }),
              ElementsAre(FailureReturnIn("VYXPropertyTree/traverse"), FailureReturnIn("VYXPropertyTree/traverse")));
  EXPECT_THAT(codes, ElementsAre(E_FAIL, E_FAIL));
}

class Silent : public VYXIPropertyTreeVisitor {
 public:
  ~Silent() override = default;
};

TEST(Traverse, NeedsNoOverrides) {
  Silent visitor;
  EXPECT_EQ(Sample().Traverse(visitor), S_OK);
}

}  // namespace
}  // namespace VYX::Test
