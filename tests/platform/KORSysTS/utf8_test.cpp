#include "platform/src/KORSysTS/utf8.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace std::string_view_literals;
using namespace VYX::Platform;

struct Row {
  std::string_view bytes;
  std::size_t characters;  // each byte of an ill-formed sequence is one
  bool isWellFormed;
};

// Rows follow table 3-7 of the Unicode Standard: every edge of every range, from both sides.
const Row kRows[] = {
    {""sv, 0, true},
    {"\0"sv, 1, true},
    {"\x7F"sv, 1, true},
    {"\xC2\x80"sv, 1, true},
    {"\xDF\xBF"sv, 1, true},
    {"\xE0\xA0\x80"sv, 1, true},
    {"\xEC\xBF\xBF"sv, 1, true},
    {"\xED\x9F\xBF"sv, 1, true},
    {"\xEE\x80\x80"sv, 1, true},
    {"\xEF\xBB\xBF"sv, 1, true},
    {"\xEF\xBF\xBF"sv, 1, true},
    {"\xF0\x90\x80\x80"sv, 1, true},
    {"\xF3\xBF\xBF\xBF"sv, 1, true},
    {"\xF4\x8F\xBF\xBF"sv, 1, true},
    {"a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z"sv, 5, true},
    {"\x80"sv, 1, false},
    {"\xBF\xBF"sv, 2, false},
    {"\xC0\x80"sv, 2, false},
    {"\xC1\xBF"sv, 2, false},
    {"\xC2"sv, 1, false},
    {"\xC2\x41"sv, 2, false},
    {"\xC2\xC2\x80"sv, 2, false},
    {"\xE0\x9F\xBF"sv, 3, false},
    {"\xE2\x82"sv, 2, false},
    {"\xE2\x82\x41"sv, 3, false},
    {"\xED\xA0\x80"sv, 3, false},
    {"\xED\xBF\xBF"sv, 3, false},
    {"\xF0\x8F\xBF\xBF"sv, 4, false},
    {"\xF0\x9F\x98"sv, 3, false},
    {"\xF4\x90\x80\x80"sv, 4, false},
    {"\xF5\x80\x80\x80"sv, 4, false},
    {"\xFF\xFE"sv, 2, false},
    {"\xE2\x82\xE2\x82\xAC"sv, 3, false},
};

std::string Hex(std::string_view iBytes) {
  std::string text;
  for (const char byte : iBytes) {
    static const char kDigits[] = "0123456789ABCDEF";
    text += kDigits[static_cast<unsigned char>(byte) >> 4];
    text += kDigits[static_cast<unsigned char>(byte) & 15];
    text += ' ';
  }
  return text;
}

std::vector<std::size_t> Boundaries(std::string_view iText) {
  std::vector<std::size_t> boundaries{0};
  while (boundaries.back() < iText.size()) {
    const std::size_t offset = boundaries.back();
    boundaries.push_back(offset + CharacterLength(iText.data() + offset, iText.size() - offset));
  }
  return boundaries;
}

// The forward walk defines the characters; counting, boundaries and the backward walk have to agree with it.
void ExpectConsistent(std::string_view iText) {
  SCOPED_TRACE(Hex(iText));
  const std::vector<std::size_t> boundaries = Boundaries(iText);
  EXPECT_EQ(CountCharacters(iText), boundaries.size() - 1);
  std::size_t next = 0;
  for (std::size_t offset = 0; offset <= iText.size(); ++offset) {
    const bool isBoundary = offset == boundaries[next];
    EXPECT_EQ(IsCharacterBoundary(iText, offset), isBoundary) << "offset " << offset;
    next += isBoundary && next + 1 < boundaries.size() ? 1 : 0;
  }
  for (std::size_t index = 1; index < boundaries.size(); ++index) {
    EXPECT_EQ(PreviousCharacter(iText, boundaries[index]), boundaries[index - 1]);
    EXPECT_EQ(SkipCharacters(iText, 0, index), boundaries[index]);
    EXPECT_EQ(SkipCharacters(iText, boundaries[index - 1], 1), boundaries[index]);
  }
  EXPECT_EQ(SkipCharacters(iText, 0, boundaries.size()), std::string_view::npos);
}

TEST(Utf8, CountsAndJudgesSequences) {
  for (const Row& row : kRows) {
    SCOPED_TRACE(Hex(row.bytes));
    EXPECT_EQ(CountCharacters(row.bytes), row.characters);
    EXPECT_EQ(IsWellFormed(row.bytes), row.isWellFormed);
  }
}

TEST(Utf8, WalksAgreeOnEveryPairOfRows) {
  for (const Row& first : kRows) {
    for (const Row& second : kRows) {
      ExpectConsistent(std::string(first.bytes) + std::string(second.bytes));
    }
  }
}

TEST(Utf8, WordWiseScansAgreeAtEveryDistance) {
  for (std::size_t before = 0; before < 40; ++before) {
    for (const Row& row : kRows) {
      const std::string text = std::string(before, 'a') + std::string(row.bytes) + std::string(before % 19, 'z');
      EXPECT_EQ(CountCharacters(text), before + row.characters + before % 19) << Hex(text);
      EXPECT_EQ(IsWellFormed(text), row.isWellFormed) << Hex(text);
      const bool isAscii = row.bytes.empty() || static_cast<unsigned char>(row.bytes[0]) < 0x80;
      EXPECT_EQ(AsciiPrefix(text) == text.size(), isAscii && CountCharacters(text) == text.size()) << Hex(text);
    }
  }
}

TEST(Utf8, EveryScalarValueIsEncodedAndDecoded) {
  for (char32_t codePoint = 0; codePoint <= 0x10FFFF; ++codePoint) {
    char bytes[4];
    const std::size_t length = EncodeCodePoint(codePoint, bytes);
    const bool isSurrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    ASSERT_EQ(SequenceLength(bytes, length), isSurrogate ? 0 : length) << static_cast<std::uint32_t>(codePoint);
    ASSERT_EQ(DecodeSequence(bytes, length), codePoint);
  }
}

TEST(Utf8, ATextMayEndInsideASequence) {
  for (const std::string_view open : {"\xC2"sv, "\xE2"sv, "\xE2\x82"sv, "\xF0"sv, "\xF0\x9F"sv, "a\xF0\x9F\x98"sv}) {
    EXPECT_TRUE(EndsInsideSequence(open)) << Hex(open);
  }
  for (const std::string_view closed : {""sv, "a"sv, "\x80"sv, "\xC2\x80"sv, "\xE2\x82\xAC"sv, "\xF0\x9F\x98\x80"sv}) {
    EXPECT_FALSE(EndsInsideSequence(closed)) << Hex(closed);
  }
}

}  // namespace
