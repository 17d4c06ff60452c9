#include <gtest/gtest.h>
#include <pthread.h>

#include <cstdint>
#include <string>
#include <utility>

#include "KORSysBase/KORResult.h"
#include "VYXIPropertyTreeVisitor.h"
#include "VYXListAccess.h"
#include "VYXPropertyAccess.h"
#include "VYXPropertyTree.h"
#include "tree_testing.h"

namespace VYX::Test {
namespace {

constexpr int kDepth = 1'000'000;

VYXPropertyTree NestedObjects() {
  VYXPropertyTree tree;
  for (int level = 0; level < kDepth; ++level) {
    VYXPropertyTree outer;
    outer.SetPropertyTree("k", std::move(tree));
    tree = std::move(outer);
  }
  return tree;
}

/// Objects and arrays in turn.
VYXPropertyTree NestedArrays() {
  VYXPropertyTree tree;
  for (int level = 0; level < kDepth / 2; ++level) {
    VYXPropertyTree outer;
    VYXListAccess list;
    outer.GetListAccess("k", list, true);
    list.AddPropertyTree(std::move(tree));
    tree = std::move(outer);
  }
  return tree;
}

class Ignoring : public VYXIPropertyTreeVisitor {
 public:
  ~Ignoring() override = default;
};

void DoEverythingWith(VYXPropertyTree iTree) {
  VYXPropertyTree copy(iTree);
  EXPECT_TRUE(copy == iTree);
  KORUnicodeString text;
  ASSERT_EQ(iTree.Stringify(text), S_OK);
  EXPECT_GE(text.GetLengthInByte(), static_cast<std::size_t>(kDepth));
  ASSERT_EQ(VYXPropertyTreeUtils::StringifyStrict(iTree, text), S_OK);
  EXPECT_GE(text.GetLengthInByte(), static_cast<std::size_t>(kDepth));
  VYXPropertyTree assigned;
  assigned = copy;
  assigned.SetPropertyTree("copy", copy);
  Ignoring visitor;
  EXPECT_EQ(assigned.Traverse(visitor), S_OK);
  VYXPropertyTree read;
  EXPECT_EQ(assigned.GetPropertyTree("copy", read), S_OK);
  EXPECT_TRUE(read == iTree);
  EXPECT_EQ(assigned.RemoveKey("copy"), S_OK);
  EXPECT_EQ(assigned.SetBoolean("k", true), S_OK);
  VYXPropertyTree moved(std::move(copy));
  moved = VYXPropertyTree();
}

TEST(DeepNesting, OfObjectsIsSafeInEveryOperation) {
  DoEverythingWith(NestedObjects());
}

TEST(DeepNesting, OfArraysIsSafeInEveryOperation) {
  DoEverythingWith(NestedArrays());
}

TEST(DeepNesting, DiffersAtTheBottom) {
  const VYXPropertyTree tree = NestedObjects();
  VYXPropertyTree other(tree);
  VYXPropertyAccess access;
  ASSERT_EQ(other.GetPropertyAccess("k", access, false), S_OK);
  while (access.HasKey("k")) {
    ASSERT_EQ(access.GetPropertyAccess("k", access, false), S_OK);
  }
  access.SetBoolean("k", true);
  EXPECT_FALSE(tree == other);
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::size_t kSmallStack = 512 * 1024;  // a sanitizer takes its part
#else
constexpr std::size_t kSmallStack = 128 * 1024;
#endif

TEST(DeepNesting, NeedsNoMoreThanASmallStack) {
  pthread_attr_t attributes;
  ASSERT_EQ(::pthread_attr_init(&attributes), 0);
  ASSERT_EQ(::pthread_attr_setstacksize(&attributes, kSmallStack), 0);
  pthread_t thread;
  const auto work = [](void*) -> void* {
    DoEverythingWith(NestedObjects());
    DoEverythingWith(NestedArrays());
    return nullptr;
  };
  ASSERT_EQ(::pthread_create(&thread, &attributes, work, nullptr), 0);
  ::pthread_join(thread, nullptr);
  ::pthread_attr_destroy(&attributes);
}

}  // namespace
}  // namespace VYX::Test
