#include "KORSysTS/QRMSysConverter.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "KORSysBase/KORResult.h"
#include "support/pending_error.h"

namespace {

using VYX::Test::TakePendingError;

constexpr long kOutOfMemory = VYX::ResultCode(0x8007000EU);

TEST(QRMSysConverter, EncodesIntoATextForFree) {
  char* text = nullptr;
  ASSERT_EQ(QRMSysConverter::ConvertToBase64("fooba", 5, &text), S_OK);
  const std::unique_ptr<char, void (*)(void*)> owner(text, &std::free);
  EXPECT_STREQ(text, "Zm9vYmE=");
  EXPECT_EQ(TakePendingError(E_FAIL), "(none)");
}

TEST(QRMSysConverter, NoBytesMakeAnEmptyText) {
  char* text = nullptr;
  ASSERT_EQ(QRMSysConverter::ConvertToBase64(nullptr, 0, &text), S_OK);
  const std::unique_ptr<char, void (*)(void*)> owner(text, &std::free);
  EXPECT_STREQ(text, "");
}

TEST(QRMSysConverter, DecodesIntoAnArray) {
  char* buffer = nullptr;
  std::uint64_t size = 0;
  ASSERT_EQ(QRMSysConverter::ConvertFromBase64("Zm8A", &buffer, &size), S_OK);
  const std::unique_ptr<char[]> owner(buffer);
  EXPECT_EQ(std::string_view(buffer, size), std::string_view("fo\0", 3));
}

TEST(QRMSysConverter, AnEmptyTextMakesNoBytes) {
  char* buffer = nullptr;
  std::uint64_t size = 7;
  ASSERT_EQ(QRMSysConverter::ConvertFromBase64("", &buffer, &size), S_OK);
  const std::unique_ptr<char[]> owner(buffer);
  EXPECT_NE(buffer, nullptr);
  EXPECT_EQ(size, 0U);
}

TEST(QRMSysConverter, RefusedTextLeavesThePlaceAsPendingError) {
  char mark = 0;
  char* buffer = &mark;
  std::uint64_t size = 7;
  EXPECT_EQ(QRMSysConverter::ConvertFromBase64("Zm9v Zm9v", &buffer, &size), E_FAIL);
  EXPECT_EQ(buffer, &mark);
  EXPECT_EQ(size, 7U);
  EXPECT_EQ(TakePendingError(E_FAIL), "Cannot decode Base64 text: a character outside the alphabet at position 4");
}

TEST(QRMSysConverter, AZeroByteDoesNotEndATextOfKnownLength) {
  char* buffer = nullptr;
  std::uint64_t size = 0;
  EXPECT_EQ(QRMSysConverter::ConvertFromBase64(std::string_view("Zm9v\0Zm9", 8), &buffer, &size), E_FAIL);
  EXPECT_EQ(buffer, nullptr);
  EXPECT_EQ(TakePendingError(E_FAIL), "Cannot decode Base64 text: a character outside the alphabet at position 4");
}

TEST(QRMSysConverter, BadArguments) {
  char mark = 0;
  char* pointer = &mark;
  std::uint64_t size = 7;
  EXPECT_EQ(QRMSysConverter::ConvertToBase64("x", 1, nullptr), E_INVALIDARG);
  EXPECT_EQ(TakePendingError(E_INVALIDARG), "Cannot encode as Base64: no place for the text");
  EXPECT_EQ(QRMSysConverter::ConvertToBase64(nullptr, 3, &pointer), E_INVALIDARG);
  EXPECT_EQ(TakePendingError(E_INVALIDARG), "Cannot encode as Base64: no data for a size of 3 bytes");
  EXPECT_EQ(QRMSysConverter::ConvertFromBase64(static_cast<const char*>(nullptr), &pointer, &size), E_INVALIDARG);
  EXPECT_EQ(TakePendingError(E_INVALIDARG), "Cannot decode Base64: no text");
  EXPECT_EQ(QRMSysConverter::ConvertFromBase64("", nullptr, &size), E_INVALIDARG);
  EXPECT_EQ(TakePendingError(E_INVALIDARG), "Cannot decode Base64: no place for the bytes or their number");
  EXPECT_EQ(QRMSysConverter::ConvertFromBase64("", &pointer, nullptr), E_INVALIDARG);
  EXPECT_EQ(pointer, &mark);
  EXPECT_EQ(size, 7U);
  EXPECT_EQ(TakePendingError(E_INVALIDARG), "Cannot decode Base64: no place for the bytes or their number");
}

TEST(QRMSysConverter, SizesThatNoMemoryHoldsAreRefusedBeforeTheDataIsRead) {
  char mark = 0;
  char* text = &mark;
  for (const std::uint64_t size : {UINT64_MAX, UINT64_MAX / 4 * 3, std::uint64_t{INT64_MAX} / 4 * 3 + 3}) {
    EXPECT_EQ(QRMSysConverter::ConvertToBase64(&mark, size, &text), kOutOfMemory) << size;
    EXPECT_EQ(TakePendingError(kOutOfMemory),
              "Cannot encode " + std::to_string(size) + " bytes as Base64: not enough memory");
  }
  EXPECT_EQ(text, &mark);
}

}  // namespace
