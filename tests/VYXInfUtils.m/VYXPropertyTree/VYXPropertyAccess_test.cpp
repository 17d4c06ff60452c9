#include "VYXPropertyAccess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORResult.h"
#include "VYXListAccess.h"
#include "VYXPropertyTree.h"
#include "VYXPropertyTreeLists.h"
#include "tree_testing.h"

namespace VYX::Test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

VYXPropertyAccess Inner(VYXPropertyTree& ioTree) {
  VYXPropertyAccess access;
  EXPECT_EQ(ioTree.GetPropertyAccess("inner", access, true), S_OK);
  return access;
}

TEST(VYXPropertyAccess, CreatesWhatIsAbsent) {
  VYXPropertyTree tree;
  VYXPropertyAccess access;
  EXPECT_EQ(tree.GetPropertyAccess("a", access, true), S_OK);
  EXPECT_EQ(TextOf(tree), "{\"a\":{}}");
  VYXListAccess list;
  EXPECT_EQ(tree.GetListAccess("b", list, true), S_OK);
  EXPECT_EQ(TextOf(tree), "{\"a\":{},\"b\":[]}");
  EXPECT_EQ(access.GetPropertyAccess("c", access, true), S_OK);
  EXPECT_EQ(access.GetListAccess("d", list, true), S_OK);
  EXPECT_EQ(list.AddBoolean(true), S_OK);
  EXPECT_EQ(TextOf(tree), "{\"a\":{\"c\":{\"d\":[true]}},\"b\":[]}");
}

TEST(VYXPropertyAccess, FindsWhatIsThere) {
  VYXPropertyTree tree;
  Inner(tree).SetInteger("n", 1);
  for (const bool create : {true, false}) {
    VYXPropertyAccess access;
    EXPECT_EQ(tree.GetPropertyAccess("inner", access, create), S_OK);
    EXPECT_EQ(access.Stringify(), "{\"n\":1}");
  }
}

TEST(VYXPropertyAccess, NeverReplacesAnotherKind) {
  VYXPropertyTree tree;
  tree.SetInteger("a", 5);
  tree.SetPropertyTree("object", VYXPropertyTree());
  Put(tree, "array", ArrayOf());
  Put(tree, "null", json::Value());
  const std::string before = TextOf(tree);
  VYXPropertyAccess access = Inner(tree);
  access.SetInteger("x", 1);
  VYXListAccess list;
  for (const bool create : {true, false}) {
    for (const char* const key : {"a", "array", "null"}) {
      long code = S_OK;
      EXPECT_THAT(LinesOf([&] { code = tree.GetPropertyAccess(key, access, create); }),
                  ElementsAre(FailureReturnIn("VYXPropertyTree/")));
      EXPECT_EQ(code, E_FAIL);
    }
    for (const char* const key : {"a", "object", "null"}) {
      long code = S_OK;
      EXPECT_THAT(LinesOf([&] { code = tree.GetListAccess(key, list, create); }),
                  ElementsAre(FailureReturnIn("VYXPropertyTree/")));
      EXPECT_EQ(code, E_FAIL);
    }
  }
  EXPECT_EQ(access.Stringify(), "{\"x\":1}");
  EXPECT_EQ(list.Stringify(), "null");
  tree.RemoveKey("inner");
  EXPECT_EQ(TextOf(tree), before);
}

TEST(VYXPropertyAccess, NamesAnAbsentKey) {
  VYXPropertyTree tree;
  VYXPropertyAccess access = Inner(tree);
  VYXListAccess list;
  long codes[4] = {};
  const auto lines = LinesOf([&] {
    codes[0] = tree.GetPropertyAccess("p", access, false);
    codes[1] = tree.GetListAccess("q", list, false);
    codes[2] = access.GetPropertyAccess("r", access, false);
    codes[3] = access.GetListAccess("s", list, false);
  });
  EXPECT_THAT(codes, ElementsAre(E_FAIL, E_FAIL, E_FAIL, E_FAIL));
  const auto trace = FailureReturnIn("VYXPropertyTree/");
  EXPECT_THAT(lines, ElementsAre(trace, Detail("Key 'p' not found"), trace, Detail("Key 'q' not found"), trace,
                                 Detail("Key 'r' not found"), trace, Detail("Key 's' not found")));
  EXPECT_EQ(TextOf(tree), "{\"inner\":{}}");
}

TEST(VYXPropertyAccess, OfATreeWithoutRootFails) {
  VYXPropertyTree tree = RootlessTree();
  VYXPropertyAccess access;
  VYXListAccess list;
  const auto lines = LinesOf([&] {
    tree.GetPropertyAccess("p", access, true);
    tree.GetListAccess("p", list, true);
    access.GetPropertyAccess("p", access, true);
    access.GetListAccess("p", list, true);
  });
  const auto trace = FailureReturnIn("VYXPropertyTree/");
  EXPECT_THAT(lines, ElementsAre(trace, trace, trace, trace));
}

/// Every operation that fails with E_FAIL on a view that has no Object.
std::vector<std::function<long(const VYXPropertyAccess&)>> Operations() {
  using Access = const VYXPropertyAccess&;
  return {
      [](Access iAccess) {
        bool value;
        return iAccess.GetBoolean("k", value);
      },
      [](Access iAccess) {
        double value;
        return iAccess.GetDouble("k", value);
      },
      [](Access iAccess) {
        std::int64_t value;
        return iAccess.GetInteger("k", value);
      },
      [](Access iAccess) {
        std::int64_t value;
        return iAccess.GetExactInteger("k", value);
      },
      [](Access iAccess) {
        KORUnicodeString value;
        return iAccess.GetString("k", value);
      },
      [](Access iAccess) {
        KORListValKORUnicodeString keys;
        return iAccess.GetKeys(keys);
      },
      [](Access iAccess) { return iAccess.SetBoolean("k", true); },
      [](Access iAccess) { return iAccess.SetDouble("k", 1); },
      [](Access iAccess) { return iAccess.SetInteger("k", 1); },
      [](Access iAccess) { return iAccess.SetString("k", "x"); },
      [](Access iAccess) { return iAccess.SetPropertyTree("k", VYXPropertyTree()); },
      [](Access iAccess) { return iAccess.SetBooleanList("k", KORListValvyx_bool()); },
      [](Access iAccess) { return iAccess.SetDoubleList("k", KORRawColldouble()); },
      [](Access iAccess) { return iAccess.SetIntegerList("k", KORListValvyx_int64_t()); },
      [](Access iAccess) { return iAccess.SetStringList("k", KORListValKORUnicodeString()); },
      [](Access iAccess) { return iAccess.SetPropertyTreeList("k", KORListValVYXPropertyTree()); },
      [](Access iAccess) { return iAccess.RemoveKey("k"); },
      [](Access iAccess) {
        VYXPropertyAccess out;
        return iAccess.GetPropertyAccess("k", out, true);
      },
      [](Access iAccess) {
        VYXListAccess out;
        return iAccess.GetListAccess("k", out, true);
      },
  };
}

TEST(VYXPropertyAccess, OfNothingFails) {
  for (const auto& operation : Operations()) {
    long code = S_OK;
    EXPECT_THAT(LinesOf([&] { code = operation(VYXPropertyAccess()); }),
                ElementsAre(FailureReturnIn("VYXPropertyTree/")));
    EXPECT_EQ(code, E_FAIL);
  }
  EXPECT_EQ(VYXPropertyAccess().Stringify(), "null");
}

TEST(VYXPropertyAccess, OfAnotherKindFails) {
  VYXPropertyTree tree;
  const VYXPropertyAccess access = Inner(tree);
  *Internal::TreeAccess::Root(tree)->Find("inner") = json::Value(5.0);
  for (const auto& operation : Operations()) {
    long code = S_OK;
    EXPECT_THAT(LinesOf([&] { code = operation(access); }),
                ElementsAre(FailureReturnIn("VYXPropertyTree/"), Detail("bad variant access")));
    EXPECT_EQ(code, E_FAIL);
  }
  bool answer = true;
  EXPECT_THAT(LinesOf([&] { answer = access.IsNumber("k"); }),
              ElementsAre(FailureReturnIn("VYXPropertyTree/"), Detail("bad variant access")));
  EXPECT_FALSE(answer);
  EXPECT_EQ(access.Stringify(), "5");
}

TEST(VYXPropertyAccess, ReadsAndWritesInPlace) {
  VYXPropertyTree tree;
  const VYXPropertyAccess access = Inner(tree);
  access.SetDouble("d", -2.7);
  access.SetString("s", "text");
  access.SetBoolean("b", true);
  std::int64_t integer = 0;
  double number = 0;
  bool boolean = false;
  KORUnicodeString text;
  EXPECT_EQ(access.GetInteger("d", integer), S_OK);
  EXPECT_EQ(integer, -2);
  EXPECT_EQ(access.GetDouble("d", number), S_OK);
  EXPECT_EQ(number, -2.7);
  EXPECT_EQ(access.GetBoolean("b", boolean), S_OK);
  EXPECT_TRUE(boolean);
  EXPECT_EQ(access.GetString("s", text), S_OK);
  EXPECT_EQ(text, "text");
  KORListValKORUnicodeString keys;
  keys.Append("first");
  EXPECT_EQ(access.GetKeys(keys), S_OK);
  EXPECT_THAT(keys, ElementsAre(KORUnicodeString("first"), KORUnicodeString("b"), KORUnicodeString("d"),
                                KORUnicodeString("s")));
}

TEST(VYXPropertyAccess, GettersFailAsThoseOfTheTree) {
  VYXPropertyTree tree;
  const VYXPropertyAccess access = Inner(tree);
  access.SetBoolean("b", true);
  double number = 99;
  long codes[2] = {};
  const auto lines = LinesOf([&] {
    codes[0] = access.GetDouble("b", number);
    codes[1] = access.GetDouble("absent", number);
  });
  EXPECT_THAT(codes, ElementsAre(E_FAIL, E_FAIL));
  EXPECT_EQ(number, 99);
  EXPECT_THAT(lines, ElementsAre(FailureReturnIn("VYXPropertyTree/"), Detail("bad variant access"),
                                 FailureReturnIn("VYXPropertyTree/"), Detail("Key 'absent' not found")));
}

TEST(VYXPropertyAccess, GetIntegerReportsThePendingError) {
  VYXPropertyTree tree;
  const VYXPropertyAccess access = Inner(tree);
  access.SetBoolean("b", true);
  std::int64_t integer = 99;
  const auto lines = LinesOf([&] {
    KORError::KORSetLastError(E_FAIL, "first");
    access.GetInteger("absent", integer);
    KORError::KORSetLastError(E_FAIL, "second");
    access.GetInteger("b", integer);
    KORError::KORSetLastError(E_FAIL, "third");
    VYXPropertyAccess().GetInteger("b", integer);
    access.GetInteger("absent", integer);
  });
  EXPECT_EQ(integer, 99);
  const auto trace = FailureReturnIn("VYXPropertyTree/");
  EXPECT_THAT(lines, ElementsAre(Line("ERROR", "first"), trace, Detail("Key 'absent' not found"),
                                 Line("ERROR", "second"), trace, Detail("bad variant access"), Line("ERROR", "third"),
                                 trace, trace, Detail("Key 'absent' not found")));
}

TEST(VYXPropertyAccess, RemovesSilently) {
  VYXPropertyTree tree;
  const VYXPropertyAccess access = Inner(tree);
  access.SetBoolean("b", true);
  long codes[2] = {E_FAIL, E_FAIL};
  EXPECT_THAT(LinesOf([&] {
                codes[0] = access.RemoveKey("b");
                codes[1] = access.RemoveKey("b");
              }),
              IsEmpty());
  EXPECT_THAT(codes, ElementsAre(S_OK, S_OK));
  EXPECT_EQ(TextOf(tree), "{\"inner\":{}}");
}

TEST(VYXPropertyAccess, CopiesAsAPointerDoes) {
  EXPECT_TRUE(std::is_trivially_copyable_v<VYXPropertyAccess>);
  EXPECT_TRUE(std::is_trivially_copyable_v<VYXListAccess>);
  VYXPropertyTree tree;
  VYXPropertyAccess access = Inner(tree);
  VYXPropertyAccess copy(access);
  VYXPropertyAccess assigned;
  assigned = std::move(access);
  copy.SetBoolean("b", true);
  EXPECT_EQ(assigned.Stringify(), "{\"b\":true}");
  EXPECT_EQ(access.Stringify(), "{\"b\":true}");
}

TEST(VYXPropertyAccess, StaysValidWhileOtherKeysComeAndGo) {
  VYXPropertyTree tree;
  const VYXPropertyAccess access = Inner(tree);
  for (int index = 0; index < 10'000; ++index) {
    tree.SetInteger(std::to_string(index).c_str(), index);
  }
  for (int index = 0; index < 10'000; ++index) {
    tree.RemoveKey(std::to_string(index).c_str());
  }
  const VYXPropertyTree copy(tree);
  access.SetBoolean("b", true);
  EXPECT_EQ(TextOf(tree), "{\"inner\":{\"b\":true}}");
  EXPECT_EQ(TextOf(copy), "{\"inner\":{}}");
}

}  // namespace
}  // namespace VYX::Test
