#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/adapters/base64.h"

namespace {

using VYX::Adapters::DecodeBase64Blocks;
using VYX::Adapters::EncodeBase64Blocks;

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Restricts the choice at run time to one instruction set while it lives.
class OnlyTarget {
 public:
  explicit OnlyTarget(std::int64_t iTarget) {
    hwy::SetSupportedTargetsForTest(iTarget);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
  }
  ~OnlyTarget() {
    hwy::SetSupportedTargetsForTest(0);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
  }
  OnlyTarget(const OnlyTarget&) = delete;
  OnlyTarget& operator=(const OnlyTarget&) = delete;
};

void ExpectAlphabetOnly() {
  std::string data(768, '\0');
  for (int value = 0; value < 256; ++value) {
    const std::string text(1024, static_cast<char>(value));
    const std::size_t done = DecodeBase64Blocks(text.data(), text.size(), data.data());
    if (kAlphabet.find(static_cast<char>(value)) == std::string_view::npos) {
      EXPECT_EQ(done, 0U) << "byte " << value;
    }
  }
}

void ExpectRoundTrip(bool iVectors) {
  std::string data;
  for (unsigned i = 0; i < 3072; ++i) {
    data.push_back(static_cast<char>((i * 2654435761U) >> 13));
  }
  std::string text(4096, '\0');
  const std::size_t encoded = EncodeBase64Blocks(data.data(), data.size(), text.data());
  EXPECT_EQ(encoded > 0, iVectors);
  EXPECT_EQ(text.find('\0'), encoded < data.size() ? encoded / 3 * 4 : std::string::npos);
  for (std::size_t character = 0; character < encoded / 3 * 4; ++character) {
    const std::size_t bit = character * 6;
    const unsigned high = static_cast<unsigned char>(data[bit / 8]);
    const unsigned low = bit / 8 + 1 < data.size() ? static_cast<unsigned char>(data[bit / 8 + 1]) : 0;
    const unsigned value = ((high << 8 | low) >> (10 - bit % 8)) & 0x3F;
    ASSERT_EQ(text[character], kAlphabet[value]) << "character " << character;
  }
  std::string decoded(encoded, '\0');
  EXPECT_EQ(DecodeBase64Blocks(text.data(), encoded / 3 * 4, decoded.data()), encoded / 3 * 4);
  EXPECT_EQ(decoded, data.substr(0, encoded));
}

TEST(Base64Highway, EveryInstructionSetOfThisProcessorGivesTheSame) {
  for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
    SCOPED_TRACE(hwy::TargetName(target));
    const OnlyTarget only(target);
    ExpectRoundTrip(target != HWY_SCALAR);
    ExpectAlphabetOnly();
  }
}

}  // namespace
