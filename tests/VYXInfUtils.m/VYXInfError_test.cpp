#include "VYXInfError.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORResult.h"

namespace {

class Error : public testing::Test {
 protected:
  void SetUp() override { KORError::KORCleanLastError(); }
  void TearDown() override { KORError::KORCleanLastError(); }
};

TEST_F(Error, OfCodeZeroIsEmptyAndLeavesThePendingErrorAlone) {
  KORError::KORSetLastError(E_FAIL, "pending");
  EXPECT_EQ(VYXInfError().GetHResult(), 0);
  EXPECT_EQ(VYXInfError(0).GetErrorMessage(), "");
  EXPECT_NE(KORError::KORGetLastError(E_FAIL, nullptr), nullptr);
}

TEST_F(Error, WithoutPendingErrorNamesItsCode) {
  EXPECT_EQ(VYXInfError(E_FAIL).GetErrorMessage(), "Unknown error with code -2147467259");
  EXPECT_EQ(VYXInfError(S_FALSE).GetErrorMessage(), "Unknown error with code 1");
  EXPECT_EQ(VYXInfError(E_FAIL).GetHResult(), E_FAIL);
}

TEST_F(Error, ConsumesThePendingErrorOfItsCode) {
  const long code = VYX::ResultCode(0x80070005);
  KORError::KORSetLastError(code, "Cannot open 'x': Permission denied");
  EXPECT_EQ(VYXInfError(E_INVALIDARG).GetErrorMessage(), "Unknown error with code -2147024809");
  EXPECT_EQ(VYXInfError(code).GetErrorMessage(), "Cannot open 'x': Permission denied");
  EXPECT_EQ(VYXInfError(code).GetErrorMessage(), "Unknown error with code -2147024891");
}

TEST_F(Error, KeepsThirtyTwoBitsOfACode) {
  EXPECT_EQ(VYXInfError(static_cast<long>(0x80004005U)).GetHResult(), E_FAIL);
}

TEST_F(Error, ComparesCodeAndIdenticalMessage) {
  KORError::KORSetLastError(E_FAIL, "one");
  const VYXInfError one(E_FAIL);
  KORError::KORSetLastError(E_FAIL, "ONE");
  const VYXInfError upper(E_FAIL);
  KORError::KORSetLastError(E_INVALIDARG, "one");
  const VYXInfError other(E_INVALIDARG);
  EXPECT_EQ(one == VYXInfError(one), 1);
  EXPECT_EQ(one != VYXInfError(one), 0);
  EXPECT_EQ(one == upper, 0) << "a message that differs in case is another message";
  EXPECT_EQ(one != upper, 1);
  EXPECT_EQ(one == other, 0);
  static_assert(std::is_same_v<decltype(one == upper), int>);
  static_assert(std::has_virtual_destructor_v<VYXInfError>);
}

TEST_F(Error, AssignmentCopiesCodeAndMessage) {
  KORError::KORSetLastError(E_FAIL, "message");
  const VYXInfError source(E_FAIL);
  VYXInfError target;
  target = source;
  EXPECT_EQ(target.GetHResult(), E_FAIL);
  EXPECT_EQ(target.GetErrorMessage(), "message");
}

VYXInfError WithMessage(const char* iMessage) {
  KORError::KORSetLastError(E_FAIL, iMessage);
  return VYXInfError(E_FAIL);
}

class ErrorList : public Error {
 protected:
  const VYXInfError _a = WithMessage("a");
  const VYXInfError _b = WithMessage("b");
};

TEST_F(ErrorList, RendersOneMessageALine) {
  KORListValVYXInfError list;
  EXPECT_EQ(VYXInfError::ErrorListToString(list), "");
  list.Append(_a);
  list.Append(_b);
  EXPECT_EQ(VYXInfError::ErrorListToString(list), "a\nb\n");
  EXPECT_EQ(list.Size(), 2);
}

TEST_F(ErrorList, RemovesOneEqualElementACall) {
  KORListValVYXInfError list(4, 2);
  list.Append(_a);
  list.Append(_a);
  list.Append(_b);
  EXPECT_EQ(list.RemoveValue(_a), 1);
  EXPECT_EQ(list.RemoveValue(_a), 1);
  EXPECT_EQ(list.RemoveValue(_a), 0);
  EXPECT_EQ(VYXInfError::ErrorListToString(list), "b\n");
}

TEST_F(ErrorList, LocatesFromAPosition) {
  KORListValVYXInfError list(3);
  list.Append(_a);
  list.Append(_b);
  list.Append(_a);
  EXPECT_EQ(list.Locate(_a, 1), 1);
  EXPECT_EQ(list.Locate(_a, 2), 3);
  EXPECT_EQ(list.Locate(_b, 3), 0);
  EXPECT_EQ(list.Locate(_a, list.Size() + 1), 0);
}

TEST_F(ErrorList, CopiesElementsAndTheirMessages) {
  KORListValVYXInfError list;
  list.Append(_a);
  KORListValVYXInfError copy(list);
  KORListValVYXInfError assigned;
  assigned.Append(_b);
  assigned = list;
  list[1] = _b;
  EXPECT_EQ(copy[1].GetErrorMessage(), "a");
  EXPECT_EQ(assigned[1].GetErrorMessage(), "a");
  EXPECT_EQ(copy == assigned, 1);
  EXPECT_EQ(copy != list, 1);
  const KORListValVYXInfError& same = copy;
  copy = same;
  EXPECT_EQ(copy.Size(), 1);
}

TEST_F(ErrorList, DiffersBySizeAndElement) {
  KORListValVYXInfError one;
  KORListValVYXInfError two;
  EXPECT_EQ(one == two, 1);
  one.Append(_a);
  EXPECT_EQ(one != two, 1);
  two.Append(_b);
  EXPECT_EQ(one != two, 1);
  EXPECT_EQ(one == one, 1);
}

TEST_F(ErrorList, RemovesPositionsAndAll) {
  KORListValVYXInfError list;
  list.Append(_a);
  list.Append(_b);
  list.RemovePosition(1);
  EXPECT_EQ(list[1].GetErrorMessage(), "b");
  list.RemoveAll(KORCollec::MemoryHandling::KeepMemory);
  EXPECT_EQ(list.Size(), 0);
  list.Append(_a);
  list.RemoveAll(KORCollec::MemoryHandling::ReleaseMemory);
  EXPECT_EQ(list.Size(), 0);
}

using ErrorListDeathTest = ErrorList;

TEST_F(ErrorListDeathTest, StopsAtAPositionOutside) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  KORListValVYXInfError list;
  list.Append(_a);
  EXPECT_DEATH(list[0].GetHResult(), "KORRawCollPV: position 0 is outside 1..1");
  EXPECT_DEATH(list[2].GetHResult(), "KORRawCollPV: position 2 is outside 1..1");
  EXPECT_DEATH(list.RemovePosition(-1), "KORRawCollPV: position -1 is outside 1..1");
}

}  // namespace
