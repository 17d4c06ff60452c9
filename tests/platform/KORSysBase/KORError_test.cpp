#include "KORSysBase/KORError.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "KORSysBase/KORResult.h"

namespace {

constexpr long kNotFound = VYX::ResultCode(0x80070002U);
constexpr long kDenied = VYX::ResultCode(0x80070005U);

class PendingError : public ::testing::Test {
 protected:
  PendingError() { KORError::KORCleanLastError(); }
  ~PendingError() override { KORError::KORCleanLastError(); }
};

TEST_F(PendingError, NoneIsPendingAtFirst) {
  EXPECT_EQ(KORError::KORGetLastError(kNotFound, nullptr), nullptr);
  EXPECT_EQ(KORError::KORGetLastError(E_FAIL, nullptr), nullptr);
}

TEST_F(PendingError, IsYieldedForItsCode) {
  EXPECT_EQ(KORError::KORSetLastError(kNotFound, "Cannot open '/x/y' for reading: No such file or directory"),
            kNotFound);
  KORError* const error = KORError::KORGetLastError(kNotFound, nullptr);
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->GetCode(), kNotFound);
  EXPECT_EQ(error->GetMessageText(), "Cannot open '/x/y' for reading: No such file or directory");
  error->Release();
  EXPECT_EQ(KORError::KORGetLastError(kDenied, nullptr), nullptr);
  EXPECT_EQ(KORError::KORGetLastError(S_OK, nullptr), nullptr);
}

TEST_F(PendingError, IsYieldedForTheGeneralFailure) {
  KORError::KORSetLastError(kNotFound, "absent");
  KORError* const error = KORError::KORGetLastError(E_FAIL, nullptr);
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->GetCode(), kNotFound);
}

TEST_F(PendingError, GeneralFailureIsYieldedForItselfOnly) {
  KORError::KORSetLastError(E_FAIL, "general");
  EXPECT_EQ(KORError::KORGetLastError(kNotFound, nullptr), nullptr);
  EXPECT_NE(KORError::KORGetLastError(E_FAIL, nullptr), nullptr);
}

TEST_F(PendingError, ANewOneTakesTheOldOnesPlace) {
  KORError::KORSetLastError(kNotFound, "first");
  KORError::KORSetLastError(kDenied, "second");
  EXPECT_EQ(KORError::KORGetLastError(kNotFound, nullptr), nullptr);
  ASSERT_NE(KORError::KORGetLastError(kDenied, nullptr), nullptr);
  EXPECT_EQ(KORError::KORGetLastError(kDenied, nullptr)->GetMessageText(), "second");
}

TEST_F(PendingError, MayBeMadeFromThePendingOne) {
  KORError::KORSetLastError(kNotFound, "a message that lives in an allocation of its own");
  KORError* const first = KORError::KORGetLastError(kNotFound, nullptr);
  ASSERT_NE(first, nullptr);
  KORError::KORSetLastError(kDenied, "again: " + first->GetMessageText());
  ASSERT_NE(KORError::KORGetLastError(kDenied, nullptr), nullptr);
  EXPECT_EQ(KORError::KORGetLastError(kDenied, nullptr)->GetMessageText(),
            "again: a message that lives in an allocation of its own");
}

TEST_F(PendingError, IsForgottenWhenCleaned) {
  KORError::KORSetLastError(kNotFound, "absent");
  KORError::KORCleanLastError();
  EXPECT_EQ(KORError::KORGetLastError(E_FAIL, nullptr), nullptr);
  KORError::KORCleanLastError();
}

TEST_F(PendingError, EachThreadHasItsOwn) {
  KORError::KORSetLastError(kNotFound, "of the first thread");
  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  for (int number = 0; number < 4; ++number) {
    threads.emplace_back([number, &wrong] {
      wrong += KORError::KORGetLastError(E_FAIL, nullptr) == nullptr ? 0 : 1;
      for (int round = 0; round < 200; ++round) {
        const std::string message =
            "a message of thread " + std::to_string(number) + ", round " + std::to_string(round);
        KORError::KORSetLastError(kDenied, KORUnicodeString(message));
        const KORError* const error = KORError::KORGetLastError(kDenied, nullptr);
        wrong += error != nullptr && error->GetMessageText().ConvertToChar() == message ? 0 : 1;
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(wrong.load(), 0);
  ASSERT_NE(KORError::KORGetLastError(kNotFound, nullptr), nullptr);
  EXPECT_EQ(KORError::KORGetLastError(kNotFound, nullptr)->GetMessageText(), "of the first thread");
}

TEST(ResultCodes, AreSignExtended) {
  static_assert(E_FAIL < 0 && E_INVALIDARG < 0 && E_UNEXPECTED < 0);
  static_assert(S_OK == 0 && S_FALSE == 1);
  static_assert(static_cast<std::uint32_t>(E_FAIL) == 0x80004005U);
  static_assert(static_cast<std::uint32_t>(E_INVALIDARG) == 0x80070057U);
  static_assert(static_cast<std::uint32_t>(E_UNEXPECTED) == 0x8000FFFFU);
}

}  // namespace
