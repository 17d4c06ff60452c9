#include "Quillbase/JSON/JOStream.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "KORSysTS/KORUnicodeString.h"
#include "Quillbase/JSON/JIStream.h"

using JSON::JIStream;
using JSON::JOStream;
using namespace std::string_view_literals;

namespace {

std::string Rewritten(std::string_view iText) {
  JIStream stream;
  EXPECT_TRUE(stream.Parse(KORUnicodeString(iText), false)) << iText;
  return JOStream(stream).Stringify().ConvertToChar();
}

TEST(JOStream, WritesTheEmptyObject) {
  EXPECT_EQ(JOStream().Stringify(), "{}");
}

TEST(JOStream, WritesMembersInTheOrderOfAdding) {
  JOStream writer;
  writer.Add("z", std::uint64_t{1500});
  writer.Add("a", KORUnicodeString("microseconds"));
  writer.Add("m", false);
  writer.Add("b", true);
  EXPECT_EQ(writer.Stringify(), R"({"z":1500,"a":"microseconds","m":false,"b":true})");
}

TEST(JOStream, WritesNestedObjects) {
  JOStream inner;
  inner.Add("Value", std::uint64_t{1});
  JOStream outer;
  outer.Add(KORUnicodeString("Sub"), inner);
  outer.Add(KORUnicodeString("None"), JOStream());
  EXPECT_EQ(outer.Stringify(), R"({"Sub":{"Value":1},"None":{}})");
  outer.Add(KORUnicodeString("Self"), outer);
  EXPECT_EQ(outer.Stringify(), R"({"Sub":{"Value":1},"None":{},"Self":{"Sub":{"Value":1},"None":{}}})");
}

TEST(JOStream, TakesTextsAndNumbersOfEveryUnsignedTypeAsWhatTheyAre) {
  JOStream writer;
  writer.Add("text", "not a truth value");
  writer.Add("small", std::uint16_t{7});
  writer.Add("large", 18446744073709551615ULL);
  EXPECT_EQ(writer.Stringify(), R"({"text":"not a truth value","small":7,"large":18446744073709551615})");
}

TEST(JOStream, CountsNullPointersAsEmpty) {
  JOStream writer;
  writer.Add(nullptr, std::uint64_t{0});
  writer.Add("a", static_cast<const char*>(nullptr));
  EXPECT_EQ(writer.Stringify(), R"({"":0,"a":""})");
}

TEST(JOStream, EscapesSoThatTheTextIsValid) {
  const struct {
    std::string_view text, written;
  } rows[] = {
      {"", ""},
      {"a\"b\\c/d", R"(a\"b\\c/d)"},
      {"\b\f\n\r\t", R"(\b\f\n\r\t)"},
      {"\0\x01\x1F\x7F"sv, "\\u0000\\u0001\\u001f\x7F"},
      {"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"},
      {"a\xFFz", "a\xEF\xBF\xBDz"},
      {"\xED\xA0\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
      {"a\xC3", "a\xEF\xBF\xBD"},
  };
  for (const auto& row : rows) {
    JOStream asText;
    asText.Add("k", KORUnicodeString(row.text));
    EXPECT_EQ(asText.Stringify().ToStringView(), "{\"k\":\"" + std::string(row.written) + "\"}") << row.written;
    JOStream asKey;
    asKey.Add(KORUnicodeString(row.text), JOStream());
    EXPECT_EQ(asKey.Stringify().ToStringView(), "{\"" + std::string(row.written) + "\":{}}") << row.written;
    EXPECT_TRUE(JIStream().Parse(asText.Stringify(), false)) << row.written;
  }
}

TEST(JOStream, CopiesAnObjectThatWasRead) {
  const struct {
    std::string_view text, written;
  } rows[] = {
      {"{}", "{}"},
      {" { \"b\" : 1 , \"a\" : [ ] } ", R"({"b":1,"a":[]})"},
      {R"({"a":[1,"x",null,true,false,[{}],{"b":[[]]}],"c":{}})",
       R"({"a":[1,"x",null,true,false,[{}],{"b":[[]]}],"c":{}})"},
      {R"({"a":18446744073709551615,"b":-9223372036854775808,"c":9007199254740993})",
       R"({"a":18446744073709551615,"b":-9223372036854775808,"c":9007199254740993})"},
      {R"({"a":0.1,"b":-0,"c":1e300,"d":2.50})", R"({"a":0.1,"b":-0,"c":1e+300,"d":2.5})"},
      {R"({"a":1,"a":2})", R"({"a":1,"a":2})"},
      {R"({"\u0000\"":"\n\u00e9"})", "{\"\\u0000\\\"\":\"\\n\xC3\xA9\"}"},
      {"[1]", "{}"},
      {"7", "{}"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Rewritten(row.text), row.written) << row.text;
  }
  EXPECT_EQ(JOStream(JIStream()).Stringify(), "{}");
}

TEST(JOStream, CopiesTheDeepestObject) {
  std::string text;
  for (int level = 0; level < 256; ++level) {
    text += "{\"a\":[";
  }
  for (int level = 0; level < 256; ++level) {
    text += "]}";
  }
  EXPECT_EQ(Rewritten(text), text);
}

TEST(JOStream, IsAssignedFromWritersAndFromWhatWasRead) {
  JOStream writer;
  writer.Add("a", true);
  const JOStream copy(writer);
  writer.Add("b", true);
  EXPECT_EQ(copy.Stringify(), R"({"a":true})");
  writer = copy;
  EXPECT_EQ(writer.Stringify(), R"({"a":true})");
  JIStream stream;
  ASSERT_TRUE(stream.Parse(R"({"c":1})", true));
  writer = stream;
  writer.Add("d", true);
  EXPECT_EQ(writer.Stringify(), R"({"c":1,"d":true})");
}

}  // namespace
