#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "VYXInfLog.h"
#include "VYXInfStringUtil.h"
#include "support/captured_stdout.h"
#include "support/pending_error.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Util = VYXInfStringUtil;
using VYX::Test::CapturedStdout;
using VYX::Test::ConsoleLevel;
using VYX::Test::FailureReturnIn;
using VYX::Test::Line;
using VYX::Test::TakePendingError;
using namespace std::string_view_literals;

constexpr const char* kSource = "VYXInfStringUtil/base64.cpp";
constexpr const char* kNothingToEncode = "The content to encode is ZERO Bytes => NOTHING to encode. ";
constexpr const char* kNothingToDecode = "The content to decode is ZERO chars => NOTHING to decode. ";

// A buffer that borrows its bytes.
QB::Binary Borrowed(std::string_view iBytes) {
  return QB::Binary(const_cast<char*>(iBytes.data()), iBytes.size(), nullptr);
}

TEST(EncodeToBase64, OfBytes) {
  const ConsoleLevel level(TRACE);
  CapturedStdout captured;
  KORUnicodeString text("before");
  EXPECT_EQ(Util::EncodeToBase64(Borrowed("fooba"), &text), S_OK);
  EXPECT_EQ(text, "Zm9vYmE=");
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("TRACE", "Encoded 5 BYTEs --to-- 8 Base64 chars.")));
}

TEST(EncodeToBase64, OfNoBytes) {
  const ConsoleLevel level(DEBUG);
  CapturedStdout captured;
  KORUnicodeString text("before");
  EXPECT_EQ(Util::EncodeToBase64(QB::Binary(), &text), S_OK);
  EXPECT_EQ(text, "");
  text = "before";
  EXPECT_EQ(Util::EncodeToBase64(Borrowed(""), &text), S_OK);
  EXPECT_EQ(text, "");
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("DEBUG", kNothingToEncode), Line("DEBUG", kNothingToEncode)));
}

TEST(EncodeToBase64, NowhereToPutTheText) {
  CapturedStdout captured;
  EXPECT_EQ(Util::EncodeToBase64(Borrowed("a"), nullptr), E_INVALIDARG);
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource)));
}

TEST(EncodeToBase64, ASizeWithoutData) {
  CapturedStdout captured;
  KORUnicodeString text("before");
  EXPECT_EQ(Util::EncodeToBase64(QB::Binary(nullptr, 3, nullptr), &text), E_FAIL);
  EXPECT_EQ(text, "");
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource)));
}

TEST(EncodeToBase64, FailuresAreSilentWhereErrorsAreFiltered) {
  const ConsoleLevel level(FATAL);
  CapturedStdout captured;
  KORUnicodeString text;
  QB::Binary data;
  EXPECT_EQ(Util::EncodeToBase64(Borrowed("a"), nullptr), E_INVALIDARG);
  EXPECT_EQ(Util::DecodeFromBase64("!", &data), E_FAIL);
  EXPECT_EQ(Util::DecodeFromBase64("!", text), E_FAIL);
  EXPECT_EQ(captured.Text(), "");
}

// The size counts in its low 32 bits; the data behind it is never read.
TEST(EncodeToBase64, FourGibibytesAndABitAreEncodedInPart) {
  char bytes[] = {'f', 'o', 'o'};
  const ConsoleLevel level(TRACE);
  CapturedStdout captured;
  KORUnicodeString text;
  EXPECT_EQ(Util::EncodeToBase64(QB::Binary(bytes, 0x100000003U, nullptr), &text), S_OK);
  EXPECT_EQ(text, "Zm9v");
  EXPECT_EQ(Util::EncodeToBase64(QB::Binary(bytes, 0x100000000U, nullptr), &text), S_OK);
  EXPECT_EQ(text, "");
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("TRACE", "Encoded 4294967299 BYTEs --to-- 4 Base64 chars."),
                                               Line("TRACE", "Encoded 4294967296 BYTEs --to-- 0 Base64 chars.")));
}

TEST(DecodeFromBase64, ToBytes) {
  const ConsoleLevel level(TRACE);
  CapturedStdout captured;
  QB::Binary data;
  EXPECT_EQ(Util::DecodeFromBase64("Zm8A", &data), S_OK);
  EXPECT_EQ(std::string_view(data.GetData(), data.GetSize()), "fo\0"sv);
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("TRACE", "Decoded from 4 Base64 chars --to-- 3 BYTEs.")));
}

TEST(DecodeFromBase64, OfNoText) {
  const ConsoleLevel level(DEBUG);
  CapturedStdout captured;
  QB::Binary data = Borrowed("before");
  KORUnicodeString text("before");
  EXPECT_EQ(Util::DecodeFromBase64("", &data), S_OK);
  EXPECT_TRUE(data.IsEmpty());
  EXPECT_EQ(Util::DecodeFromBase64("", text), S_OK);
  EXPECT_EQ(text, "");
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("DEBUG", kNothingToDecode), Line("DEBUG", kNothingToDecode)));
}

TEST(DecodeFromBase64, NowhereToPutTheBytes) {
  const ConsoleLevel level(TRACE);
  CapturedStdout captured;
  EXPECT_EQ(Util::DecodeFromBase64("Zm9v", static_cast<QB::Binary*>(nullptr)), E_INVALIDARG);
  EXPECT_THAT(captured.LogLines(), IsEmpty());
}

TEST(DecodeFromBase64, RefusedTextIsReportedAndItsFaultStaysPending) {
  CapturedStdout captured;
  QB::Binary data = Borrowed("before");
  EXPECT_EQ(Util::DecodeFromBase64("Zm9v Zm9v", &data), E_FAIL);
  EXPECT_TRUE(data.IsEmpty());
  EXPECT_EQ(data.GetData(), nullptr);
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("ERROR", "The Base64 decoding failed. (Base64 input was 9 chars / ")));
  EXPECT_EQ(TakePendingError(E_FAIL), "Cannot decode Base64 text: a character outside the alphabet at position 4");
}

TEST(DecodeFromBase64, RefusedTextTracesItsFaultInTheTextForm) {
  CapturedStdout captured;
  KORUnicodeString text("before");
  EXPECT_EQ(Util::DecodeFromBase64("Zm9\u00E9", text), E_FAIL);
  EXPECT_EQ(text, "");
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("ERROR", "The Base64 decoding failed. (Base64 input was 4 chars / "),
                          Line("ERROR", "Cannot decode Base64 text: a character outside the alphabet at position 3"),
                          FailureReturnIn(kSource)));
  EXPECT_EQ(TakePendingError(E_FAIL), "(none)");
}

TEST(DecodeFromBase64, AZeroByteDoesNotEndTheText) {
  CapturedStdout captured;
  QB::Binary data;
  EXPECT_EQ(Util::DecodeFromBase64(KORUnicodeString("Zm9v\0Zm9v"sv), &data), E_FAIL);
  EXPECT_TRUE(data.IsEmpty());
  TakePendingError(E_FAIL);
}

TEST(DecodeFromBase64, BytesThatAreNoUtf8AreNoText) {
  KORUnicodeString encoded;
  ASSERT_EQ(Util::EncodeToBase64(Borrowed("a\xFF"), &encoded), S_OK);
  CapturedStdout captured;
  KORUnicodeString text("before");
  EXPECT_EQ(Util::DecodeFromBase64(encoded, text), E_FAIL);
  EXPECT_EQ(text, "");
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource)));
}

TEST(Base64Text, TextsSurvive) {
  for (const std::string_view bytes :
       {"a"sv, "abc"sv, "\u00E9t\u00E9 \u20AC \U0001F600"sv, "a\0b"sv, "a text of more than twenty-two bytes"sv}) {
    CapturedStdout captured;
    const KORUnicodeString text(bytes);
    KORUnicodeString encoded;
    KORUnicodeString decoded;
    EXPECT_EQ(Util::EncodeToBase64(text, encoded), S_OK);
    EXPECT_EQ(Util::DecodeFromBase64(encoded, decoded), S_OK);
    EXPECT_EQ(decoded, text);
    EXPECT_EQ(captured.Text(), "");
  }
}

TEST(Base64Text, AnEmptyTextWarnsOnTheWay) {
  const ConsoleLevel level(DEBUG);
  CapturedStdout captured;
  KORUnicodeString encoded("before");
  EXPECT_EQ(Util::EncodeToBase64("", encoded), S_OK);
  EXPECT_EQ(encoded, "");
  EXPECT_THAT(captured.LogLines(), ElementsAre(Line("WARN", "ConvertToUTF8 returned ZERO bytes. Original string is: "),
                                               Line("", ""), Line("DEBUG", kNothingToEncode)));
}

TEST(Base64Text, SourceAndTargetMayBeTheSame) {
  KORUnicodeString text("fooba");
  EXPECT_EQ(Util::EncodeToBase64(text, text), S_OK);
  EXPECT_EQ(text, "Zm9vYmE=");
  EXPECT_EQ(Util::DecodeFromBase64(text, text), S_OK);
  EXPECT_EQ(text, "fooba");
}

}  // namespace
