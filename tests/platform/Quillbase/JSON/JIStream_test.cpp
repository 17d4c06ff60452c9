#include "Quillbase/JSON/JIStream.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORResult.h"
#include "Quillbase/JSON/JVisitor.h"

using JSON::JCursor;
using JSON::JIStream;
using JSON::JKind;
using JSON::JVisitor;
using namespace std::string_view_literals;

namespace {

std::string Number(double iNumber) {
  std::string text = std::to_string(iNumber);
  text.erase(text.find_last_not_of('0') + 1);
  return text.ends_with('.') ? text.substr(0, text.size() - 1) : text;
}

std::string Describe(const JIStream& iValue) {
  switch (iValue.Kind()) {
    case JKind::Null:
      return "null";
    case JKind::Boolean:
      return iValue.GetBoolean() ? "true" : "false";
    case JKind::Number:
      return Number(iValue.GetNumber());
    case JKind::String:
      return "'" + std::string(iValue.GetText().ToStringView()) + "'";
    default:
      break;
  }
  std::string text;
  for (JCursor cursor(iValue); cursor.Next();) {
    const std::string key(cursor.Key().ToStringView());
    text += (text.empty() ? "" : ",") + (iValue.Kind() == JKind::Object ? key + ":" : "") + Describe(cursor.Value());
  }
  return iValue.Kind() == JKind::Object ? "{" + text + "}" : "[" + text + "]";
}

// Writes every visit down, and refuses the member of one key.
class Recorder : public JVisitor {
 public:
  explicit Recorder(std::string_view iRefusedKey = "no such key") : JVisitor(true), _refusedKey(iRefusedKey) {}

  bool EndOfFile() override {
    visits += "end";
    return endOfFileAnswer;
  }
  bool VisitNullValue(const QB::StringView& iKey) override { return Note(iKey, "null", ""); }
  bool Visit(const QB::StringView& iKey, const std::vector<double>& iNumbers) override {
    std::string text;
    for (const double number : iNumbers) {
      text += Number(number) + ",";
    }
    return Note(iKey, "numbers", text);
  }
  bool Visit(const QB::StringView& iKey, const std::vector<JIStream>& iObjects) override {
    std::string text;
    for (const JIStream& object : iObjects) {
      text += Describe(object) + ",";
    }
    return Note(iKey, "objects", text);
  }
  bool Visit(const QB::StringView& iKey, const std::vector<bool>& iBooleans) override {
    std::string text;
    for (const bool boolean : iBooleans) {
      text += boolean ? "true," : "false,";
    }
    return Note(iKey, "booleans", text);
  }
  bool Visit(const QB::StringView& iKey, const std::vector<QB::StringView>& iTexts) override {
    std::string text;
    for (const QB::StringView& item : iTexts) {
      text += std::string(item.ToStringView()) + ",";
    }
    return Note(iKey, "texts", text);
  }
  bool Visit(const QB::StringView& iKey, double iNumber) override { return Note(iKey, "number", Number(iNumber)); }
  bool Visit(const QB::StringView& iKey, const JIStream& iObject) override {
    return Note(iKey, "object", Describe(iObject));
  }
  bool Visit(const QB::StringView& iKey, bool iBoolean) override {
    return Note(iKey, "boolean", iBoolean ? "true" : "false");
  }
  bool Visit(const QB::StringView& iKey, const QB::StringView& iText) override {
    return Note(iKey, "text", iText.ToStringView());
  }
  bool VisitAny(const QB::StringView& iKey, const JIStream& iArray) override {
    return Note(iKey, "any", Describe(iArray));
  }
  void ExpectMembers(std::size_t iCount) override { visits += std::to_string(iCount) + " members "; }

  std::string visits;
  bool endOfFileAnswer = true;

 private:
  bool Note(const QB::StringView& iKey, std::string_view iForm, std::string_view iValue) {
    visits.append(iKey.ToStringView()).append("=").append(iForm).append(" ").append(iValue).append("; ");
    return iKey.ToStringView() != _refusedKey;
  }

  std::string _refusedKey;
};

class JIStreamTest : public testing::Test {
 protected:
  void SetUp() override { KORError::KORCleanLastError(); }
  void TearDown() override { KORError::KORCleanLastError(); }

  static std::string PendingMessage() {
    const KORError* const error = KORError::KORGetLastError(E_FAIL, nullptr);
    return error == nullptr ? "none" : error->GetMessageText().ConvertToChar();
  }

  static JIStream Parsed(const char* iText) {
    JIStream stream;
    EXPECT_TRUE(stream.Parse(iText, false)) << PendingMessage();
    return stream;
  }
};

TEST_F(JIStreamTest, VisitsEachMemberByItsForm) {
  const struct {
    const char* text;
    const char* visits;
  } rows[] = {
      {"{}", "0 members end"},
      {R"({"a":1})", "1 members a=number 1; end"},
      {R"({"a":-2.5,"b":"x","c":true,"d":null,"e":{"f":[1]}})",
       "5 members a=number -2.5; b=text x; c=boolean true; d=null ; e=object {f:[1]}; end"},
      {R"({"n":[1,2.5],"b":[true,false],"t":["x","","y"],"o":[{},{"a":1}]})",
       "4 members n=numbers 1,2.5,; b=booleans true,false,; t=texts x,,y,; o=objects {},{a:1},; end"},
      {R"({"e":[]})", "1 members e=texts ; end"},
      {R"({"a":[1,"x"],"b":[[1],[2]],"c":[null],"d":[1,null],"e":[[]]})",
       "5 members a=any [1,'x']; b=any [[1],[2]]; c=any [null]; d=any [1,null]; e=any [[]]; end"},
      {R"({"a":[true,1],"b":[{},[]],"c":["x",{}],"d":[{},1]})",
       "4 members a=any [true,1]; b=any [{},[]]; c=any ['x',{}]; d=any [{},1]; end"},
      {R"({"z":1,"a":2,"z":3})", "3 members z=number 1; a=number 2; z=number 3; end"},
      {R"({"":1})", "1 members =number 1; end"},
      {R"({"a":[1],"b":[2,3],"c":[4]})", "3 members a=numbers 1,; b=numbers 2,3,; c=numbers 4,; end"},
  };
  for (const auto& row : rows) {
    Recorder recorder;
    EXPECT_TRUE(Parsed(row.text).Apply(recorder, nullptr)) << row.text;
    EXPECT_EQ(recorder.visits, row.visits) << row.text;
  }
  EXPECT_EQ(PendingMessage(), "none");
}

TEST_F(JIStreamTest, StopsAtTheVisitThatAnswersFalse) {
  Recorder recorder("b");
  QB::StringView refused;
  const JIStream stream = Parsed(R"({"a":1,"b":2,"c":3})");
  EXPECT_FALSE(stream.Apply(recorder, &refused));
  EXPECT_EQ(recorder.visits, "3 members a=number 1; b=number 2; ");
  EXPECT_EQ(refused.ToStringView(), "b");
}

TEST_F(JIStreamTest, AnswersFalseWhenEndOfFileDoes) {
  Recorder recorder;
  recorder.endOfFileAnswer = false;
  EXPECT_FALSE(Parsed("{}").Apply(recorder, nullptr));
}

TEST_F(JIStreamTest, RefusesIllFormedTextWithAPendingError) {
  const struct {
    const char* text;
    const char* message;
  } rows[] = {
      {"", "JSON text refused at line 1, column 1 (byte 0): the text is empty"},
      {"{\n\"a\":1,\n  \"b\" 2}", "JSON text refused at line 3, column 7 (byte 15): the colon behind a key is missing"},
      {"{\"a\":1e400}", "JSON text refused at line 1, column 6 (byte 5): a number is beyond the range of double"},
      {"{} x", "JSON text refused at line 1, column 4 (byte 3): something follows the end of the document"},
  };
  for (const auto& row : rows) {
    KORError::KORCleanLastError();
    JIStream stream = Parsed("[7]");
    EXPECT_FALSE(stream.Parse(row.text, false)) << row.text;
    EXPECT_EQ(PendingMessage(), row.message) << row.text;
    EXPECT_EQ(Describe(stream), "[7]") << row.text;
  }
}

TEST_F(JIStreamTest, TakesEveryKindAtTheTopButVisitsObjectsOnly) {
  for (const char* const text : {"[]", "[{}]", "1", "\"x\"", "true", "null"}) {
    KORError::KORCleanLastError();
    Recorder recorder;
    EXPECT_FALSE(Parsed(text).Apply(recorder, nullptr)) << text;
    EXPECT_EQ(PendingMessage(), "Cannot visit a JSON object: the top-level value is not an object") << text;
    EXPECT_EQ(recorder.visits, "") << text;
  }
  Recorder recorder;
  EXPECT_FALSE(JIStream().Apply(recorder, nullptr));
  EXPECT_EQ(PendingMessage(), "Cannot visit a JSON object: no JSON text has been read");
}

TEST_F(JIStreamTest, GivesTheSameResultForBothValuesOfTheReservedArgument) {
  JIStream stream;
  EXPECT_TRUE(stream.Parse("[1]", true));
  EXPECT_EQ(Describe(stream), "[1]");
  EXPECT_TRUE(stream.Parse("{\"a\":1}", true));
  EXPECT_EQ(Describe(stream), "{a:1}");
}

TEST_F(JIStreamTest, BaseVisitorSkipsOrStopsAsItWasTold) {
  for (const char* const member : {"1", "\"x\"", "true", "{}", "[1]", "[\"x\"]", "[true]", "[{}]", "[]"}) {
    const JIStream stream = Parsed(("{\"a\":" + std::string(member) + "}").c_str());
    JVisitor skipping(true);
    JVisitor stopping(false);
    EXPECT_TRUE(stream.Apply(skipping, nullptr)) << member;
    EXPECT_FALSE(stream.Apply(stopping, nullptr)) << member;
  }
  JVisitor stopping(false);
  EXPECT_TRUE(Parsed("{\"a\":null}").Apply(stopping, nullptr));
}

TEST_F(JIStreamTest, BaseVisitorRefusesArraysOfNoCommonForm) {
  JVisitor visitor(true);
  QB::StringView refused;
  const JIStream stream = Parsed(R"({"list":[1,"x"]})");
  EXPECT_FALSE(stream.Apply(visitor, &refused));
  EXPECT_EQ(refused.ToStringView(), "list");
  EXPECT_EQ(PendingMessage(),
            "Cannot take the JSON array 'list': its elements are not texts, numbers, truth values or objects only");
}

TEST_F(JIStreamTest, KeepsTheDocumentAliveForEveryStreamOfIt) {
  JIStream inner;
  QB::StringView text;
  {
    JIStream outer = Parsed(R"({"a":{"b":["a text that is too long to stand inside a string object"]}})");
    JCursor cursor(outer);
    ASSERT_TRUE(cursor.Next());
    inner = cursor.Value();
    ASSERT_TRUE(outer.Parse("[0]", false));
  }
  EXPECT_EQ(Describe(inner), "{b:['a text that is too long to stand inside a string object']}");
}

TEST_F(JIStreamTest, CopiesAndMovesShareTheDocument) {
  const JIStream first = Parsed("[1,2]");
  JIStream second(first);
  const JIStream third(std::move(second));
  second = third;
  EXPECT_EQ(Describe(second), "[1,2]");
  EXPECT_EQ(second.Size(), 2U);
  second = Parsed("{}");
  EXPECT_EQ(Describe(first), "[1,2]");
  EXPECT_EQ(Describe(second), "{}");
}

TEST_F(JIStreamTest, AnswersNothingForOtherKinds) {
  const JIStream none;
  EXPECT_EQ(none.Kind(), JKind::Null);
  EXPECT_FALSE(none.GetBoolean());
  EXPECT_EQ(none.GetNumber(), 0);
  EXPECT_EQ(none.GetText().ToStringView(), "");
  EXPECT_EQ(none.Size(), 0U);
  EXPECT_FALSE(JCursor(none).Next());
  EXPECT_EQ(Parsed("\"x\"").GetNumber(), 0);
  EXPECT_EQ(Parsed("1").GetText().ToStringView(), "");
}

TEST_F(JIStreamTest, HandsTextsOnAsStringsWithoutACopy) {
  class Keeper : public JVisitor {
   public:
    Keeper() : JVisitor(false) {}
    bool Visit(const QB::StringView& iKey, const QB::StringView& iText) override {
      const KORUnicodeString& asString = iText;
      isSame = static_cast<const char*>(asString) == iText.ToStringView().data();
      key = iKey;
      text = iText;
      return true;
    }
    KORUnicodeString key, text;
    bool isSame = false;
  };
  Keeper keeper;
  ASSERT_TRUE(Parsed(R"({"k":"a text with \u0000 inside, long enough not to be short"})").Apply(keeper, nullptr));
  EXPECT_TRUE(keeper.isSame);
  EXPECT_EQ(keeper.key, "k");
  EXPECT_EQ(keeper.text.ToStringView(), "a text with \0 inside, long enough not to be short"sv);
}

// The reading that the property tree does: one visitor per nested object.
class Nesting : public JVisitor {
 public:
  Nesting() : JVisitor(false) {}
  bool Visit(const QB::StringView& /*iKey*/, const JIStream& iObject) override {
    Nesting inner;
    const bool isRead = iObject.Apply(inner, nullptr);
    depth = inner.depth + 1;
    return isRead;
  }
  std::size_t depth = 1;
};

TEST_F(JIStreamTest, AppliesVisitorsToTheGreatestDepth) {
  std::string text;
  for (int level = 1; level < 512; ++level) {
    text += "{\"a\":";
  }
  text += "{}" + std::string(511, '}');
  Nesting visitor;
  EXPECT_TRUE(Parsed(text.c_str()).Apply(visitor, nullptr));
  EXPECT_EQ(visitor.depth, 512U);
}

}  // namespace
