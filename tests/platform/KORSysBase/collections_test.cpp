#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <numeric>
#include <string>
#include <utility>

#include "KORSysBase/KORListValKORUnicodeString.h"
#include "KORSysBase/KORRawCollPV.h"
#include "KORSysBase/KORRawColldouble.h"

namespace {

using ::testing::ElementsAre;

constexpr auto kKeep = KORCollec::MemoryHandling::KeepMemory;
constexpr auto kRelease = KORCollec::MemoryHandling::ReleaseMemory;

TEST(KORListValKORUnicodeString, PositionsBeginAtOne) {
  KORListValKORUnicodeString list;
  EXPECT_EQ(list.Size(), 0);
  list.Append("first");
  list.Append(KORUnicodeString("second"));
  EXPECT_EQ(list.Size(), 2);
  EXPECT_EQ(list[1], "first");
  EXPECT_EQ(list[2], "second");
  list[1] = "changed";
  EXPECT_EQ(std::as_const(list)[1], "changed");
}

TEST(KORListValKORUnicodeString, TakesAnArray) {
  const KORUnicodeString texts[] = {"a", "b", "c"};
  EXPECT_THAT(KORListValKORUnicodeString(texts, 3), ElementsAre("a", "b", "c"));
  EXPECT_THAT(KORListValKORUnicodeString(texts, 1), ElementsAre("a"));
  EXPECT_EQ(KORListValKORUnicodeString(texts, 0).Size(), 0);
  EXPECT_EQ(KORListValKORUnicodeString(texts, -1).Size(), 0);
  EXPECT_EQ(KORListValKORUnicodeString(nullptr, 0).Size(), 0);
}

TEST(KORListValKORUnicodeString, CopiesAreDeep) {
  KORListValKORUnicodeString list(4, 4);
  list.Append("a");
  KORListValKORUnicodeString copy(list);
  KORListValKORUnicodeString assigned;
  assigned = list;
  list[1] = "b";
  EXPECT_THAT(copy, ElementsAre("a"));
  EXPECT_THAT(assigned, ElementsAre("a"));
  EXPECT_TRUE(copy == assigned);
  EXPECT_FALSE(copy == list);
}

TEST(KORListValKORUnicodeString, TakesItsOwnElement) {
  KORListValKORUnicodeString list;
  list.Append("an element that lives in an allocation of its own");
  for (int count = 0; count < 20; ++count) {
    list.Append(list[1]);
  }
  EXPECT_EQ(list[21], list[1]);
}

TEST(KORListValKORUnicodeString, FindsAndRemovesValues) {
  const KORUnicodeString texts[] = {"a", "b", "a", "c"};
  KORListValKORUnicodeString list(texts, 4);
  EXPECT_EQ(list.Locate("a"), 1);
  EXPECT_EQ(list.Locate("a", 2), 3);
  EXPECT_EQ(list.Locate("a", 4), 0);
  EXPECT_EQ(list.Locate("A"), 0);
  EXPECT_EQ(list.RemoveValue("a"), 1);
  EXPECT_THAT(list, ElementsAre("b", "a", "c"));
  EXPECT_EQ(list.RemoveValue("z"), 0);
  EXPECT_EQ(list.RemoveValue(list[3]), 3);
  list.RemovePosition(1);
  EXPECT_THAT(list, ElementsAre("a"));
}

TEST(KORListValKORUnicodeString, RemoveAllEmptiesEitherWay) {
  for (const auto handling : {kKeep, kRelease}) {
    KORListValKORUnicodeString list;
    list.Append("a");
    list.RemoveAll(handling);
    EXPECT_EQ(list.Size(), 0);
    list.Append("b");
    EXPECT_THAT(list, ElementsAre("b"));
  }
}

TEST(KORRawColldouble, HoldsNumbers) {
  KORRawColldouble numbers(2);
  for (int value = 1; value <= 100; ++value) {
    numbers.Append(value / 2.0);
  }
  EXPECT_EQ(numbers.Size(), 100);
  EXPECT_EQ(std::as_const(numbers)[1], 0.5);
  EXPECT_EQ(numbers[100], 50.0);
  numbers[1] = 2.0;
  EXPECT_EQ(std::accumulate(numbers.begin(), numbers.end(), 0.0), 2526.5);
  numbers.RemoveAll(kKeep);
  EXPECT_EQ(numbers.Size(), 0);
  EXPECT_TRUE(numbers == KORRawColldouble(-1));
}

TEST(KORRawCollPV, HoldsPointers) {
  int values[3] = {};
  KORRawCollPV pointers(1, 1);
  for (int& value : values) {
    pointers.Append(&value);
  }
  pointers.Append(nullptr);
  EXPECT_EQ(pointers.Size(), 4);
  EXPECT_EQ(pointers[1], &values[0]);
  EXPECT_EQ(std::as_const(pointers)[4], nullptr);
  pointers.RemovePosition(2);
  EXPECT_EQ(pointers[2], &values[2]);
  pointers[2] = &values[1];
  EXPECT_EQ(pointers[2], &values[1]);
  pointers.RemoveAll(kRelease);
  EXPECT_EQ(pointers.Size(), 0);
}

TEST(PositionDeathTest, APositionOutsideStopsTheProgram) {
  KORListValKORUnicodeString texts;
  EXPECT_DEATH(static_cast<void>(texts[1]), "^KORListValKORUnicodeString: position 1 is outside 1\\.\\.0\n$");
  texts.Append("a");
  EXPECT_DEATH(static_cast<void>(texts[0]), "^KORListValKORUnicodeString: position 0 is outside 1\\.\\.1\n$");
  EXPECT_DEATH(static_cast<void>(std::as_const(texts)[2]),
               "^KORListValKORUnicodeString: position 2 is outside 1\\.\\.1\n$");
  EXPECT_DEATH(texts.RemovePosition(INT_MIN),
               "^KORListValKORUnicodeString: position -2147483648 is outside 1\\.\\.1\n$");

  KORRawColldouble numbers;
  numbers.Append(1.0);
  EXPECT_DEATH(static_cast<void>(numbers[-1]), "^KORRawColldouble: position -1 is outside 1\\.\\.1\n$");
  EXPECT_DEATH(static_cast<void>(std::as_const(numbers)[INT_MAX]),
               "^KORRawColldouble: position 2147483647 is outside 1\\.\\.1\n$");

  KORRawCollPV pointers;
  EXPECT_DEATH(static_cast<void>(pointers[1]), "^KORRawCollPV: position 1 is outside 1\\.\\.0\n$");
  EXPECT_DEATH(pointers.RemovePosition(1), "^KORRawCollPV: position 1 is outside 1\\.\\.0\n$");
}

}  // namespace
