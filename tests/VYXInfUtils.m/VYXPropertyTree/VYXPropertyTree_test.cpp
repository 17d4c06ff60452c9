#include "VYXPropertyTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>

#include "KORSysBase/KORResult.h"
#include "VYXPropertyAccess.h"
#include "VYXPropertyTreeLists.h"
#include "tree_testing.h"

namespace VYX::Test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

VYXPropertyTree Sample() {
  VYXPropertyTree inner;
  inner.SetString("text", "inside");
  VYXPropertyTree tree;
  tree.SetPropertyTree("inner", inner);
  tree.SetInteger("n", 1);
  Put(tree, "list", ArrayOf(json::Value(1.0), ObjectOf({{"deep", 2}})));
  return tree;
}

constexpr const char* kSampleText = "{\"inner\":{\"text\":\"inside\"},\"list\":[1,{\"deep\":2}],\"n\":1}";

TEST(VYXPropertyTree, IsOnePointer) {
  EXPECT_EQ(sizeof(VYXPropertyTree), sizeof(void*));
  EXPECT_TRUE(std::is_nothrow_move_constructible_v<VYXPropertyTree>);
  EXPECT_TRUE(std::is_nothrow_move_assignable_v<VYXPropertyTree>);
}

TEST(VYXPropertyTree, CopiesDeeply) {
  VYXPropertyTree source = Sample();
  VYXPropertyTree copy(source);
  VYXPropertyTree assigned;
  assigned.SetBoolean("old", true);
  assigned = source;
  VYXPropertyAccess inner;
  ASSERT_EQ(source.GetPropertyAccess("inner", inner, false), S_OK);
  inner.SetString("text", "changed");
  EXPECT_EQ(TextOf(copy), kSampleText);
  EXPECT_EQ(TextOf(assigned), kSampleText);
  EXPECT_NE(TextOf(source), kSampleText);
}

TEST(VYXPropertyTree, AssignsToItself) {
  VYXPropertyTree tree = Sample();
  VYXPropertyTree& same = tree;
  tree = same;
  EXPECT_EQ(TextOf(tree), kSampleText);
  tree = std::move(same);
  EXPECT_EQ(TextOf(tree), kSampleText);
}

TEST(VYXPropertyTree, MovesLeaveAValidEmptyTree) {
  VYXPropertyTree source = Sample();
  VYXPropertyTree target;
  target.SetBoolean("old", true);
  target = std::move(source);
  EXPECT_EQ(TextOf(source), "{}");
  EXPECT_EQ(TextOf(target), kSampleText);
  EXPECT_EQ(source.SetBoolean("again", true), S_OK);
  VYXPropertyTree constructed(std::move(target));
  EXPECT_EQ(TextOf(target), "{}");
  EXPECT_EQ(TextOf(constructed), kSampleText);
}

TEST(VYXPropertyTree, MovesKeepViews) {
  VYXPropertyTree source = Sample();
  VYXPropertyAccess inner;
  ASSERT_EQ(source.GetPropertyAccess("inner", inner, false), S_OK);
  VYXPropertyTree target(std::move(source));
  inner.SetString("text", "seen");
  EXPECT_EQ(TextOf(target), "{\"inner\":{\"text\":\"seen\"},\"list\":[1,{\"deep\":2}],\"n\":1}");
}

TEST(VYXPropertyTree, EqualityIgnoresTheOrderOfSetting) {
  VYXPropertyTree first;
  first.SetBoolean("b", true);
  first.SetBoolean("a", true);
  VYXPropertyTree second;
  second.SetBoolean("a", true);
  second.SetBoolean("b", true);
  EXPECT_TRUE(first == second);
  EXPECT_FALSE(first != second);
  KORListValKORUnicodeString keys;
  EXPECT_EQ(first.GetKeys(keys), S_OK);
  EXPECT_THAT(keys, ElementsAre(KORUnicodeString("a"), KORUnicodeString("b")));
}

TEST(VYXPropertyTree, EqualityIsThatOfTheText) {
  const auto tree = [](auto&& iSet) {
    VYXPropertyTree made;
    iSet(made);
    return made;
  };
  const VYXPropertyTree integer = tree([](VYXPropertyTree& o) { o.SetInteger("k", 1); });
  EXPECT_TRUE(integer == tree([](VYXPropertyTree& o) { o.SetDouble("k", 1.0); }));
  EXPECT_FALSE(integer == tree([](VYXPropertyTree& o) { o.SetString("k", "1"); }));
  EXPECT_FALSE(integer == tree([](VYXPropertyTree& o) { o.SetBoolean("k", true); }));
  EXPECT_FALSE(integer == tree([](VYXPropertyTree& o) { o.SetInteger("K", 1); }));
  EXPECT_FALSE(integer == VYXPropertyTree());
  EXPECT_TRUE(tree([](VYXPropertyTree& o) { o.SetStringList("k", KORListValKORUnicodeString()); }) ==
              tree([](VYXPropertyTree& o) { o.SetDoubleList("k", KORRawColldouble()); }));
  EXPECT_FALSE(tree([](VYXPropertyTree& o) { o.SetDouble("k", 0.0); }) ==
               tree([](VYXPropertyTree& o) { o.SetDouble("k", -0.0); }));
}

TEST(VYXPropertyTree, WithoutRootEqualsAnything) {
  const VYXPropertyTree tree = Sample();
  const VYXPropertyTree rootless = RootlessTree();
  bool areEqual[3] = {};
  const auto lines = LinesOf([&] {
    areEqual[0] = rootless == tree;
    areEqual[1] = tree == rootless;
    areEqual[2] = !(tree != rootless);
  });
  EXPECT_TRUE(areEqual[0] && areEqual[1] && areEqual[2]);
  EXPECT_THAT(lines, ElementsAre(FailureReturnIn("VYXPropertyTree"), FailureReturnIn("VYXPropertyTree"),
                                 FailureReturnIn("VYXPropertyTree")));
}

TEST(VYXPropertyTree, WithoutRootCopiesAndRecovers) {
  VYXPropertyTree rootless = RootlessTree();
  VYXPropertyTree copy(rootless);
  EXPECT_EQ(Internal::TreeAccess::Root(copy), nullptr);
  VYXPropertyTree moved(std::move(rootless));
  EXPECT_EQ(Internal::TreeAccess::Root(moved), nullptr);
  EXPECT_EQ(TextOf(rootless), "{}");
  copy = Sample();
  EXPECT_EQ(TextOf(copy), kSampleText);
  copy = moved;
  EXPECT_EQ(Internal::TreeAccess::Root(copy), nullptr);
}

TEST(VYXPropertyTree, RemoveKeyOfAMissingKeyFails) {
  VYXPropertyTree tree = Sample();
  long codes[2] = {};
  const auto lines = LinesOf([&] {
    codes[0] = tree.RemoveKey("n");
    codes[1] = tree.RemoveKey("n");
  });
  EXPECT_EQ(codes[0], S_OK);
  EXPECT_EQ(codes[1], E_FAIL);
  EXPECT_THAT(lines, ElementsAre(FailureReturnIn("VYXPropertyTree"), Detail("Key 'n' not found")));
  EXPECT_EQ(TextOf(tree), "{\"inner\":{\"text\":\"inside\"},\"list\":[1,{\"deep\":2}]}");
}

TEST(VYXPropertyTree, RemoveKeyWithoutRootAsksHasKeyFirst) {
  VYXPropertyTree tree = RootlessTree();
  long code = S_OK;
  const auto lines = LinesOf([&] { code = tree.RemoveKey("n"); });
  EXPECT_EQ(code, E_FAIL);
  EXPECT_THAT(lines, ElementsAre(FailureReturnIn("VYXPropertyTree/member_kinds"),
                                 FailureReturnIn("VYXPropertyTree/VYXPropertyTree"), Detail("Key 'n' not found")));
}

TEST(VYXPropertyTree, TracesNothingWhenErrorsAreFiltered) {
  const ConsoleLevel level(0);
  VYXPropertyTree tree;
  bool value = false;
  long code = S_OK;
  EXPECT_THAT(LinesOf([&] { code = tree.GetBoolean("k", value); }), IsEmpty());
  EXPECT_EQ(code, E_FAIL);
}

}  // namespace
}  // namespace VYX::Test
