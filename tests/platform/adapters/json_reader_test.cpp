#include "platform/adapters/json_reader.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

using namespace std::string_literals;
using VYX::Adapters::JsonDocument;
using VYX::Adapters::JsonFailure;
using VYX::Adapters::JsonKind;
using VYX::Adapters::JsonNode;
using VYX::Adapters::JsonWalk;
using VYX::Adapters::kJsonMaxDepth;

namespace {

std::string Describe(const JsonFailure& iFailure) {
  return std::to_string(iFailure.line) + ":" + std::to_string(iFailure.column) + " (" +
         std::to_string(iFailure.offset) + ") " + iFailure.reason;
}

// A document's values in one line: kinds by their first letter, texts with their length.
std::string Render(JsonNode iNode) {
  std::string text;
  switch (iNode.Kind()) {
    case JsonKind::Null:
      return "null";
    case JsonKind::Boolean:
      return iNode.Boolean() ? "true" : "false";
    case JsonKind::Number: {
      char buffer[40];
      std::snprintf(buffer, sizeof buffer, "%.17g", iNode.Number());
      return buffer;
    }
    case JsonKind::String:
      return "'" + std::string(iNode.Text()) + "'";
    default:
      break;
  }
  const bool isObject = iNode.Kind() == JsonKind::Object;
  for (JsonWalk walk(iNode); walk.Next();) {
    text += text.empty() ? "" : ",";
    text += isObject ? std::string(walk.Key()) + ":" : "";
    text += Render(walk.Value());
  }
  return (isObject ? "{" : "[") + text + (isObject ? "}" : "]");
}

std::string Read(std::string_view iText) {
  JsonDocument document;
  JsonFailure failure;
  return document.Parse(iText, failure) ? Render(document.Root()) : Describe(failure);
}

double ReadNumber(std::string_view iText) {
  JsonDocument document;
  JsonFailure failure;
  EXPECT_TRUE(document.Parse(iText, failure)) << Describe(failure);
  EXPECT_EQ(document.Root().Kind(), JsonKind::Number);
  return document.Root().Number();
}

std::string Repeated(std::string_view iPiece, std::size_t iCount) {
  std::string text;
  for (std::size_t i = 0; i < iCount; ++i) {
    text += iPiece;
  }
  return text;
}

std::string Nested(std::size_t iLevels, std::string_view iOpen, std::string_view iInner, std::string_view iClose) {
  return Repeated(iOpen, iLevels) + std::string(iInner) + Repeated(iClose, iLevels);
}

struct Row {
  std::string text;
  std::string outcome;
};

void ExpectRows(const std::vector<Row>& iRows) {
  for (const Row& row : iRows) {
    EXPECT_EQ(Read(row.text), row.outcome) << "text: " << row.text;
  }
}

TEST(JsonReader, ReadsWellFormedTexts) {
  ExpectRows({
      {"null", "null"},
      {" true ", "true"},
      {"false", "false"},
      {"\"\"", "''"},
      {"{}", "{}"},
      {"[]", "[]"},
      {"\t\r\n[ 1 , 2 ]\n", "[1,2]"},
      {"\xEF\xBB\xBF{\"a\":1}", "{a:1}"},
      {R"({"b":1,"a":[true,null,{"c":"d"}],"":{}})", "{b:1,a:[true,null,{c:'d'}],:{}}"},
      {R"({"a":1,"b":2,"a":3})", "{a:1,b:2,a:3}"},
      {R"(["\"\\\/\b\f\n\r\t","\u0041\u00e9\u20ac\ud83d\ude00"])",
       "['\"\\/\b\f\n\r\t','A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80']"},
      {"[\"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\xEE\x80\x80\xF4\x8F\xBF\xBF\"]",
       "['\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\xEE\x80\x80\xF4\x8F\xBF\xBF']"},
      {"[\"\x7F\"]", "['\x7F']"},
      {"[0,-1,1.5,1E2,1e+2,1e-2]", "[0,-1,1.5,100,100,0.01]"},
  });
}

TEST(JsonReader, RefusesWithPlaceAndReason) {
  const std::string value = "a value is missing";
  ExpectRows({
      {"", "1:1 (0) the text is empty"},
      {"\xEF\xBB\xBF", "1:1 (3) the text is empty"},
      {" \n\t ", "1:1 (0) the text holds nothing but white space"},
      {"[1,2", "1:5 (4) an array is not closed"},
      {"{\"a\":1", "1:7 (6) an object is not closed"},
      {"{\"a\"", "1:5 (4) an object is not closed"},
      {"{\"a\":", "1:6 (5) an object is not closed"},
      {"[1,\n2,\n  x]", "3:3 (9) " + value},
      {"\xEF\xBB\xBF[x]", "1:2 (4) " + value},
      {"\xEF\xBB\xBF\xEF\xBB\xBF[]", "1:1 (3) " + value},
      {"[\"\xC3\xA9\xC3\xA9\", x]", "1:8 (9) " + value},
      {"[1,]", "1:4 (3) a comma before the end of an array"},
      {"{\"a\":1,}", "1:8 (7) a comma before the end of an object"},
      {"[,1]", "1:2 (1) " + value},
      {"]", "1:1 (0) " + value},
      {"[1}", "1:3 (2) a comma or the end of an array is missing"},
      {"[1 2]", "1:4 (3) a comma or the end of an array is missing"},
      {"{\"a\":1]", "1:7 (6) a comma or the end of an object is missing"},
      {"{\"a\" 1}", "1:6 (5) the colon behind a key is missing"},
      {"{a:1}", "1:2 (1) a key in double quotes is missing"},
      {"{'a':1}", "1:2 (1) a key in double quotes is missing"},
      {"{1:1}", "1:2 (1) a key in double quotes is missing"},
      {"{\"a\":}", "1:6 (5) " + value},
      {"[tru]", "1:2 (1) a value is misspelt"},
      {"[True]", "1:2 (1) " + value},
      {"[NaN]", "1:2 (1) " + value},
      {"[nan]", "1:2 (1) a value is misspelt"},
      {"[truex]", "1:6 (5) a comma or the end of an array is missing"},
      {"[Infinity]", "1:2 (1) " + value},
      {"[1] // end", "1:5 (4) something follows the end of the document"},
      {"/* a */[1]", "1:1 (0) " + value},
      {"{} {}", "1:4 (3) something follows the end of the document"},
      {"{}\n]", "2:1 (3) something follows the end of the document"},
      {"1 2", "1:3 (2) something follows the end of the document"},
      {"[1]\0"s, "1:4 (3) something follows the end of the document"},
      {"\x01[1]", "1:1 (0) " + value},
      {"[\x01]", "1:2 (1) " + value},
      {"[1\f]", "1:3 (2) a comma or the end of an array is missing"},
      {"[\xC2\xA0]", "1:2 (1) " + value},
      {"{\0\"\0a\0"s, "1:1 (0) the text is not UTF-8; it looks like UTF-16"},
      {"\0{\0\"\0a"s, "1:1 (0) the text is not UTF-8; it looks like UTF-16"},
      {"\xFF\xFE{\0}\0"s, "1:1 (0) the text is not UTF-8; it looks like UTF-16"},
      {"\xFE\xFF\0{\0}"s, "1:1 (0) the text is not UTF-8; it looks like UTF-16"},
  });
}

TEST(JsonReader, RefusesIllFormedStrings) {
  const std::string utf8 = "a string is not well-formed UTF-8";
  const std::string surrogate = "an escaped surrogate without its other half";
  const std::string control = "a control character in a string has to be escaped";
  const std::string hex = "an escape \\u without four hexadecimal digits";
  ExpectRows({
      {"[\"a", "1:2 (1) a string is not closed"},
      {"{\"a", "1:2 (1) a string is not closed"},
      {"[\"a\\\"]", "1:2 (1) a string is not closed"},
      {"\"\\", "1:2 (1) an unknown escape in a string"},
      {R"(["a\x"])", "1:4 (3) an unknown escape in a string"},
      {R"(["\'"])", "1:3 (2) an unknown escape in a string"},
      {"[\"\\\0\"]"s, "1:3 (2) an unknown escape in a string"},
      {R"(["\U0041"])", "1:3 (2) an unknown escape in a string"},
      {R"(["\u12"])", "1:3 (2) " + hex},
      {R"(["\u12G4"])", "1:3 (2) " + hex},
      {R"(["\u-123"])", "1:3 (2) " + hex},
      {R"(["\u 123"])", "1:3 (2) " + hex},
      {R"("\u12)", "1:2 (1) " + hex},
      {R"(["\ud800"])", "1:3 (2) " + surrogate},
      {R"(["\ud800x"])", "1:3 (2) " + surrogate},
      {R"(["\ud800\n"])", "1:3 (2) " + surrogate},
      {R"(["\ud800\u0041"])", "1:3 (2) " + surrogate},
      {R"(["\ud800\ud800\udc00"])", "1:3 (2) " + surrogate},
      {R"(["\udc00"])", "1:3 (2) " + surrogate},
      {R"({"\udfff":1})", "1:3 (2) " + surrogate},
      {"[\"a\x80\"]", "1:4 (3) " + utf8},
      {"[\"a\xC3\"]", "1:4 (3) " + utf8},
      {"[\"\xC0\x80\"]", "1:3 (2) " + utf8},
      {"[\"\xC1\xBF\"]", "1:3 (2) " + utf8},
      {"[\"\xE0\x80\x80\"]", "1:3 (2) " + utf8},
      {"[\"\xE2\x82\"]", "1:3 (2) " + utf8},
      {"[\"\xED\xA0\x80\"]", "1:3 (2) " + utf8},
      {"[\"\xED\xB0\x80\"]", "1:3 (2) " + utf8},
      {"[\"\xF0\x80\x80\x80\"]", "1:3 (2) " + utf8},
      {"[\"\xF0\x9F\x98\"]", "1:3 (2) " + utf8},
      {"[\"\xF4\x90\x80\x80\"]", "1:3 (2) " + utf8},
      {"[\"\xF5\x80\x80\x80\"]", "1:3 (2) " + utf8},
      {"[\"\xFF\"]", "1:3 (2) " + utf8},
      {"[\"a\bb\"]", "1:4 (3) " + control},
      {"[\"a\tb\"]", "1:4 (3) " + control},
      {"[\"a\nb\"]", "1:4 (3) " + control},
      {"[\"a\fb\"]", "1:4 (3) " + control},
      {"[\"a\rb\"]", "1:4 (3) " + control},
      {"{\"a\nb\":1}", "1:4 (3) " + control},
  });
}

TEST(JsonReader, RefusesIllFormedNumbers) {
  const std::string range = "a number is beyond the range of double";
  ExpectRows({
      {"[01]", "1:2 (1) a number with a leading zero"},
      {"[-01]", "1:3 (2) a number with a leading zero"},
      {"[00]", "1:2 (1) a number with a leading zero"},
      {"[-]", "1:3 (2) a minus sign without a digit behind it"},
      {"-", "1:2 (1) a minus sign without a digit behind it"},
      {"[-Infinity]", "1:3 (2) a minus sign without a digit behind it"},
      {"[--1]", "1:3 (2) a minus sign without a digit behind it"},
      {"[+1]", "1:2 (1) a value is missing"},
      {"[.5]", "1:2 (1) a value is missing"},
      {"[1.]", "1:4 (3) a decimal point without a digit behind it"},
      {"[1.e5]", "1:4 (3) a decimal point without a digit behind it"},
      {"[1e]", "1:4 (3) an exponent without a digit"},
      {"[1e+]", "1:5 (4) an exponent without a digit"},
      {"[0x1]", "1:3 (2) a comma or the end of an array is missing"},
      {"[1_000]", "1:3 (2) a comma or the end of an array is missing"},
      {"[1e400]", "1:2 (1) " + range},
      {"[-1e400]", "1:2 (1) " + range},
      {"[1e99999999999999999999]", "1:2 (1) " + range},
      {"[123E45678901234567890123]", "1:2 (1) " + range},
      {"[1.7976931348623159e308]", "1:2 (1) " + range},
      {"[1" + std::string(400, '0') + "]", "1:2 (1) " + range},
      {"[0.001e312]", "1:2 (1) " + range},
  });
}

TEST(JsonReader, ReadsNumbersOfAnyLengthAsTheNearestDouble) {
  const struct {
    std::string text;
    double number;
  } rows[] = {
      {"9007199254740993", 9007199254740992.0},
      {"9223372036854775807", 9223372036854775808.0},
      {"9223372036854775808", 9223372036854775808.0},
      {"-9223372036854775808", -9223372036854775808.0},
      {"-9223372036854775809", -9223372036854775808.0},
      {"18446744073709551615", 18446744073709551616.0},
      {"18446744073709551616", 18446744073709551616.0},
      {"123456789012345678901234567890", 123456789012345678901234567890.0},
      {"-123456789012345678901234567890", -123456789012345678901234567890.0},
      {"1" + std::string(308, '0'), 1e308},
      {"17976931348623157" + std::string(292, '0'), DBL_MAX},
      {"1" + std::string(399, '0') + "e-200", 1e199},
      {"0." + std::string(5000, '0') + "1e5001", 1.0},
      {"1" + std::string(100000, '0') + "e-100000", 1.0},
      {"0.1", 0.1},
      {"2.2250738585072011e-308", 2.2250738585072011e-308},
      {"4.9e-324", 4.9406564584124654e-324},
      {"1e-400", 0.0},
      {"1e-99999999999999999999", 0.0},
      {"0e99999999999999999999", 0.0},
      {"1.7976931348623157e308", DBL_MAX},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ReadNumber(row.text), row.number) << row.text;
  }
}

TEST(JsonReader, ReadsAllNumbersOfATextThatNeedsTheStrictReading) {
  EXPECT_EQ(Read("[123456789012345678901234567890,1e-400,-1e-400,-0,0.5,18446744073709551615,\"-0\",-7]"),
            "[1.2345678901234568e+29,0,-0,-0,0.5,1.8446744073709552e+19,'-0',-7]");
}

TEST(JsonReader, KeepsTheSignOfNegativeZero) {
  for (const char* const text : {"-0", "-0.0", "-0e0", "-0E+5", "-0.000", " -0 ", "-1e-400"}) {
    const double number = ReadNumber(text);
    EXPECT_EQ(number, 0) << text;
    EXPECT_TRUE(std::signbit(number)) << text;
  }
  EXPECT_FALSE(std::signbit(ReadNumber("0")));
  ExpectRows({
      {"[-0]", "[-0]"},
      {"[1,-0,2]", "[1,-0,2]"},
      {"[1,-0\n]", "[1,-0]"},
      {"{\"a\":-0}", "{a:-0}"},
      {"{\"a\":-0,\"b\":\"-0\"}", "{a:-0,b:'-0'}"},
      {"[\"2018-07-08\",-0]", "['2018-07-08',-0]"},
      {"[\"a,-0,b\"]", "['a,-0,b']"},
      {"[\"2018-07-08\"]", "['2018-07-08']"},
  });
}

TEST(JsonReader, FindsNegativeZeroAtEveryPlaceOfALongText) {
  for (const std::size_t length : {4090U, 4091U, 4092U, 4093U, 4094U, 4095U, 4096U, 4097U, 8191U, 8192U}) {
    JsonDocument document;
    JsonFailure failure;
    ASSERT_TRUE(document.Parse("[\"" + std::string(length, 'x') + "\",-0,1]", failure)) << Describe(failure);
    JsonWalk walk(document.Root());
    ASSERT_TRUE(walk.Next() && walk.Next());
    EXPECT_TRUE(std::signbit(walk.Value().Number())) << length;
  }
}

TEST(JsonReader, KeepsIntegersThatFit) {
  JsonDocument document;
  JsonFailure failure;
  ASSERT_TRUE(document.Parse("[18446744073709551615,-9223372036854775808,7,1.0,\"1\",18446744073709551616]", failure));
  const struct {
    bool isUnsigned, isSigned;
    std::uint64_t asUnsigned;
    std::int64_t asSigned;
  } rows[] = {{true, false, std::numeric_limits<std::uint64_t>::max(), 1},
              {false, true, 1, std::numeric_limits<std::int64_t>::min()},
              {true, true, 7, 7},
              {false, false, 1, 1},
              {false, false, 1, 1},
              {false, false, 1, 1}};
  JsonWalk walk(document.Root());
  for (const auto& row : rows) {
    ASSERT_TRUE(walk.Next());
    std::uint64_t asUnsigned = 1;
    std::int64_t asSigned = 1;
    EXPECT_EQ(walk.Value().Unsigned(asUnsigned), row.isUnsigned);
    EXPECT_EQ(walk.Value().Signed(asSigned), row.isSigned);
    EXPECT_EQ(asUnsigned, row.asUnsigned);
    EXPECT_EQ(asSigned, row.asSigned);
  }
}

TEST(JsonReader, ToleratesTheControlCharactersThatOurWriterLeavesRaw) {
  for (char control = 0; control < 0x20; ++control) {
    const std::string inner = "a" + std::string(1, control) + "b";
    const bool isTolerated = std::string_view("\b\t\n\f\r").find(control) == std::string_view::npos;
    const std::string outcome = Read("{\"" + inner + "\":\"" + inner + "\"}");
    if (isTolerated) {
      EXPECT_EQ(outcome, "{" + inner + ":'" + inner + "'}") << int{control};
    } else {
      EXPECT_EQ(outcome, "1:4 (3) a control character in a string has to be escaped") << int{control};
    }
  }
}

TEST(JsonReader, KeepsZeroCharactersAndEndsStringsWithAZeroByte) {
  JsonDocument document;
  JsonFailure failure;
  ASSERT_TRUE(document.Parse(R"({"k\u0000k":"a\u0000b"})", failure));
  JsonWalk walk(document.Root());
  ASSERT_TRUE(walk.Next());
  EXPECT_EQ(walk.Key(), "k\0k"s);
  EXPECT_EQ(walk.Value().Text(), "a\0b"s);
  EXPECT_EQ(walk.Key().data()[3], '\0');
  EXPECT_EQ(walk.Value().Text().data()[3], '\0');
}

TEST(JsonReader, AcceptsExactlyTheGreatestDepth) {
  const std::string tooDeep = "arrays and objects are nested more than 512 deep";
  for (const char* const inner : {"", "1", "\"x\""}) {
    const std::string text = Nested(kJsonMaxDepth, "[", inner, "]");
    EXPECT_EQ(Read(text), Nested(kJsonMaxDepth, "[", inner[0] == '"' ? "'x'" : inner, "]"));
    EXPECT_EQ(Read("[" + text + "]"), "1:513 (512) " + tooDeep);
    EXPECT_EQ(Read("{\"a\":" + text + "}"), "1:517 (516) " + tooDeep);
  }
  const std::string objects = Nested(kJsonMaxDepth - 1, "{\"a\":", "{}", "}");
  EXPECT_EQ(Read(objects), Nested(kJsonMaxDepth - 1, "{a:", "{}", "}"));
  EXPECT_EQ(Read("[" + objects + "]"), "1:2557 (2556) " + tooDeep);
  EXPECT_EQ(Read(Nested(kJsonMaxDepth, "{\"a\":", "1", "}")), Nested(kJsonMaxDepth, "{a:", "1", "}"));
}

TEST(JsonReader, ReadsShallowTextsAfterADeepOneWithTheSameMemory) {
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(Read(Nested(kJsonMaxDepth, "[", "1", "]")), Nested(kJsonMaxDepth, "[", "1", "]"));
    EXPECT_EQ(Read("[1]"), "[1]");
  }
}

TEST(JsonReader, RefusesDepthBombs) {
  const std::string tooDeep = "arrays and objects are nested more than 512 deep";
  EXPECT_EQ(Read(std::string(1000000, '[')), "1:513 (512) " + tooDeep);
  EXPECT_EQ(Read(Nested(1000000, "[", "", "]")), "1:513 (512) " + tooDeep);
  EXPECT_EQ(Read(Repeated("{\"a\":", 500000)), "1:2561 (2560) " + tooDeep);
  EXPECT_EQ(Read("[-0," + std::string(1000000, '[')), "1:516 (515) " + tooDeep);
  EXPECT_EQ(Read(std::string(1000000, ']')), "1:1 (0) a value is missing");
}

TEST(JsonReader, RefusesOtherEncodings) {
  const char* const kUtf16 = "1:1 (0) the text is not UTF-8; it looks like UTF-16";
  ExpectRows({
      {"\xFE\xFF\0{\0}"s, kUtf16},
      {"\xFF\xFE{\0}\0"s, kUtf16},
      {"\0{\0}"s, kUtf16},
      {"{\0}\0"s, kUtf16},
      {"\0\0\0{"s, "1:1 (0) a value is missing"},
      {"\xEF\xBB\xBF\xEF\xBB\xBF{}", "1:1 (3) a value is missing"},
  });
}

TEST(JsonReader, RefusesLongUselessTexts) {
  EXPECT_EQ(Read(std::string(8000000, ' ')), "1:1 (0) the text holds nothing but white space");
  EXPECT_EQ(Read(std::string(8000000, '"')), "1:3 (2) something follows the end of the document");
  EXPECT_EQ(Read("\"" + std::string(8000000, 'x')), "1:1 (0) a string is not closed");
  EXPECT_EQ(Read("[" + Repeated("\n", 3000000) + "x"), "3000001:1 (3000001) a value is missing");
}

TEST(JsonReader, CountsMembersAndElements) {
  JsonDocument document;
  JsonFailure failure;
  ASSERT_TRUE(document.Parse(R"([[],[1],[1,[2,3]],{},{"a":{"b":1,"c":2},"d":3},7])", failure));
  EXPECT_EQ(document.Root().Count(), 6U);
  std::vector<std::size_t> counts;
  for (JsonWalk walk(document.Root()); walk.Next();) {
    counts.push_back(walk.Value().Count());
  }
  EXPECT_EQ(counts, (std::vector<std::size_t>{0, 1, 2, 0, 2, 0}));
}

TEST(JsonReader, CountsBeyondWhatTheTapeCanHold) {
  constexpr std::size_t kElements = 0xFFFFFF + 3;
  JsonDocument document;
  JsonFailure failure;
  ASSERT_TRUE(document.Parse("[" + Repeated("1,", kElements - 1) + "1]", failure)) << Describe(failure);
  EXPECT_EQ(document.Root().Count(), kElements);
}

TEST(JsonReader, AnswersNothingForOtherKindsAndEmptyDocuments) {
  JsonDocument document;
  EXPECT_EQ(document.Root().Kind(), JsonKind::Null);
  for (const char* const text : {"null", "true", "1.5", "\"a\"", "[1]", "{\"a\":1}"}) {
    JsonFailure failure;
    ASSERT_TRUE(document.Parse(text, failure));
    const JsonNode root = document.Root();
    EXPECT_EQ(root.Boolean(), root.Kind() == JsonKind::Boolean) << text;
    EXPECT_EQ(root.Number() != 0, root.Kind() == JsonKind::Number) << text;
    EXPECT_EQ(root.Text(), root.Kind() == JsonKind::String ? "a" : "") << text;
    const bool isParent = root.Kind() == JsonKind::Array || root.Kind() == JsonKind::Object;
    EXPECT_EQ(JsonWalk(root).Next(), isParent) << text;
    EXPECT_EQ(root.Count(), isParent ? 1U : 0U) << text;
  }
}

TEST(JsonReader, HoldsNothingAfterARefusedText) {
  JsonDocument document;
  JsonFailure failure;
  ASSERT_TRUE(document.Parse("[1]", failure));
  EXPECT_FALSE(document.Parse("[1", failure));
  EXPECT_EQ(document.Root().Kind(), JsonKind::Null);
  EXPECT_TRUE(document.Parse("[2]", failure));
  EXPECT_EQ(Render(document.Root()), "[2]");
}

TEST(JsonReader, RefusesAViewOfNothing) {
  EXPECT_EQ(Read(std::string_view()), "1:1 (0) the text is empty");
}

TEST(JsonReader, FindsAValueAgainByItsPlace) {
  JsonDocument document;
  JsonFailure failure;
  ASSERT_TRUE(document.Parse(R"({"a":[1,2],"b":"c"})", failure));
  std::vector<std::size_t> places;
  for (JsonWalk walk(document.Root()); walk.Next();) {
    places.push_back(walk.Value().Place());
  }
  const JsonDocument moved = std::move(document);
  ASSERT_EQ(places.size(), 2U);
  EXPECT_EQ(Render(moved.At(places[0])), "[1,2]");
  EXPECT_EQ(Render(moved.At(places[1])), "'c'");
}

TEST(JsonReader, ReadsTextsOfEverySizeAroundTheSizesOfItsMemory) {
  for (const std::size_t size :
       {1U, 31U, 32U, 63U, 64U, 65U, 4095U, 4096U, 4097U, 1048575U, 1048576U, 1048577U, 2000000U}) {
    const std::string inner(size, 'x');
    EXPECT_EQ(Read("\"" + inner + "\""), "'" + inner + "'") << size;
    EXPECT_EQ(Read("[" + std::string(size, ' ') + "7]"), "[7]") << size;
  }
}

}  // namespace
