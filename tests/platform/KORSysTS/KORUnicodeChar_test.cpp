#include "KORSysTS/KORUnicodeChar.h"

#include <gtest/gtest.h>

#include <sstream>

#include "KORSysTS/KORUnicodeString.h"

namespace {

TEST(KORUnicodeChar, EmptyIsTheZeroCharacter) {
  const KORUnicodeChar empty;
  EXPECT_EQ(empty.GetCodePoint(), U'\0');
  EXPECT_TRUE(empty == '\0');
  EXPECT_EQ(empty.ConvertToChar(), std::string(1, '\0'));
}

TEST(KORUnicodeChar, AsciiIsItself) {
  KORUnicodeChar character = 'a';
  EXPECT_EQ(static_cast<char>(character), 'a');
  EXPECT_TRUE(character.IsAscii());
  EXPECT_FALSE(character.IsByte());
  character = 'b';
  EXPECT_TRUE(character == 'b');
  EXPECT_EQ(character.ConvertToChar(), "b");
}

TEST(KORUnicodeChar, CodePointBeyondAscii) {
  const KORUnicodeChar euro(U'\u20AC');
  EXPECT_EQ(euro.GetCodePoint(), U'\u20AC');
  EXPECT_TRUE(euro == U'\u20AC');
  EXPECT_EQ(static_cast<char>(euro), '\x1A');
  EXPECT_EQ(euro.ConvertToChar(), "\xE2\x82\xAC");
  EXPECT_EQ(KORUnicodeChar(U'\U0001F600').ConvertToChar(), "\xF0\x9F\x98\x80");
}

TEST(KORUnicodeChar, NoScalarValueBecomesReplacement) {
  for (const std::uint32_t value : {0xD800U, 0xDFFFU, 0x110000U, 0xFFFFFFFFU}) {
    EXPECT_EQ(KORUnicodeChar(static_cast<char32_t>(value)).GetCodePoint(), U'\uFFFD') << value;
  }
}

TEST(KORUnicodeChar, ByteOfIllFormedTextIsItsOwnCharacter) {
  const KORUnicodeChar byte = '\xE9';
  EXPECT_TRUE(byte.IsByte());
  EXPECT_FALSE(byte.IsAscii());
  EXPECT_EQ(byte.GetCodePoint(), U'\uFFFD');
  EXPECT_EQ(static_cast<char>(byte), '\xE9');
  EXPECT_TRUE(byte == '\xE9');
  EXPECT_FALSE(byte == KORUnicodeChar(U'\u00E9'));
  EXPECT_FALSE(byte == U'\u00E9');
  EXPECT_FALSE(byte == U'\uFFFD');
  EXPECT_FALSE(byte == static_cast<char32_t>(0x1100E9));
  EXPECT_EQ(byte.ConvertToChar(), "\xE9");
}

TEST(KORUnicodeChar, StreamsItsBytes) {
  std::ostringstream stream;
  stream << KORUnicodeChar('a') << KORUnicodeChar(U'\u20AC') << KORUnicodeChar('\xFF');
  EXPECT_EQ(stream.str(), "a\xE2\x82\xAC\xFF");
}

TEST(KORUnicodeChar, TakingATextApartAndTogetherChangesNothing) {
  const KORUnicodeString text("a\xC3\xA9\xE2\x82 \xFF\xF0\x9F\x98\x80\xF0\x9F");
  KORUnicodeString rebuilt;
  for (int position = 0; position < text.GetLengthInChar(); ++position) {
    rebuilt += text[position];
  }
  EXPECT_EQ(rebuilt, text);
}

}  // namespace
