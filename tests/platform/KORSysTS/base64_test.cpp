#include "platform/src/KORSysTS/base64.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "platform/adapters/base64.h"

namespace {

using VYX::Platform::Base64DecodedSize;
using VYX::Platform::Base64EncodedSize;
using VYX::Platform::Base64Fault;

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string Encoded(std::string_view iData) {
  std::string text(Base64EncodedSize(iData.size()).value(), '\0');
  VYX::Platform::EncodeBase64(iData.data(), iData.size(), text.data());
  return text;
}

struct Decoded {
  std::string data;
  std::optional<Base64Fault> fault;
};

Decoded Decode(std::string_view iText) {
  Decoded decoded{std::string(Base64DecodedSize(iText), '\0'), std::nullopt};
  decoded.fault = VYX::Platform::DecodeBase64(iText, decoded.data.data());
  return decoded;
}

// Bit by bit, after the text of the RFC.
std::string ReferenceEncoded(std::string_view iData) {
  std::string text;
  std::uint32_t bits = 0;
  unsigned count = 0;
  for (const char byte : iData) {
    bits = (bits << 8) | static_cast<unsigned char>(byte);
    for (count += 8; count >= 6; count -= 6) {
      text.push_back(kAlphabet[(bits >> (count - 6)) & 0x3F]);
    }
  }
  if (count > 0) {
    text.push_back(kAlphabet[(bits << (6 - count)) & 0x3F]);
  }
  text.append((4 - text.size() % 4) % 4, '=');
  return text;
}

std::string SomeBytes(std::size_t iSize) {
  std::string bytes;
  std::uint32_t state = 12345;
  while (bytes.size() < iSize) {
    state = state * 1664525U + 1013904223U;
    bytes.push_back(static_cast<char>(state >> 24));
  }
  return bytes;
}

// RFC 4648, section 10.
TEST(Base64, PublishedVectors) {
  constexpr std::pair<std::string_view, std::string_view> kRows[] = {{"", ""},
                                                                     {"f", "Zg=="},
                                                                     {"fo", "Zm8="},
                                                                     {"foo", "Zm9v"},
                                                                     {"foob", "Zm9vYg=="},
                                                                     {"fooba", "Zm9vYmE="},
                                                                     {"foobar", "Zm9vYmFy"}};
  for (const auto& [data, text] : kRows) {
    EXPECT_EQ(Encoded(data), text) << data;
    EXPECT_EQ(Decode(text).data, data) << text;
    EXPECT_FALSE(Decode(text).fault) << text;
  }
}

TEST(Base64, EveryShortLengthAgreesWithTheDefinition) {
  const std::string bytes = SomeBytes(1200);
  for (std::size_t length = 0; length <= 600; ++length) {
    for (const std::size_t start : {0U, 1U, 7U}) {
      const std::string_view data = std::string_view(bytes).substr(start, length);
      const std::string text = Encoded(data);
      ASSERT_EQ(text, ReferenceEncoded(data)) << length;
      const Decoded decoded = Decode(text);
      ASSERT_FALSE(decoded.fault) << length;
      ASSERT_EQ(decoded.data, data) << length;
    }
  }
}

TEST(Base64, EveryGroupOfTwoBytesSurvives) {
  std::string data;
  for (int first = 0; first < 256; ++first) {
    for (int second = 0; second < 256; ++second) {
      data.push_back(static_cast<char>(first));
      data.push_back(static_cast<char>(second));
    }
  }
  const std::string text = Encoded(data);
  EXPECT_EQ(text, ReferenceEncoded(data));
  EXPECT_EQ(Decode(text).data, data);
}

// Long enough that each place lies once in a vectorised block, once in the rest.
TEST(Base64, EveryByteAtEveryPlaceIsAcceptedOrRefused) {
  for (const std::size_t length : {4U, 8U, 32U, 68U, 132U, 260U, 300U}) {
    const std::string plain(length, 'Q');
    for (std::size_t place = 0; place < length; ++place) {
      for (int value = 0; value < 256; ++value) {
        std::string text = plain;
        text[place] = static_cast<char>(value);
        const bool inAlphabet = kAlphabet.find(text[place]) != std::string_view::npos;
        const bool padding = value == '=' && place == length - 1;
        const Decoded decoded = Decode(text);
        if (padding) {
          // The unused bits of the 'Q' before it are zero.
          ASSERT_FALSE(decoded.fault) << "length " << length;
        } else if (inAlphabet) {
          ASSERT_FALSE(decoded.fault) << "byte " << value << " at " << place << " of " << length;
          ASSERT_EQ(Encoded(decoded.data), text);
        } else {
          ASSERT_TRUE(decoded.fault) << "byte " << value << " at " << place << " of " << length;
          ASSERT_EQ(decoded.fault->position, place) << "byte " << value << " of " << length;
        }
      }
    }
  }
}

struct RefusedRow {
  std::string_view text;
  std::size_t position;
  std::string_view reason;
};
void PrintTo(const RefusedRow& iRow, std::ostream* ioStream) {
  *ioStream << '"' << iRow.text << '"';
}

class Base64Refused : public ::testing::TestWithParam<RefusedRow> {};

TEST_P(Base64Refused, NamesPlaceAndReason) {
  const Decoded decoded = Decode(GetParam().text);
  ASSERT_TRUE(decoded.fault);
  EXPECT_EQ(decoded.fault->position, GetParam().position);
  EXPECT_EQ(decoded.fault->reason, GetParam().reason);
}

constexpr std::string_view kIncomplete = "an incomplete group of four characters";
constexpr std::string_view kEarlyPadding = "padding before the end";
constexpr std::string_view kStranger = "a character outside the alphabet";
constexpr std::string_view kUnusedBits = "unused bits that are not zero";

INSTANTIATE_TEST_SUITE_P(Rows, Base64Refused,
                         ::testing::Values(RefusedRow{"Z", 1, kIncomplete}, RefusedRow{"Zg", 2, kIncomplete},
                                           RefusedRow{"Zg=", 3, kIncomplete}, RefusedRow{"Zm9", 3, kIncomplete},
                                           RefusedRow{"Zm9vY", 5, kIncomplete}, RefusedRow{"Zm9v=", 5, kIncomplete},
                                           RefusedRow{"Zm9v==", 6, kIncomplete}, RefusedRow{"=", 1, kIncomplete},
                                           RefusedRow{"==", 2, kIncomplete}, RefusedRow{"===", 0, kEarlyPadding},
                                           RefusedRow{"====", 0, kEarlyPadding}, RefusedRow{"Z===", 1, kEarlyPadding},
                                           RefusedRow{"Zg==Zg==", 2, kEarlyPadding},
                                           RefusedRow{"Zg==Zm9v", 2, kEarlyPadding},
                                           RefusedRow{"Zg=v", 2, kEarlyPadding}, RefusedRow{"=g==", 0, kEarlyPadding},
                                           RefusedRow{"Zm9v====", 4, kEarlyPadding}, RefusedRow{"Zm9v\n", 4, kStranger},
                                           RefusedRow{"Zm 9", 2, kStranger}, RefusedRow{"Zm9v\r\nZm9v", 4, kStranger},
                                           RefusedRow{" Zm9", 0, kStranger}, RefusedRow{"Zm9-", 3, kStranger},
                                           RefusedRow{"Zm9_Zm9v", 3, kStranger},
                                           RefusedRow{std::string_view("Zm9\0", 4), 3, kStranger},
                                           RefusedRow{"Zm9\xC3", 3, kStranger}, RefusedRow{"Zh==", 1, kUnusedBits},
                                           RefusedRow{"Zm9=", 2, kUnusedBits}, RefusedRow{"Zm9vZp==", 5, kUnusedBits}));

TEST(Base64, SizesBeyondThirtyTwoBits) {
  EXPECT_EQ(Base64EncodedSize(0), 0U);
  EXPECT_EQ(Base64EncodedSize(3'221'225'472U), 4'294'967'296U);
  EXPECT_EQ(Base64EncodedSize(3'221'225'473U), 4'294'967'300U);
  EXPECT_EQ(Base64EncodedSize(UINT64_MAX / 4 * 3), UINT64_MAX / 4 * 4);
  EXPECT_EQ(Base64EncodedSize(UINT64_MAX / 4 * 3 + 1), std::nullopt);
  EXPECT_EQ(Base64EncodedSize(UINT64_MAX), std::nullopt);
}

TEST(Base64, BlocksStopBeforeWhatTheyRefuse) {
  std::string text(1024, 'Q');
  std::string data(768, '\0');
  const std::size_t all = VYX::Adapters::DecodeBase64Blocks(text.data(), text.size(), data.data());
  EXPECT_EQ(all % 4, 0U);
  EXPECT_LE(all, text.size());
  text[700] = '=';
  const std::size_t some = VYX::Adapters::DecodeBase64Blocks(text.data(), text.size(), data.data());
  EXPECT_EQ(some % 4, 0U);
  EXPECT_LE(some, 700U);
  EXPECT_EQ(VYX::Adapters::DecodeBase64Blocks(text.data(), 3, data.data()), 0U);
  EXPECT_EQ(VYX::Adapters::EncodeBase64Blocks(data.data(), 2, text.data()), 0U);
}

}  // namespace
