#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <new>
#include <ostream>
#include <string>
#include <string_view>

#include "VYXInfLog.h"
#include "VYXInfStringUtil.h"
#include "support/captured_stdout.h"
#include "support/pending_error.h"

namespace {

// The number of allocations of this thread that still succeed; the one after them fails. Negative: all succeed.
thread_local long allocationsLeft = -1;

bool MayAllocate() noexcept {
  if (allocationsLeft < 0) {
    return true;
  }
  return allocationsLeft-- != 0;
}

void* Allocate(std::size_t iSize) noexcept {
  return MayAllocate() ? std::malloc(iSize == 0 ? 1 : iSize) : nullptr;
}

void* AllocateOrThrow(std::size_t iSize) {
  void* const memory = Allocate(iSize);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

}  // namespace

void* operator new(std::size_t iSize) {
  return AllocateOrThrow(iSize);
}
void* operator new[](std::size_t iSize) {
  return AllocateOrThrow(iSize);
}
void* operator new(std::size_t iSize, const std::nothrow_t&) noexcept {
  return Allocate(iSize);
}
void* operator new[](std::size_t iSize, const std::nothrow_t&) noexcept {
  return Allocate(iSize);
}
void operator delete(void* ioMemory) noexcept {
  std::free(ioMemory);
}
void operator delete[](void* ioMemory) noexcept {
  std::free(ioMemory);
}
void operator delete(void* ioMemory, std::size_t) noexcept {
  std::free(ioMemory);
}
void operator delete[](void* ioMemory, std::size_t) noexcept {
  std::free(ioMemory);
}
void operator delete(void* ioMemory, const std::nothrow_t&) noexcept {
  std::free(ioMemory);
}
void operator delete[](void* ioMemory, const std::nothrow_t&) noexcept {
  std::free(ioMemory);
}

namespace {

using Util = VYXInfStringUtil;
using VYX::Test::CapturedStdout;
using VYX::Test::ConsoleLevel;

const char* const kLongText = "a text of more than twenty-two bytes";
const char* const kLongBase64 = "YSB0ZXh0IG9mIG1vcmUgdGhhbiB0d2VudHktdHdvIGJ5dGVz";

struct Row {
  std::string_view name;
  // Answers whether the operation succeeded; checks what a failure leaves behind.
  std::function<bool(const KORUnicodeString& iText, const KORUnicodeString& iBase64)> run;
};
void PrintTo(const Row& iRow, std::ostream* ioStream) {
  *ioStream << iRow.name;
}

class OutOfMemory : public ::testing::TestWithParam<Row> {};

// One allocation fails, the next one later, and so on, until the operation succeeds. Errors are filtered: a trace
// allocates too.
TEST_P(OutOfMemory, EndsInAFailureAndNoException) {
  const ConsoleLevel level(FATAL);
  const KORUnicodeString text(kLongText);
  const KORUnicodeString base64(kLongBase64);
  EXPECT_TRUE(GetParam().run(text, base64));
  long failures = 0;
  for (;; ++failures) {
    ASSERT_LT(failures, 100);
    allocationsLeft = failures;
    const bool isDone = GetParam().run(text, base64);
    const bool isUntouched = allocationsLeft > 0;
    allocationsLeft = -1;
    if (isDone && isUntouched) {
      break;
    }
  }
  EXPECT_GT(failures, 0);
  VYX::Test::TakePendingError(E_FAIL);
}

INSTANTIATE_TEST_SUITE_P(
    Operations, OutOfMemory,
    ::testing::Values(Row{"ConvertToUTF8 into an array",
                          [](const KORUnicodeString& iText, const KORUnicodeString&) {
                            char* buffer = nullptr;
                            std::uint64_t size = 7;
                            const bool isDone = Util::ConvertToUTF8(iText, &buffer, &size);
                            EXPECT_TRUE(isDone || (buffer == nullptr && size == 7));
                            delete[] buffer;
                            return isDone;
                          }},
                      Row{"ConvertToUTF8 into a binary",
                          [](const KORUnicodeString& iText, const KORUnicodeString&) {
                            QB::Binary binary;
                            return Util::ConvertToUTF8(iText, &binary);
                          }},
                      Row{"EncodeToBase64",
                          [](const KORUnicodeString& iText, const KORUnicodeString& iBase64) {
                            KORUnicodeString encoded("before");
                            const bool isDone = Util::EncodeToBase64(iText, encoded) >= 0;
                            EXPECT_EQ(encoded.ToStringView(), isDone ? iBase64.ToStringView() : "");
                            return isDone;
                          }},
                      Row{"DecodeFromBase64 to bytes",
                          [](const KORUnicodeString&, const KORUnicodeString& iBase64) {
                            QB::Binary data;
                            const bool isDone = Util::DecodeFromBase64(iBase64, &data) >= 0;
                            EXPECT_EQ(data.IsEmpty(), !isDone);
                            return isDone;
                          }},
                      Row{"DecodeFromBase64 to text",
                          [](const KORUnicodeString& iText, const KORUnicodeString& iBase64) {
                            KORUnicodeString decoded("before");
                            const bool isDone = Util::DecodeFromBase64(iBase64, decoded) >= 0;
                            EXPECT_EQ(decoded.ToStringView(), isDone ? iText.ToStringView() : "");
                            return isDone;
                          }},
                      Row{"Base64Hash", [](const KORUnicodeString& iText, const KORUnicodeString&) {
                            KORUnicodeString hash("before");
                            const bool isDone = Util::Base64Hash(iText, Util::HashAlgo::SHA256, hash) >= 0;
                            EXPECT_EQ(hash == "before", !isDone);
                            return isDone;
                          }}));

TEST(OutOfMemoryTrace, NamesTheException) {
  CapturedStdout captured;
  const KORUnicodeString text(kLongText);
  char* buffer = nullptr;
  std::uint64_t size = 0;
  allocationsLeft = 0;
  const bool isDone = Util::ConvertToUTF8(text, &buffer, &size);
  allocationsLeft = -1;
  EXPECT_FALSE(isDone);
  EXPECT_THAT(captured.LogLines(), ::testing::ElementsAre(VYX::Test::FailureReturnIn("VYXInfStringUtil/utf8.cpp"),
                                                          VYX::Test::Detail("std::bad_alloc")));
}

}  // namespace
