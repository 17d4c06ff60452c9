#include "VYXListAccess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORResult.h"
#include "VYXPropertyAccess.h"
#include "VYXPropertyTree.h"
#include "tree_testing.h"

namespace VYX::Test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

VYXListAccess ListIn(VYXPropertyTree& ioTree) {
  VYXListAccess list;
  EXPECT_EQ(ioTree.GetListAccess("list", list, true), S_OK);
  return list;
}

std::uint64_t SizeOf(const VYXListAccess& iList) {
  std::uint64_t size = 99;
  EXPECT_EQ(iList.GetListSize(size), S_OK);
  return size;
}

VYXPropertyTree One(const char* iKey) {
  VYXPropertyTree tree;
  tree.SetInteger(iKey, 1);
  return tree;
}

TEST(VYXListAccess, GrowsFromNothing) {
  VYXPropertyTree tree;
  const VYXListAccess list = ListIn(tree);
  EXPECT_EQ(SizeOf(list), 0U);
  EXPECT_EQ(list.AddInteger(7), S_OK);
  EXPECT_EQ(SizeOf(list), 1U);
  double number = 0;
  EXPECT_EQ(list.GetDouble(0, number), S_OK);
  EXPECT_EQ(number, 7.0);
}

TEST(VYXListAccess, AppendsAndReplacesEveryKind) {
  VYXPropertyTree tree;
  const VYXListAccess list = ListIn(tree);
  const KORUnicodeString text("copied");
  const VYXPropertyTree copied = One("c");
  EXPECT_EQ(list.AddBoolean(true), S_OK);
  EXPECT_EQ(list.AddDouble(0.5), S_OK);
  EXPECT_EQ(list.AddInteger(-2), S_OK);
  EXPECT_EQ(list.AddString(text), S_OK);
  EXPECT_EQ(list.AddString("moved"), S_OK);
  EXPECT_EQ(list.AddPropertyTree(copied), S_OK);
  EXPECT_EQ(list.AddPropertyTree(One("m")), S_OK);
  EXPECT_EQ(list.Stringify(), "[true,0.5,-2,\"copied\",\"moved\",{\"c\":1},{\"m\":1}]");
  EXPECT_EQ(list.SetPropertyTree(0, One("m")), S_OK);
  EXPECT_EQ(list.SetPropertyTree(1, copied), S_OK);
  EXPECT_EQ(list.SetString(2, "moved"), S_OK);
  EXPECT_EQ(list.SetString(3, text), S_OK);
  EXPECT_EQ(list.SetInteger(4, -2), S_OK);
  EXPECT_EQ(list.SetDouble(5, 0.5), S_OK);
  EXPECT_EQ(list.SetBoolean(6, true), S_OK);
  EXPECT_EQ(TextOf(tree), "{\"list\":[{\"m\":1},{\"c\":1},\"moved\",\"copied\",-2,0.5,true]}");
}

/// Every operation on the element at an index, with whether it read anything.
struct ElementOperation {
  json::Kind reads;  // Null for those that replace whatever is there
  std::function<long(const VYXListAccess&, std::uint64_t, bool& oTouched)> run;
};

std::vector<ElementOperation> ElementOperations() {
  using List = const VYXListAccess&;
  return {
      {json::Kind::Boolean,
       [](List iList, std::uint64_t iIndex, bool& oTouched) { return iList.GetBoolean(iIndex, oTouched); }},
      {json::Kind::Number,
       [](List iList, std::uint64_t iIndex, bool& oTouched) {
         double value = 99;
         const long code = iList.GetDouble(iIndex, value);
         oTouched = value != 99;
         return code;
       }},
      {json::Kind::Number,
       [](List iList, std::uint64_t iIndex, bool& oTouched) {
         std::int64_t value = 99;
         const long code = iList.GetInteger(iIndex, value);
         oTouched = value != 99;
         return code;
       }},
      {json::Kind::Number,
       [](List iList, std::uint64_t iIndex, bool& oTouched) {
         std::int64_t value = 99;
         const long code = iList.GetExactInteger(iIndex, value);
         oTouched = value != 99;
         return code;
       }},
      {json::Kind::String,
       [](List iList, std::uint64_t iIndex, bool& oTouched) {
         KORUnicodeString value("before");
         const long code = iList.GetString(iIndex, value);
         oTouched = value != "before";
         return code;
       }},
      {json::Kind::Object,
       [](List iList, std::uint64_t iIndex, bool& oTouched) {
         VYXPropertyTree value;
         const long code = iList.GetPropertyTree(iIndex, value);
         oTouched = TextOf(value) != "{}";
         return code;
       }},
      {json::Kind::Object,
       [](List iList, std::uint64_t iIndex, bool& oTouched) {
         VYXPropertyAccess value;
         const long code = iList.GetPropertyAccess(iIndex, value);
         oTouched = value.Stringify() != "null";
         return code;
       }},
      {json::Kind::Array,
       [](List iList, std::uint64_t iIndex, bool& oTouched) {
         VYXListAccess value;
         const long code = iList.GetListAccess(iIndex, value);
         oTouched = value.Stringify() != "null";
         return code;
       }},
      {json::Kind::Null, [](List iList, std::uint64_t iIndex, bool&) { return iList.SetBoolean(iIndex, true); }},
      {json::Kind::Null, [](List iList, std::uint64_t iIndex, bool&) { return iList.SetDouble(iIndex, 1.5); }},
      {json::Kind::Null, [](List iList, std::uint64_t iIndex, bool&) { return iList.SetInteger(iIndex, 1); }},
      {json::Kind::Null, [](List iList, std::uint64_t iIndex, bool&) { return iList.SetString(iIndex, "x"); }},
      {json::Kind::Null,
       [](List iList, std::uint64_t iIndex, bool&) { return iList.SetPropertyTree(iIndex, VYXPropertyTree()); }},
  };
}

json::Value AllKinds() {
  return ArrayOf(json::Value(), json::Value(true), json::Value(1.0), Text("t"), ArrayOf(json::Value()),
                 ObjectOf({{"x", 1}}));
}

TEST(VYXListAccess, ReadsTheElementsOwnAlternativeOnly) {
  for (const ElementOperation& operation : ElementOperations()) {
    for (std::uint64_t index = 0; index < 6; ++index) {
      VYXPropertyTree tree;
      Put(tree, "list", AllKinds());
      const VYXListAccess list = ListIn(tree);
      const bool fits = operation.reads == json::Kind::Null || static_cast<std::uint64_t>(operation.reads) == index;
      bool isTouched = false;
      long code = S_OK;
      const auto lines = LinesOf([&] { code = operation.run(list, index, isTouched); });
      EXPECT_EQ(code, fits ? S_OK : E_FAIL);
      EXPECT_EQ(isTouched, fits && operation.reads != json::Kind::Null);
      if (fits) {
        EXPECT_THAT(lines, IsEmpty());
      } else {
        EXPECT_THAT(lines, ElementsAre(FailureReturnIn("VYXPropertyTree/VYXListAccess"), Detail("bad variant access")));
      }
    }
  }
}

TEST(VYXListAccess, ChecksTheIndex) {
  for (const ElementOperation& operation : ElementOperations()) {
    for (const std::uint64_t index : {std::uint64_t{1}, std::uint64_t{2}, ~std::uint64_t{0}}) {
      VYXPropertyTree tree;
      Put(tree, "list", ArrayOf(json::Value(true)));
      const VYXListAccess list = ListIn(tree);
      bool isTouched = false;
      long code = S_OK;
      const auto lines = LinesOf([&] { code = operation.run(list, index, isTouched); });
      EXPECT_EQ(code, E_FAIL);
      EXPECT_FALSE(isTouched);
      EXPECT_THAT(lines,
                  ElementsAre(FailureReturnIn("VYXPropertyTree/VYXListAccess"), Detail("invalid vector subscript")));
      EXPECT_EQ(TextOf(tree), "{\"list\":[true]}");
    }
  }
}

std::vector<std::function<long(const VYXListAccess&)>> ListOperations() {
  using List = const VYXListAccess&;
  std::vector<std::function<long(List)>> operations = {
      [](List iList) {
        std::uint64_t size;
        return iList.GetListSize(size);
      },
      [](List iList) { return iList.AddBoolean(true); },
      [](List iList) { return iList.AddDouble(1); },
      [](List iList) { return iList.AddInteger(1); },
      [](List iList) { return iList.AddString("x"); },
      [](List iList) { return iList.AddPropertyTree(VYXPropertyTree()); },
  };
  for (const ElementOperation& element : ElementOperations()) {
    operations.push_back([element](List iList) {
      bool isTouched = false;
      return element.run(iList, 0, isTouched);
    });
  }
  return operations;
}

TEST(VYXListAccess, OfNothingFails) {
  for (const auto& operation : ListOperations()) {
    long code = S_OK;
    EXPECT_THAT(LinesOf([&] { code = operation(VYXListAccess()); }),
                ElementsAre(FailureReturnIn("VYXPropertyTree/VYXListAccess")));
    EXPECT_EQ(code, E_FAIL);
  }
  EXPECT_EQ(VYXListAccess().Stringify(), "null");
}

TEST(VYXListAccess, OfAnotherKindFails) {
  VYXPropertyTree tree;
  const VYXListAccess list = ListIn(tree);
  tree.SetBoolean("list", true);
  for (const auto& operation : ListOperations()) {
    long code = S_OK;
    EXPECT_THAT(LinesOf([&] { code = operation(list); }),
                ElementsAre(FailureReturnIn("VYXPropertyTree/VYXListAccess"), Detail("bad variant access")));
    EXPECT_EQ(code, E_FAIL);
  }
  EXPECT_EQ(list.Stringify(), "true");
}

TEST(VYXListAccess, RefusesATreeWithoutRoot) {
  VYXPropertyTree tree;
  const VYXListAccess list = ListIn(tree);
  list.AddInteger(1);
  VYXPropertyTree rootless = RootlessTree();
  long codes[4] = {};
  const auto lines = LinesOf([&] {
    codes[0] = list.AddPropertyTree(rootless);
    codes[1] = list.SetPropertyTree(0, rootless);
    codes[2] = list.AddPropertyTree(std::move(rootless));
    codes[3] = list.SetPropertyTree(0, std::move(rootless));
  });
  EXPECT_THAT(codes, ElementsAre(E_FAIL, E_FAIL, E_FAIL, E_FAIL));
  const auto trace = FailureReturnIn("VYXPropertyTree/VYXListAccess");
  EXPECT_THAT(lines, ElementsAre(trace, trace, trace, trace));
  EXPECT_EQ(list.Stringify(), "[1]");
}

TEST(VYXListAccess, LeavesRvaluesAloneOnFailure) {
  VYXPropertyTree tree;
  const VYXListAccess list = ListIn(tree);
  KORUnicodeString text("text");
  VYXPropertyTree moved = One("x");
  LinesOf([&] {
    list.SetString(0, std::move(text));
    list.SetPropertyTree(0, std::move(moved));
    VYXListAccess().AddString(std::move(text));
    VYXListAccess().AddPropertyTree(std::move(moved));
  });
  EXPECT_EQ(text, "text");
  EXPECT_EQ(TextOf(moved), "{\"x\":1}");
}

TEST(VYXListAccess, GetIntegerReportsThePendingError) {
  VYXPropertyTree tree;
  const VYXListAccess list = ListIn(tree);
  std::int64_t integer = 99;
  const auto lines = LinesOf([&] {
    KORError::KORSetLastError(E_FAIL, "first");
    VYXListAccess().GetInteger(0, integer);
    KORError::KORSetLastError(E_FAIL, "second");
    list.GetInteger(0, integer);
    list.GetInteger(0, integer);
  });
  const auto trace = FailureReturnIn("VYXPropertyTree/VYXListAccess");
  EXPECT_THAT(lines, ElementsAre(Line("ERROR", "first"), trace, Line("ERROR", "second"), trace,
                                 Detail("invalid vector subscript"), trace, Detail("invalid vector subscript")));
  EXPECT_EQ(integer, 99);
}

TEST(VYXListAccess, ReachesWhatIsNested) {
  VYXPropertyTree tree;
  Put(tree, "list", ArrayOf(ArrayOf(ArrayOf(json::Value(-2.7))), ObjectOf({{"x", 1}})));
  VYXListAccess list = ListIn(tree);
  VYXPropertyAccess access;
  ASSERT_EQ(list.GetPropertyAccess(1, access), S_OK);
  EXPECT_EQ(access.SetInteger("x", 2), S_OK);
  ASSERT_EQ(list.GetListAccess(0, list), S_OK);
  ASSERT_EQ(list.GetListAccess(0, list), S_OK);
  std::int64_t integer = 0;
  EXPECT_EQ(list.GetInteger(0, integer), S_OK);
  EXPECT_EQ(integer, -2);
  EXPECT_EQ(list.AddBoolean(false), S_OK);
  EXPECT_EQ(TextOf(tree), "{\"list\":[[[-2.7000000000000002,false]],{\"x\":2}]}");
}

TEST(VYXListAccess, AppendsATreeThatHoldsIt) {
  VYXPropertyTree tree;
  const VYXListAccess list = ListIn(tree);
  EXPECT_EQ(list.AddPropertyTree(tree), S_OK);
  EXPECT_EQ(list.SetPropertyTree(0, tree), S_OK);
  EXPECT_EQ(TextOf(tree), "{\"list\":[{\"list\":[{\"list\":[]}]}]}");
}

}  // namespace
}  // namespace VYX::Test
