#include "KORSysBase/KORListVal.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>

namespace {

// Counts its living objects, so that a list that forgets or doubles one is found out.
class Counted {
 public:
  Counted(int iValue = 0) : _value(iValue) { ++living; }
  Counted(const Counted& iOther) : _value(iOther._value) {
    if (_value == throwingValue) {
      throw std::runtime_error("copy refused");
    }
    ++living;
  }
  Counted& operator=(const Counted&) = default;
  ~Counted() { --living; }

  int Value() const { return _value; }
  bool operator!=(const Counted& iOther) const { return _value != iOther._value; }

  static int living;
  static int throwingValue;

 private:
  int _value;
};

int Counted::living = 0;
int Counted::throwingValue = -1;

using List = KORListVal<Counted>;

List ListOf(int iCount) {
  List list(iCount, 1);
  for (int value = 1; value <= iCount; ++value) {
    list.Append(Counted(value));
  }
  return list;
}

class KORListValTest : public ::testing::Test {
 protected:
  ~KORListValTest() override {
    Counted::throwingValue = -1;
    EXPECT_EQ(Counted::living, 0);
  }
};

TEST_F(KORListValTest, OwnsItsElements) {
  List list = ListOf(3);
  EXPECT_EQ(list.Size(), 3);
  EXPECT_EQ(list[1].Value(), 1);
  EXPECT_EQ(std::as_const(list)[3].Value(), 3);
  EXPECT_EQ(Counted::living, 3);
}

TEST_F(KORListValTest, ElementsKeepTheirAddresses) {
  List list = ListOf(2);
  const Counted* const second = &list[2];
  for (int value = 3; value < 100; ++value) {
    list.Append(Counted(value));
  }
  list.RemovePosition(1);
  EXPECT_EQ(&list[1], second);
}

TEST_F(KORListValTest, CopiesCopyEveryElement) {
  List list = ListOf(3);
  List copy(list);
  copy[1] = Counted(9);
  EXPECT_EQ(list[1].Value(), 1);
  EXPECT_EQ(Counted::living, 6);
  copy = list;
  EXPECT_EQ(copy[1].Value(), 1);
  List& same = copy;
  copy = same;
  EXPECT_EQ(copy.Size(), 3);
  List moved(std::move(copy));
  EXPECT_EQ(copy.Size(), 0);
  list = std::move(moved);
  EXPECT_EQ(list.Size(), 3);
  EXPECT_EQ(Counted::living, 3);
}

TEST_F(KORListValTest, AFailedCopyLeavesNothingBehind) {
  const List list = ListOf(5);
  List target = ListOf(2);
  Counted::throwingValue = 4;
  EXPECT_THROW(target = list, std::runtime_error);
  EXPECT_EQ(target.Size(), 2);
  EXPECT_THROW(List{list}, std::runtime_error);
  EXPECT_THROW(target.Append(list[4]), std::runtime_error);
  EXPECT_EQ(target.Size(), 2);
  EXPECT_EQ(Counted::living, 7);
}

TEST_F(KORListValTest, FindsAndRemovesValues) {
  List list = ListOf(3);
  list.Append(Counted(1));
  EXPECT_EQ(list.Locate(Counted(1), 1), 1);
  EXPECT_EQ(list.Locate(Counted(1), 2), 4);
  EXPECT_EQ(list.Locate(Counted(7), 1), 0);
  EXPECT_EQ(list.Locate(Counted(1), 5), 0);
  EXPECT_EQ(list.RemoveValue(Counted(1)), 1);
  EXPECT_EQ(list.RemoveValue(Counted(7)), 0);
  EXPECT_EQ(list.RemoveValue(list[1]), 1);
  EXPECT_EQ(list.Size(), 2);
  list.RemoveAll(KORCollec::MemoryHandling::KeepMemory);
  EXPECT_EQ(list.Size(), 0);
  EXPECT_EQ(Counted::living, 0);
}

TEST_F(KORListValTest, FillsAnArrayInOrder) {
  const List list = ListOf(3);
  Counted array[4] = {0, 0, 0, 8};
  list.Array(array);
  EXPECT_EQ(array[0].Value(), 1);
  EXPECT_EQ(array[2].Value(), 3);
  EXPECT_EQ(array[3].Value(), 8);
}

TEST_F(KORListValTest, ComparesSizesAndElements) {
  const List list = ListOf(3);
  List other = ListOf(3);
  EXPECT_EQ(list != other, 0);
  EXPECT_EQ(list == other, 1);
  EXPECT_EQ(list != list, 0);
  other[3] = Counted(7);
  EXPECT_EQ(list != other, 1);
  other.RemovePosition(3);
  EXPECT_EQ(list != other, 1);
  EXPECT_EQ(list == other, 0);
}

TEST(KORListValDeathTest, APositionOutsideStopsTheProgram) {
  List list;
  EXPECT_DEATH(static_cast<void>(list[1]), "position 1 is outside 1\\.\\.0");
  EXPECT_DEATH(list.RemovePosition(0), "position 0 is outside 1\\.\\.0");
}

}  // namespace
