#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <string>
#include <utility>

#include "KORSysBase/KORResult.h"
#include "VYXListAccess.h"
#include "VYXPropertyAccess.h"
#include "VYXPropertyTree.h"
#include "VYXPropertyTreeLists.h"
#include "support/limited_memory.h"
#include "tree_testing.h"

namespace VYX::Test {
namespace {

constexpr const char* kLong = "a text that is too long to stand in the object itself";

VYXPropertyTree Sample() {
  VYXPropertyTree tree;
  tree.SetString(kLong, kLong);
  for (int index = 0; index < 600; ++index) {
    tree.SetInteger(("key " + std::to_string(index)).c_str(), index);
  }
  Put(tree, "list", ArrayOf(Text(kLong), ArrayOf(ObjectOf({{kLong, 1}}), Text(kLong)), ObjectOf({{"x", 1}})));
  return tree;
}

/// Runs an operation with 0, 1, 2, ... allocations until it succeeds; after each failure iCheck looks at what is left.
void ExpectStrong(const std::function<bool()>& iOperation, const std::function<void()>& iCheck) {
  const ConsoleLevel silent(0);
  for (long allowed = 0; allowed < 5000; ++allowed) {
    AllowAllocations(allowed);
    const bool isDone = iOperation();
    AllowAllocations(kUnlimited);
    if (isDone) {
      EXPECT_GT(allowed, 0);
      return;
    }
    iCheck();
  }
  FAIL() << "never succeeded";
}

template <class Operation>
bool Succeeds(Operation&& iOperation) {
  try {
    iOperation();
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

TEST(OutOfMemory, DefaultTreesHaveNoRoot) {
  AllowAllocations(0);
  VYXPropertyTree tree;
  VYXPropertyTree moved(std::move(tree));
  AllowAllocations(kUnlimited);
  EXPECT_EQ(Internal::TreeAccess::Root(tree), nullptr);
  EXPECT_EQ(Internal::TreeAccess::Root(moved), nullptr);
}

TEST(OutOfMemory, CopiesAreWholeOrNotMade) {
  const VYXPropertyTree source = Sample();
  const std::string text = TextOf(source);
  VYXPropertyTree target;
  target.SetBoolean("old", true);
  ExpectStrong([&] { return Succeeds([&] { target = source; }); },
               [&] { ASSERT_EQ(TextOf(target), "{\"old\":true}"); });
  EXPECT_EQ(TextOf(target), text);
  EXPECT_EQ(TextOf(source), text);
}

TEST(OutOfMemory, SettersLeaveTheTreeAsItWas) {
  const KORUnicodeString key("a new key that is too long for the object");
  const KORUnicodeString text(kLong);
  const VYXPropertyTree inner = Sample();
  KORListValVYXPropertyTree trees;
  trees.Append(inner);
  KORUnicodeString movedText(kLong);
  VYXPropertyTree movedTree = inner;
  const std::function<long(VYXPropertyTree&)> setters[] = {
      [&](VYXPropertyTree& o) { return o.SetBoolean(key, true); },
      [&](VYXPropertyTree& o) { return o.SetString(key, text); },
      [&](VYXPropertyTree& o) { return o.SetString(key, std::move(movedText)); },
      [&](VYXPropertyTree& o) { return o.SetPropertyTree(key, inner); },
      [&](VYXPropertyTree& o) { return o.SetPropertyTree(key, std::move(movedTree)); },
      [&](VYXPropertyTree& o) { return o.SetPropertyTreeList(key, trees); },
  };
  for (const auto& setter : setters) {
    for (const int size : {0, 512}) {
      movedText = text;
      movedTree = inner;
      VYXPropertyTree tree;
      for (int index = 0; index < size; ++index) {
        tree.SetInteger(std::to_string(index).c_str(), index);
      }
      const std::string before = TextOf(tree);
      ExpectStrong([&] { return setter(tree) == S_OK; },
                   [&] {
                     ASSERT_EQ(TextOf(tree), before);
                     ASSERT_EQ(movedText, text);
                     ASSERT_FALSE(TextOf(movedTree) == "{}");
                   });
      EXPECT_TRUE(tree.HasKey(key));
    }
  }
}

TEST(OutOfMemory, ListViewsLeaveTheArrayAsItWas) {
  VYXPropertyTree tree;
  VYXListAccess list;
  ASSERT_EQ(tree.GetListAccess("list", list, true), S_OK);
  for (int index = 0; index < 4; ++index) {
    list.AddInteger(index);
  }
  KORUnicodeString text(kLong);
  ExpectStrong([&] { return list.AddString(std::move(text)) == S_OK; },
               [&] {
                 ASSERT_EQ(text, kLong);
                 ASSERT_EQ(list.Stringify(), "[0,1,2,3]");
               });
  VYXPropertyTree inner = Sample();
  ExpectStrong([&] { return list.SetPropertyTree(0, std::as_const(inner)) == S_OK; },
               [&] { ASSERT_TRUE(list.Stringify().ToStringView().starts_with("[0,1,2,3,")); });
}

TEST(OutOfMemory, ReadingAndWritingFailCleanly) {
  const VYXPropertyTree tree = Sample();
  VYXPropertyTree outer;
  outer.SetPropertyTree("inner", tree);
  VYXPropertyTree read;
  read.SetBoolean("old", true);
  ExpectStrong([&] { return outer.GetPropertyTree("inner", read) == S_OK; },
               [&] { ASSERT_EQ(TextOf(read), "{\"old\":true}"); });
  KORUnicodeString text("before");
  ExpectStrong([&] { return tree.Stringify(text) == S_OK; }, [&] { ASSERT_EQ(text, "before"); });
  const VYXPropertyTree copy(tree);
  ExpectStrong([&] { return tree == copy; }, [] {});
}

TEST(OutOfMemory, ParsingKeepsWhatWasStored) {
  const KORUnicodeString text("{\"a\":[1,[2,{\"x\":\"y\"}]],\"b\":{\"c\":[{\"d\":[\"e\"]}]},\"f\":[true,false]}");
  VYXPropertyTree whole;
  ASSERT_EQ(whole.Parse(text), S_OK);
  VYXPropertyTree tree;
  ExpectStrong(
      [&] {
        tree = VYXPropertyTree();
        return Internal::TreeAccess::Root(tree) != nullptr && tree.Parse(text) == S_OK;
      },
      [] {});
  EXPECT_TRUE(tree == whole);
}

}  // namespace
}  // namespace VYX::Test
