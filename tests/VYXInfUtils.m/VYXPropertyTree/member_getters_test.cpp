#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORResult.h"
#include "VYXListAccess.h"
#include "VYXPropertyAccess.h"
#include "VYXPropertyTree.h"
#include "VYXPropertyTreeLists.h"
#include "tree_testing.h"

namespace VYX::Test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t kMostNegative = std::numeric_limits<std::int64_t>::min();

VYXPropertyTree Sample() {
  VYXPropertyTree tree;
  tree.SetBoolean("boolean", true);
  tree.SetDouble("number", -2.7);
  tree.SetString("string", "text");
  Put(tree, "object", ObjectOf({{"x", 1}}));
  Put(tree, "null", json::Value());
  Put(tree, "empty", ArrayOf());
  Put(tree, "booleans", ArrayOf(json::Value(true), json::Value(false)));
  Put(tree, "numbers", ArrayOf(json::Value(1.5), json::Value(-1.5)));
  Put(tree, "strings", ArrayOf(Text("a"), Text("b")));
  Put(tree, "objects", ArrayOf(ObjectOf({{"x", 1}}), ObjectOf({{"y", 2}})));
  return tree;
}

const char* const kKeys[] = {"boolean", "booleans", "empty",   "null",   "number",
                             "numbers", "object",   "objects", "string", "strings"};

/// A read of any kind by key; tells whether its output was touched.
struct Read {
  const char* name;
  std::vector<std::string> fitting;  // keys of Sample that it reads
  std::function<long(const VYXPropertyTree&, const char*, bool& oTouched)> read;
};

std::vector<Read> ScalarReads() {
  return {
      {"GetBoolean",
       {"boolean"},
       [](const VYXPropertyTree& iTree, const char* iKey, bool& oTouched) {
         bool value = false;
         const long code = iTree.GetBoolean(iKey, value);
         oTouched = value;
         return code;
       }},
      {"GetDouble",
       {"number"},
       [](const VYXPropertyTree& iTree, const char* iKey, bool& oTouched) {
         double value = 99;
         const long code = iTree.GetDouble(iKey, value);
         oTouched = value != 99;
         return code;
       }},
      {"GetInteger",
       {"number"},
       [](const VYXPropertyTree& iTree, const char* iKey, bool& oTouched) {
         std::int64_t value = 99;
         const long code = iTree.GetInteger(iKey, value);
         oTouched = value != 99;
         return code;
       }},
      {"GetString",
       {"string"},
       [](const VYXPropertyTree& iTree, const char* iKey, bool& oTouched) {
         KORUnicodeString value("before");
         const long code = iTree.GetString(iKey, value);
         oTouched = value != "before";
         return code;
       }},
      {"GetPropertyTree",
       {"object"},
       [](const VYXPropertyTree& iTree, const char* iKey, bool& oTouched) {
         VYXPropertyTree value;
         value.SetBoolean("before", true);
         const long code = iTree.GetPropertyTree(iKey, value);
         oTouched = TextOf(value) != "{\"before\":true}";
         return code;
       }},
  };
}

template <class List, class Element>
std::function<long(const VYXPropertyTree&, const char*, bool&)> ListRead(
    long (VYXPropertyTree::*iGet)(const KORUnicodeString&, List&) const, Element iElement) {
  return [iGet, iElement](const VYXPropertyTree& iTree, const char* iKey, bool& oTouched) {
    List list;
    for (int count = 0; count < 3; ++count) {
      list.Append(iElement);
    }
    const long code = (iTree.*iGet)(iKey, list);
    oTouched = list.Size() != 3;
    return code;
  };
}

std::vector<Read> ListReads() {
  return {
      {"GetBooleanList", {"booleans", "empty"}, ListRead(&VYXPropertyTree::GetBooleanList, true)},
      {"GetDoubleList", {"numbers", "empty"}, ListRead(&VYXPropertyTree::GetDoubleList, 1.0)},
      {"GetIntegerList", {"numbers", "empty"}, ListRead(&VYXPropertyTree::GetIntegerList, std::int64_t{1})},
      {"GetStringList", {"strings", "empty"}, ListRead(&VYXPropertyTree::GetStringList, KORUnicodeString("x"))},
      {"GetPropertyTreeList", {"objects", "empty"}, ListRead(&VYXPropertyTree::GetPropertyTreeList, VYXPropertyTree())},
  };
}

/// The reads that take an absent key for an answer.
std::vector<Read> OptionalReads() {
  return {
      {"TryGetInteger",
       {"number"},
       [](const VYXPropertyTree& iTree, const char* iKey, bool& oTouched) {
         std::int64_t value = 99;
         const long code = iTree.TryGetInteger(iKey, value);
         oTouched = value != 99;
         return code;
       }},
      {"TryGetPropertyTree",
       {"object"},
       [](const VYXPropertyTree& iTree, const char* iKey, bool& oTouched) {
         VYXPropertyTree value;
         const long code = iTree.TryGetPropertyTree(iKey, value);
         oTouched = TextOf(value) != "{}";
         return code;
       }},
  };
}

void ExpectFailures(const Read& iRead, bool iIsList, bool iMayBeAbsent = false) {
  const VYXPropertyTree tree = Sample();
  bool isTouched = false;
  long code = S_OK;
  for (const char* const key : kKeys) {
    SCOPED_TRACE(std::string(iRead.name) + " of " + key);
    const bool fits = std::find(iRead.fitting.begin(), iRead.fitting.end(), key) != iRead.fitting.end();
    const auto lines = LinesOf([&] { code = iRead.read(tree, key, isTouched); });
    EXPECT_EQ(code, fits ? S_OK : E_FAIL);
    EXPECT_EQ(isTouched, fits || iIsList);
    if (fits) {
      EXPECT_THAT(lines, IsEmpty());
    } else {
      EXPECT_THAT(lines, ElementsAre(FailureReturnIn("VYXPropertyTree/"), Detail("bad variant access")));
    }
  }
  SCOPED_TRACE(iRead.name);
  auto lines = LinesOf([&] { code = iRead.read(tree, "absent\xC3\xA9", isTouched); });
  EXPECT_FALSE(isTouched);
  if (iMayBeAbsent) {
    EXPECT_EQ(code, S_FALSE);
    EXPECT_THAT(lines, IsEmpty());
  } else {
    EXPECT_EQ(code, E_FAIL);
    EXPECT_THAT(lines, ElementsAre(FailureReturnIn("VYXPropertyTree/"), Detail("Key 'absent\xC3\xA9' not found")));
  }
  const VYXPropertyTree rootless = RootlessTree();
  lines = LinesOf([&] { code = iRead.read(rootless, "k", isTouched); });
  EXPECT_EQ(code, E_FAIL);
  EXPECT_FALSE(isTouched);
  EXPECT_THAT(lines, ElementsAre(FailureReturnIn("VYXPropertyTree/")));
}

TEST(Getters, ReadTheirOwnAlternativeOnly) {
  for (const Read& read : ScalarReads()) {
    ExpectFailures(read, false);
  }
}

TEST(Getters, OfListsReadTheirOwnAlternativeOnly) {
  for (const Read& read : ListReads()) {
    ExpectFailures(read, true);
  }
}

TEST(Getters, OfWhatMayBeAbsentAnswerThatSilently) {
  for (const Read& read : OptionalReads()) {
    ExpectFailures(read, false, true);
  }
  ExpectFailures({"TryGetPropertyTreeList",
                  {"objects", "empty"},
                  ListRead(&VYXPropertyTree::TryGetPropertyTreeList, VYXPropertyTree())},
                 true, true);
}

TEST(Getters, OfWhatMayBeAbsentAnswerWhatWasStored) {
  const VYXPropertyTree tree = Sample();
  std::int64_t integer = 99;
  EXPECT_EQ(tree.TryGetInteger("number", integer), S_OK);
  EXPECT_EQ(integer, -2);
  VYXPropertyTree object;
  object.SetBoolean("before", true);
  EXPECT_EQ(tree.TryGetPropertyTree("object", object), S_OK);
  EXPECT_EQ(TextOf(object), "{\"x\":1}");
  KORListValVYXPropertyTree trees;
  trees.Append(Sample());
  EXPECT_EQ(tree.TryGetPropertyTreeList("objects", trees), S_OK);
  ASSERT_EQ(trees.Size(), 2);
  EXPECT_EQ(TextOf(trees[2]), "{\"y\":2}");
  KORError::KORSetLastError(E_FAIL, "pending");
  EXPECT_EQ(tree.TryGetInteger("absent", integer), S_FALSE);
  EXPECT_NE(KORError::KORGetLastError(E_FAIL, nullptr), nullptr);
  KORError::KORCleanLastError();
}

TEST(Getters, AnswerWhatWasStored) {
  const VYXPropertyTree tree = Sample();
  bool boolean = false;
  EXPECT_EQ(tree.GetBoolean("boolean", boolean), S_OK);
  EXPECT_TRUE(boolean);
  double number = 0;
  EXPECT_EQ(tree.GetDouble("number", number), S_OK);
  EXPECT_EQ(number, -2.7);
  std::int64_t integer = 0;
  EXPECT_EQ(tree.GetInteger("number", integer), S_OK);
  EXPECT_EQ(integer, -2);
  KORUnicodeString text;
  EXPECT_EQ(tree.GetString("string", text), S_OK);
  EXPECT_EQ(text, "text");
  VYXPropertyTree object;
  object.SetBoolean("before", true);
  EXPECT_EQ(tree.GetPropertyTree("object", object), S_OK);
  EXPECT_EQ(TextOf(object), "{\"x\":1}");
}

TEST(Getters, TruncateIntegers) {
  constexpr double k2To63 = 9223372036854775808.0;
  const struct {
    double number;
    std::int64_t integer;
  } cases[] = {
      {2.7, 2},
      {-2.7, -2},
      {0.9, 0},
      {-0.0, 0},
      {9007199254740993.0, 9007199254740992},
      {9223372036854774784.0, 9223372036854774784},
      {-k2To63, kMostNegative},
      {k2To63, kMostNegative},
      {-k2To63 * 2, kMostNegative},
      {1e300, kMostNegative},
      {std::numeric_limits<double>::infinity(), kMostNegative},
      {-std::numeric_limits<double>::infinity(), kMostNegative},
      {std::numeric_limits<double>::quiet_NaN(), kMostNegative},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.number);
    VYXPropertyTree tree;
    tree.SetDouble("k", row.number);
    Put(tree, "list", ArrayOf(json::Value(row.number)));
    std::int64_t integer = 99;
    EXPECT_EQ(tree.GetInteger("k", integer), S_OK);
    EXPECT_EQ(integer, row.integer);
    KORListValvyx_int64_t list;
    EXPECT_EQ(tree.GetIntegerList("list", list), S_OK);
    ASSERT_EQ(list.Size(), 1);
    EXPECT_EQ(list[1], row.integer);
  }
}

TEST(Getters, OfExactIntegersNeverCutOrRound) {
  constexpr double k2To53 = 9007199254740992.0;
  const struct {
    double number;
    std::int64_t integer;
    const char* reason;  // null where the number is one
  } cases[] = {
      {0, 0, nullptr},
      {-0.0, 0, nullptr},
      {-42, -42, nullptr},
      {k2To53 - 1, 9007199254740991, nullptr},
      {k2To53, 9007199254740992, nullptr},
      {-k2To53, -9007199254740992, nullptr},
      {k2To53 + 2, 0, "The number 9007199254740994 is beyond 2^53"},
      {-k2To53 - 2, 0, "The number -9007199254740994 is beyond 2^53"},
      {1e300, 0, "The number 1.0000000000000001e+300 is beyond 2^53"},
      {2.5, 0, "The number 2.5 is no integer"},
      {-1e-300, 0, "The number -1e-300 is no integer"},
      {std::numeric_limits<double>::infinity(), 0, "The number inf is no integer"},
      {std::numeric_limits<double>::quiet_NaN(), 0, "The number nan is no integer"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.number);
    VYXPropertyTree tree;
    Put(tree, "k", ArrayOf(json::Value(row.number), ObjectOf({{"n", row.number}})));
    tree.SetDouble("n", row.number);
    VYXListAccess list;
    VYXPropertyAccess object;
    ASSERT_EQ(tree.GetListAccess("k", list, false), S_OK);
    ASSERT_EQ(list.GetPropertyAccess(1, object), S_OK);
    std::int64_t integers[] = {99, 99, 99};
    const auto lines = LinesOf([&] {
      EXPECT_EQ(tree.GetExactInteger("n", integers[0]), row.reason == nullptr ? S_OK : E_FAIL);
      EXPECT_EQ(object.GetExactInteger("n", integers[1]), row.reason == nullptr ? S_OK : E_FAIL);
      EXPECT_EQ(list.GetExactInteger(0, integers[2]), row.reason == nullptr ? S_OK : E_FAIL);
    });
    EXPECT_THAT(integers, testing::Each(row.reason == nullptr ? row.integer : 99));
    if (row.reason == nullptr) {
      EXPECT_THAT(lines, IsEmpty());
    } else {
      const auto trace = FailureReturnIn("VYXPropertyTree/");
      const auto detail = Detail(row.reason);
      EXPECT_THAT(lines, ElementsAre(trace, detail, trace, detail, trace, detail));
    }
  }
}

TEST(Getters, OfExactIntegersReadNumbersOnly) {
  const VYXPropertyTree tree = Sample();
  std::int64_t integer = 99;
  EXPECT_THAT(LinesOf([&] { tree.GetExactInteger("string", integer); }),
              ElementsAre(FailureReturnIn("VYXPropertyTree/"), Detail("bad variant access")));
  EXPECT_THAT(LinesOf([&] { tree.GetExactInteger("absent", integer); }),
              ElementsAre(FailureReturnIn("VYXPropertyTree/"), Detail("Key 'absent' not found")));
  EXPECT_THAT(LinesOf([&] { RootlessTree().GetExactInteger("k", integer); }),
              ElementsAre(FailureReturnIn("VYXPropertyTree/")));
  EXPECT_EQ(integer, 99);
}

TEST(Getters, RoundIntegersBeyondTheNumbersPrecision) {
  VYXPropertyTree tree;
  tree.SetInteger("k", 9007199254740993);
  std::int64_t integer = 0;
  EXPECT_EQ(tree.GetInteger("k", integer), S_OK);
  EXPECT_EQ(integer, 9007199254740992);
  tree.SetInteger("five", 5);
  double number = 0;
  EXPECT_EQ(tree.GetDouble("five", number), S_OK);
  EXPECT_EQ(number, 5.0);
}

TEST(Getters, OfListsKeepWhatStandsBeforeAnUnfitElement) {
  VYXPropertyTree tree;
  Put(tree, "k", ArrayOf(json::Value(true), json::Value(1.0), json::Value(false)));
  KORListValvyx_bool booleans;
  booleans.Append(false);
  booleans.Append(false);
  long code = S_OK;
  auto lines = LinesOf([&] { code = tree.GetBooleanList("k", booleans); });
  EXPECT_EQ(code, E_FAIL);
  EXPECT_THAT(lines, ElementsAre(FailureReturnIn("VYXPropertyTree/"), Detail("bad variant access")));
  ASSERT_EQ(booleans.Size(), 1);
  EXPECT_TRUE(booleans[1]);
  EXPECT_TRUE(tree.IsBooleanList("k"));
  Put(tree, "k", ArrayOf(ObjectOf({{"x", 1}}), json::Value()));
  KORListValVYXPropertyTree trees;
  lines = LinesOf([&] { code = tree.GetPropertyTreeList("k", trees); });
  EXPECT_EQ(code, E_FAIL);
  ASSERT_EQ(trees.Size(), 1);
  EXPECT_EQ(TextOf(trees[1]), "{\"x\":1}");
}

TEST(Getters, OfListsAnswerTheElementsInOrder) {
  const VYXPropertyTree tree = Sample();
  KORRawColldouble numbers;
  EXPECT_EQ(tree.GetDoubleList("numbers", numbers), S_OK);
  EXPECT_THAT(numbers, ElementsAre(1.5, -1.5));
  KORListValvyx_int64_t integers;
  EXPECT_EQ(tree.GetIntegerList("numbers", integers), S_OK);
  EXPECT_EQ(integers[1], 1);
  EXPECT_EQ(integers[2], -1);
  KORListValKORUnicodeString strings;
  EXPECT_EQ(tree.GetStringList("strings", strings), S_OK);
  EXPECT_THAT(strings, ElementsAre(KORUnicodeString("a"), KORUnicodeString("b")));
  KORListValvyx_bool booleans;
  EXPECT_EQ(tree.GetBooleanList("booleans", booleans), S_OK);
  EXPECT_TRUE(booleans[1]);
  EXPECT_FALSE(booleans[2]);
  KORListValVYXPropertyTree trees;
  EXPECT_EQ(tree.GetPropertyTreeList("objects", trees), S_OK);
  EXPECT_EQ(TextOf(trees[2]), "{\"y\":2}");
}

TEST(Getters, MayFillWhatTheyReadFrom) {
  VYXPropertyTree tree = Sample();
  EXPECT_EQ(tree.GetPropertyTree("object", tree), S_OK);
  EXPECT_EQ(TextOf(tree), "{\"x\":1}");
  KORListValVYXPropertyTree trees;
  trees.Append(Sample());
  EXPECT_EQ(trees[1].GetPropertyTreeList("objects", trees), S_OK);
  ASSERT_EQ(trees.Size(), 2);
  EXPECT_EQ(TextOf(trees[1]), "{\"x\":1}");
  VYXPropertyTree rootless = RootlessTree();
  EXPECT_EQ(Sample().GetPropertyTree("object", rootless), S_OK);
  EXPECT_EQ(TextOf(rootless), "{\"x\":1}");
}

TEST(Getters, OfKeysAppend) {
  VYXPropertyTree tree;
  tree.SetBoolean("b", true);
  tree.SetBoolean("a", true);
  tree.SetBoolean("", true);
  KORListValKORUnicodeString keys;
  keys.Append("x");
  EXPECT_EQ(tree.GetKeys(keys), S_OK);
  ASSERT_EQ(keys.Size(), 4);
  EXPECT_EQ(keys[1], "x");
  EXPECT_EQ(keys[2], "");
  EXPECT_EQ(keys[3], "a");
  EXPECT_EQ(keys[4], "b");
  EXPECT_EQ(VYXPropertyTree().GetKeys(keys), S_OK);
  EXPECT_EQ(keys.Size(), 4);
  const VYXPropertyTree rootless = RootlessTree();
  long code = S_OK;
  const auto lines = LinesOf([&] { code = rootless.GetKeys(keys); });
  EXPECT_EQ(code, E_FAIL);
  EXPECT_EQ(keys.Size(), 4);
  EXPECT_THAT(lines, ElementsAre(FailureReturnIn("VYXPropertyTree/")));
}

TEST(Getters, ReportAPendingErrorOnlyWhereAnExceptionWasCaught) {
  const VYXPropertyTree tree = Sample();
  std::int64_t integer = 99;
  KORError::KORSetLastError(E_FAIL, "pending");
  EXPECT_THAT(LinesOf([&] { tree.GetInteger("absent", integer); }),
              ElementsAre(FailureReturnIn("VYXPropertyTree/"), Detail("Key 'absent' not found")));
  EXPECT_THAT(LinesOf([&] { tree.GetInteger("boolean", integer); }),
              ElementsAre(Line("ERROR", "pending"), FailureReturnIn("VYXPropertyTree/"), Detail("bad variant access")));
  EXPECT_THAT(LinesOf([&] { tree.GetInteger("boolean", integer); }),
              ElementsAre(FailureReturnIn("VYXPropertyTree/"), Detail("bad variant access")));
  EXPECT_EQ(integer, 99);
}

}  // namespace
}  // namespace VYX::Test
