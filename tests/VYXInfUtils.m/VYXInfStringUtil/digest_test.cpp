#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "KORSysTS/KORSysCRC32.h"
#include "VYXInfLog.h"
#include "VYXInfStringUtil.h"
#include "support/captured_stdout.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Util = VYXInfStringUtil;
using Algo = VYXInfStringUtil::HashAlgo;
using VYX::Test::CapturedStdout;
using VYX::Test::ConsoleLevel;
using VYX::Test::Line;
using namespace std::string_view_literals;

std::string HashOf(std::string_view iText, Algo iAlgo) {
  KORUnicodeString hash;
  EXPECT_EQ(Util::Base64Hash(KORUnicodeString(iText), iAlgo, hash), S_OK);
  return hash.ConvertToChar();
}

// The digests of RFC 1321 and FIPS 180-4 for "abc", in Base64.
TEST(Base64Hash, EachAlgorithm) {
  EXPECT_EQ(HashOf("abc", Algo::MD5), "kAFQmDzST7DWlj99KOF/cg==");
  EXPECT_EQ(HashOf("abc", Algo::SHA1), "qZk+NkcGgWq6PiVxeFDCbJzQ2J0=");
  EXPECT_EQ(HashOf("abc", Algo::SHA256), "ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0=");
  EXPECT_EQ(HashOf("abc", Algo::SHA512),
            "3a81oZNherrMQXNJriBBMRLm+k6JqX6iCp7u5ktV05ohkpkqJ0/BqDa6PCOj/uu9RU1EI2Q86A4qmslPpUyknw==");
}

TEST(Base64Hash, TheNumberingIsStable) {
  EXPECT_EQ(HashOf("abc", static_cast<Algo>(0)), HashOf("abc", Algo::MD5));
  EXPECT_EQ(HashOf("abc", static_cast<Algo>(1)), HashOf("abc", Algo::SHA1));
  EXPECT_EQ(HashOf("abc", static_cast<Algo>(2)), HashOf("abc", Algo::SHA256));
  EXPECT_EQ(HashOf("abc", static_cast<Algo>(3)), HashOf("abc", Algo::SHA512));
}

TEST(Base64Hash, OfNoText) {
  EXPECT_EQ(HashOf("", Algo::MD5), "1B2M2Y8AsgTpgAmY7PhCfg==");
}

// As many bytes are hashed as there are characters.
TEST(Base64Hash, CountsCharactersButHashesBytes) {
  EXPECT_EQ(HashOf("\u00E9", Algo::SHA256), HashOf("\xC3", Algo::SHA256));
  EXPECT_EQ(HashOf("ab\U0001F600", Algo::SHA1), HashOf("ab\xF0", Algo::SHA1));
  EXPECT_EQ(HashOf("a\u00E9\u00E8", Algo::MD5), HashOf("a\u00E9\u20AC", Algo::MD5));
  EXPECT_NE(HashOf("a\u00E9\u00E8", Algo::MD5), HashOf("a\u00E8\u00E9", Algo::MD5));
  EXPECT_NE(HashOf("a\0b"sv, Algo::MD5), HashOf("a", Algo::MD5));
}

TEST(Base64Hash, AnUnknownAlgorithmIsRefusedInSilence) {
  for (const int value : {4, -1, 1000}) {
    const ConsoleLevel level(TRACE);
    CapturedStdout captured;
    KORUnicodeString hash("before");
    EXPECT_EQ(Util::Base64Hash("abc", static_cast<Algo>(value), hash), E_INVALIDARG);
    EXPECT_EQ(hash, "before");
    EXPECT_THAT(captured.LogLines(), IsEmpty());
  }
}

TEST(Base64Hash, TracesItsEncoding) {
  const ConsoleLevel level(TRACE);
  CapturedStdout captured;
  KORUnicodeString hash;
  EXPECT_EQ(Util::Base64Hash("abc", Algo::SHA1, hash), S_OK);
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("TRACE", "Encoded 20 BYTEs --to-- 28 Base64 chars.")));
}

TEST(Base64Hash, TheTextMayBeTheTarget) {
  KORUnicodeString text("abc");
  EXPECT_EQ(Util::Base64Hash(text, Algo::MD5, text), S_OK);
  EXPECT_EQ(text, "kAFQmDzST7DWlj99KOF/cg==");
}

TEST(GetCRC32Value, CountsCharactersButReadsBytes) {
  EXPECT_EQ(Util::GetCRC32Value("123456789"), 0xCBF43926U);
  EXPECT_EQ(Util::GetCRC32Value(""), 0U);
  EXPECT_EQ(Util::GetCRC32Value("\u00E9"), KORSysCRC32("\xC3", 1));
  EXPECT_EQ(Util::GetCRC32Value("\U0001F600x"), KORSysCRC32("\xF0\x9F", 2));
  EXPECT_EQ(Util::GetCRC32Value(KORUnicodeString("a\0b"sv)), KORSysCRC32("a\0b", 3));
}

}  // namespace
