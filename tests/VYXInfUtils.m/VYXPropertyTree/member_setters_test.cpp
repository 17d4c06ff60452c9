#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "KORSysBase/KORResult.h"
#include "VYXPropertyAccess.h"
#include "VYXPropertyTree.h"
#include "VYXPropertyTreeLists.h"
#include "tree_testing.h"

namespace VYX::Test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

VYXPropertyTree One(const char* iKey) {
  VYXPropertyTree tree;
  tree.SetInteger(iKey, 1);
  return tree;
}

template <class List, class... Elements>
List ListOf(Elements&&... iElements) {
  List list;
  (list.Append(std::forward<Elements>(iElements)), ...);
  return list;
}

/// A setter of a tree or a view with a fixed value, and the text of the member that it makes.
template <class Holder>
struct Setter {
  std::function<long(Holder&, const KORUnicodeString&)> set;
  const char* text;
};

template <class Holder>
std::vector<Setter<Holder>> Setters() {
  using Key = const KORUnicodeString&;
  return {
      {[](Holder& o, Key iKey) { return o.SetBoolean(iKey, true); }, "true"},
      {[](Holder& o, Key iKey) { return o.SetDouble(iKey, 2.5); }, "2.5"},
      {[](Holder& o, Key iKey) { return o.SetInteger(iKey, -3); }, "-3"},
      {[](Holder& o, Key iKey) { return o.SetInteger(iKey, std::int64_t{9007199254740993}); }, "9007199254740992"},
      {[](Holder& o, Key iKey) { return o.SetString(iKey, "moved"); }, "\"moved\""},
      {[](Holder& o, Key iKey) {
         const KORUnicodeString text("copied");
         return o.SetString(iKey, text);
       },
       "\"copied\""},
      {[](Holder& o, Key iKey) { return o.SetPropertyTree(iKey, One("m")); }, "{\"m\":1}"},
      {[](Holder& o, Key iKey) {
         const VYXPropertyTree tree = One("c");
         return o.SetPropertyTree(iKey, tree);
       },
       "{\"c\":1}"},
      {[](Holder& o, Key iKey) { return o.SetBooleanList(iKey, ListOf<KORListValvyx_bool>(true, false)); },
       "[true,false]"},
      {[](Holder& o, Key iKey) { return o.SetDoubleList(iKey, ListOf<KORRawColldouble>(0.5, 1.0)); }, "[0.5,1]"},
      {[](Holder& o, Key iKey) {
         return o.SetIntegerList(iKey, ListOf<KORListValvyx_int64_t>(std::int64_t{7}, std::int64_t{-7}));
       },
       "[7,-7]"},
      {[](Holder& o, Key iKey) { return o.SetStringList(iKey, ListOf<KORListValKORUnicodeString>("a", "b")); },
       "[\"a\",\"b\"]"},
      {[](Holder& o, Key iKey) {
         const auto list = ListOf<KORListValKORUnicodeString>("c");
         return o.SetStringList(iKey, list);
       },
       "[\"c\"]"},
      {[](Holder& o, Key iKey) {
         return o.SetPropertyTreeList(iKey, ListOf<KORListValVYXPropertyTree>(One("x"), VYXPropertyTree()));
       },
       "[{\"x\":1},{}]"},
      {[](Holder& o, Key iKey) {
         const auto list = ListOf<KORListValVYXPropertyTree>(One("y"));
         return o.SetPropertyTreeList(iKey, list);
       },
       "[{\"y\":1}]"},
      {[](Holder& o, Key iKey) { return o.SetBooleanList(iKey, KORListValvyx_bool()); }, "[]"},
      {[](Holder& o, Key iKey) { return o.SetDoubleList(iKey, KORRawColldouble()); }, "[]"},
      {[](Holder& o, Key iKey) { return o.SetIntegerList(iKey, KORListValvyx_int64_t()); }, "[]"},
      {[](Holder& o, Key iKey) { return o.SetStringList(iKey, KORListValKORUnicodeString()); }, "[]"},
      {[](Holder& o, Key iKey) { return o.SetPropertyTreeList(iKey, KORListValVYXPropertyTree()); }, "[]"},
  };
}

TEST(Setters, InsertAndReplaceWhateverTheKeyHeld) {
  for (const auto& first : Setters<VYXPropertyTree>()) {
    for (const auto& second : Setters<VYXPropertyTree>()) {
      VYXPropertyTree tree;
      long codes[2] = {E_FAIL, E_FAIL};
      const auto lines = LinesOf([&] { codes[0] = first.set(tree, "k"); });
      EXPECT_EQ(codes[0], S_OK);
      EXPECT_THAT(lines, IsEmpty());
      EXPECT_EQ(TextOf(tree), std::string("{\"k\":") + first.text + "}");
      codes[1] = second.set(tree, "k");
      EXPECT_EQ(codes[1], S_OK);
      EXPECT_EQ(TextOf(tree), std::string("{\"k\":") + second.text + "}");
    }
  }
}

TEST(Setters, OfAViewDoTheSame) {
  for (const auto& setter : Setters<const VYXPropertyAccess>()) {
    VYXPropertyTree tree;
    VYXPropertyAccess access;
    ASSERT_EQ(tree.GetPropertyAccess("inner", access, true), S_OK);
    EXPECT_EQ(setter.set(access, "k"), S_OK);
    EXPECT_EQ(TextOf(tree), std::string("{\"inner\":{\"k\":") + setter.text + "}}");
  }
}

TEST(Setters, OfNothingFail) {
  for (const auto& setter : Setters<VYXPropertyTree>()) {
    VYXPropertyTree rootless = RootlessTree();
    long code = S_OK;
    EXPECT_THAT(LinesOf([&] { code = setter.set(rootless, "k"); }), ElementsAre(FailureReturnIn("VYXPropertyTree/")));
    EXPECT_EQ(code, E_FAIL);
  }
  for (const auto& setter : Setters<const VYXPropertyAccess>()) {
    const VYXPropertyAccess nothing;
    long code = S_OK;
    EXPECT_THAT(LinesOf([&] { code = setter.set(nothing, "k"); }), ElementsAre(FailureReturnIn("VYXPropertyTree/")));
    EXPECT_EQ(code, E_FAIL);
  }
}

TEST(Setters, RefuseATreeWithoutRoot) {
  VYXPropertyTree tree = One("k");
  VYXPropertyTree rootless = RootlessTree();
  KORListValVYXPropertyTree list = ListOf<KORListValVYXPropertyTree>(One("x"), rootless);
  long codes[4] = {};
  const auto lines = LinesOf([&] {
    codes[0] = tree.SetPropertyTree("k", rootless);
    codes[1] = tree.SetPropertyTree("k", std::move(rootless));
    codes[2] = tree.SetPropertyTreeList("k", list);
    codes[3] = tree.SetPropertyTreeList("k", std::move(list));
  });
  EXPECT_THAT(codes, ElementsAre(E_FAIL, E_FAIL, E_FAIL, E_FAIL));
  EXPECT_THAT(lines, ElementsAre(FailureReturnIn("VYXPropertyTree/"), FailureReturnIn("VYXPropertyTree/"),
                                 FailureReturnIn("VYXPropertyTree/"), FailureReturnIn("VYXPropertyTree/")));
  EXPECT_EQ(TextOf(tree), "{\"k\":1}");
}

TEST(Setters, TakeRvaluesOver) {
  VYXPropertyTree tree;
  KORUnicodeString text("a text too long to stand in the object itself");
  const char* const bytes = text.CastToCharPtr();
  ASSERT_EQ(tree.SetString("text", std::move(text)), S_OK);
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_EQ(Internal::TreeAccess::Root(tree)->Find("text")->GetString().CastToCharPtr(), bytes);
  VYXPropertyTree inner = One("x");
  VYXPropertyTree& same = inner;
  ASSERT_EQ(tree.SetPropertyTree("inner", std::move(inner)), S_OK);
  EXPECT_EQ(TextOf(same), "{}");
  auto strings = ListOf<KORListValKORUnicodeString>("a");
  ASSERT_EQ(tree.SetStringList("strings", std::move(strings)), S_OK);
  EXPECT_EQ(strings.Size(), 0);
  auto trees = ListOf<KORListValVYXPropertyTree>(One("y"));
  ASSERT_EQ(tree.SetPropertyTreeList("trees", std::move(trees)), S_OK);
  EXPECT_EQ(trees.Size(), 0);
}

TEST(Setters, LeaveRvaluesAloneOnFailure) {
  VYXPropertyTree rootless = RootlessTree();
  KORUnicodeString text("text");
  VYXPropertyTree tree = One("x");
  LinesOf([&] {
    rootless.SetString("k", std::move(text));
    rootless.SetPropertyTree("k", std::move(tree));
  });
  EXPECT_EQ(text, "text");
  EXPECT_EQ(TextOf(tree), "{\"x\":1}");
}

TEST(Setters, StoreATreeInItself) {
  VYXPropertyTree tree = One("x");
  ASSERT_EQ(tree.SetPropertyTree("copy", tree), S_OK);
  EXPECT_EQ(TextOf(tree), "{\"copy\":{\"x\":1},\"x\":1}");
  ASSERT_EQ(tree.SetPropertyTree("moved", std::move(tree)), S_OK);
  EXPECT_EQ(TextOf(tree), "{\"moved\":{\"copy\":{\"x\":1},\"x\":1}}");
  VYXPropertyAccess access;
  ASSERT_EQ(tree.GetPropertyAccess("moved", access, false), S_OK);
  ASSERT_EQ(access.SetPropertyTree("whole", tree), S_OK);
  EXPECT_EQ(access.Stringify(), "{\"copy\":{\"x\":1},\"whole\":{\"moved\":{\"copy\":{\"x\":1},\"x\":1}},\"x\":1}");
}

}  // namespace
}  // namespace VYX::Test
