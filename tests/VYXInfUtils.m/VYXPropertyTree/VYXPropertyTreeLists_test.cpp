#include "VYXPropertyTreeLists.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>
#include <vector>

#include "tree_testing.h"

namespace VYX::Test {
namespace {

template <class List, class T>
List ListOf(std::initializer_list<T> iElements) {
  List list;
  for (const T& element : iElements) {
    list.Append(element);
  }
  return list;
}

VYXPropertyTree Tree(const char* iFirst, const char* iSecond) {
  VYXPropertyTree tree;
  tree.SetString(iFirst, iFirst);
  tree.SetString(iSecond, iSecond);
  return tree;
}

TEST(Lists, ElementTypes) {
  EXPECT_TRUE((std::is_same_v<vyx_bool, bool>));
  EXPECT_TRUE((std::is_same_v<vyx_int64_t, std::int64_t>));
  EXPECT_TRUE((std::is_same_v<decltype(KORListValvyx_bool() != KORListValvyx_bool()), int>));
}

TEST(Lists, AreEmptyWithWhateverHints) {
  EXPECT_EQ(KORListValvyx_bool().Size(), 0);
  EXPECT_EQ(KORListValvyx_int64_t(10).Size(), 0);
  EXPECT_EQ(KORListValVYXPropertyTree(10, 5).Size(), 0);
  EXPECT_EQ(KORListValVYXPropertyTree(-1, -1).Size(), 0);
}

TEST(Lists, LocateFromAStart) {
  const auto list = ListOf<KORListValvyx_bool>({true, true});
  EXPECT_EQ(list.Locate(true, 1), 1);
  EXPECT_EQ(list.Locate(true, 2), 2);
  EXPECT_EQ(list.Locate(true, 3), 0);
  EXPECT_EQ(list.Locate(false, 1), 0);
}

TEST(Lists, RemoveTheFirstEqualElement) {
  auto list = ListOf<KORListValvyx_int64_t, std::int64_t>({5, 7, 5});
  EXPECT_EQ(list.RemoveValue(5), 1);
  EXPECT_EQ(list.RemoveValue(9), 0);
  ASSERT_EQ(list.Size(), 2);
  EXPECT_EQ(list[1], 7);
  EXPECT_EQ(list[2], 5);
  list.RemovePosition(1);
  ASSERT_EQ(list.Size(), 1);
  EXPECT_EQ(list[1], 5);
  list.RemoveAll(KORCollec::MemoryHandling::ReleaseMemory);
  EXPECT_EQ(list.Size(), 0);
}

TEST(Lists, AssignToThemselvesAndToOthers) {
  auto list = ListOf<KORListValvyx_int64_t, std::int64_t>({1, 2});
  const auto& same = list;
  list = same;
  EXPECT_EQ(list.Size(), 2);
  KORListValvyx_int64_t other = ListOf<KORListValvyx_int64_t, std::int64_t>({9});
  other = list;
  EXPECT_TRUE(other == list);
  other[1] = 3;
  EXPECT_EQ(list[1], 1);
  EXPECT_EQ(other != list, 1);
  EXPECT_EQ(other == list, 0);
}

TEST(Lists, CompareElementByElement) {
  const auto one = ListOf<KORListValvyx_bool>({true});
  const auto two = ListOf<KORListValvyx_bool>({true, false});
  EXPECT_EQ(one != two, 1);
  EXPECT_EQ(two != two, 0);
  EXPECT_EQ(two == ListOf<KORListValvyx_bool>({true, false}), 1);
}

TEST(Lists, OfTreesCompareMembers) {
  const auto left = ListOf<KORListValVYXPropertyTree>({Tree("a", "b"), Tree("c", "d")});
  const auto right = ListOf<KORListValVYXPropertyTree>({Tree("b", "a"), Tree("d", "c")});
  EXPECT_EQ(left == right, 1);
  EXPECT_EQ(left.Locate(Tree("d", "c"), 1), 2);
}

TEST(Lists, OfTreesCopyDeeply) {
  auto list = ListOf<KORListValVYXPropertyTree>({Tree("a", "b")});
  KORListValVYXPropertyTree copy(list);
  copy[1].SetBoolean("a", true);
  EXPECT_EQ(TextOf(list[1]), "{\"a\":\"a\",\"b\":\"b\"}");
  EXPECT_EQ(TextOf(copy[1]), "{\"a\":true,\"b\":\"b\"}");
}

TEST(Lists, FillArrays) {
  const auto list = ListOf<KORListValVYXPropertyTree>({Tree("a", "b"), Tree("c", "d")});
  std::vector<VYXPropertyTree> trees(2);
  list.Array(trees.data());
  EXPECT_EQ(TextOf(trees[0]), "{\"a\":\"a\",\"b\":\"b\"}");
  EXPECT_EQ(TextOf(trees[1]), "{\"c\":\"c\",\"d\":\"d\"}");
  std::int64_t numbers[3] = {};
  ListOf<KORListValvyx_int64_t, std::int64_t>({1, 2, 3}).Array(numbers);
  EXPECT_EQ(numbers[2], 3);
}

}  // namespace
}  // namespace VYX::Test
