#include "KORSysTS/KORSysCRC32.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/adapters/crc32.h"

namespace {

std::uint32_t Crc(std::string_view iText) {
  return KORSysCRC32(iText.data(), iText.size());
}

// Bit by bit, as RFC 1952 section 8 defines it.
std::uint32_t ReferenceCrc(std::string_view iText) {
  std::uint32_t crc = 0xFFFFFFFFU;
  for (const char character : iText) {
    crc ^= static_cast<unsigned char>(character);
    for (int bit = 0; bit < 8; ++bit) {
      crc = (crc >> 1) ^ ((crc & 1U) != 0 ? 0xEDB88320U : 0U);
    }
  }
  return ~crc;
}

TEST(KORSysCRC32, CheckValue) {
  EXPECT_EQ(Crc("123456789"), 0xCBF43926U);
}

TEST(KORSysCRC32, NoBytes) {
  EXPECT_EQ(KORSysCRC32(nullptr, 0), 0U);
  EXPECT_EQ(Crc(""), 0U);
}

TEST(KORSysCRC32, EveryLengthAndAlignmentAgreesWithTheDefinition) {
  std::string bytes;
  for (int i = 0; i < 600; ++i) {
    bytes.push_back(static_cast<char>(i * 37 + (i >> 3)));
  }
  for (std::size_t start = 0; start < 16; ++start) {
    for (std::size_t length = 0; length < 300; ++length) {
      const std::string_view range = std::string_view(bytes).substr(start, length);
      ASSERT_EQ(Crc(range), ReferenceCrc(range)) << "start " << start << " length " << length;
    }
  }
}

TEST(KORSysCRC32, AdapterContinuesAChecksum) {
  std::uint32_t crc = 0;
  for (const char character : std::string_view("123456789")) {
    crc = VYX::Adapters::Crc32(crc, &character, 1);
  }
  EXPECT_EQ(crc, 0xCBF43926U);
  EXPECT_EQ(VYX::Adapters::Crc32(crc, nullptr, 0), 0xCBF43926U);
}

}  // namespace
