#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORResult.h"
#include "Quillbase/JSON/JIStream.h"
#include "VYXPropertyTree.h"
#include "tree_testing.h"

namespace VYX::Test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

KORUnicodeString Unicode(std::string_view iText) {
  return KORUnicodeString(iText);
}

/// Why the reader refuses a text.
std::string ReasonOf(const KORUnicodeString& iText) {
  JSON::JIStream reader;
  EXPECT_FALSE(reader.Parse(iText, false));
  KORError* const pending = KORError::KORGetLastError(E_FAIL, nullptr);
  const std::string reason = pending == nullptr ? "" : pending->GetMessageText().ConvertToChar();
  KORError::KORCleanLastError();
  return reason;
}

TEST(Parse, StoresEveryFormAndWritesItBack) {
  const char* const cases[][2] = {
      {"{}", "{}"},
      {" { } ", "{}"},
      {"{\"n\":3,\"d\":0.5,\"t\":true,\"f\":false,\"s\":\"x\"}",
       "{\"d\":0.5,\"f\":false,\"n\":3,\"s\":\"x\",\"t\":true}"},
      {"{\"o\":{\"b\":{\"c\":1},\"a\":{}}}", "{\"o\":{\"a\":{},\"b\":{\"c\":1}}}"},
      {"{\"a\":[]}", "{\"a\":[]}"},
      {"{\"a\":[1,2.5,-3]}", "{\"a\":[1,2.5,-3]}"},
      {"{\"a\":[true,false]}", "{\"a\":[true,false]}"},
      {"{\"a\":[\"x\",\"\"]}", "{\"a\":[\"x\",\"\"]}"},
      {"{\"a\":[{\"y\":1,\"x\":[{}]},{}]}", "{\"a\":[{\"x\":[{}],\"y\":1},{}]}"},
      {"{\"a\":[null]}", "{\"a\":[null]}"},
      {"{\"a\":[1,\"x\",null,true,[],{\"b\":null,\"c\":[2]}]}", "{\"a\":[1,\"x\",null,true,[],{\"c\":[2]}]}"},
      {"{\"a\":[[1,2],[[\"x\"]],[]]}", "{\"a\":[[1,2],[[\"x\"]],[]]}"},
      {"{\"a\":null}", "{}"},
      {"{\"a\":1,\"a\":{\"x\":1},\"a\":{\"y\":2}}", "{\"a\":{\"y\":2}}"},
      {"{\"a\":{\"x\":1},\"a\":5}", "{\"a\":5}"},
      {"{\"a\":1,\"a\":null}", "{\"a\":1}"},
      {"{\"\\u00e9\\n\":\"\\ud83d\\ude00\\\\\"}", "{\"\xC3\xA9\\n\":\"\xF0\x9F\x98\x80\\\\\"}"},
      {"{\"a\":-0,\"b\":123456789012345678901234567890}", "{\"a\":-0,\"b\":1.2345678901234568e+29}"},
      {"\xEF\xBB\xBF{\"a\":1}", "{\"a\":1}"},
      {"{\"a\":\"\x01\"}", "{\"a\":\"\x01\"}"},
  };
  for (const auto& [text, expected] : cases) {
    VYXPropertyTree tree;
    long code = E_FAIL;
    EXPECT_THAT(LinesOf([&, &parsed = text] { code = tree.Parse(parsed); }), IsEmpty()) << text;
    EXPECT_EQ(code, S_OK) << text;
    EXPECT_EQ(TextOf(tree), expected);
    VYXPropertyTree again;
    EXPECT_EQ(again.Parse(expected), S_OK);
    EXPECT_EQ(TextOf(again), expected);
  }
}

TEST(Parse, KeepsZeroCharacters) {
  VYXPropertyTree tree;
  EXPECT_EQ(tree.Parse("{\"a\\u0000b\":\"\\u0000\"}"), S_OK);
  EXPECT_TRUE(tree.HasKey(Unicode(std::string_view("a\0b", 3))));
  const std::string text = TextOf(tree);
  VYXPropertyTree again;
  EXPECT_EQ(again.Parse(Unicode(text)), S_OK);
  EXPECT_TRUE(again == tree);
}

TEST(Parse, MergesIntoWhatIsThere) {
  VYXPropertyTree tree;
  tree.SetBoolean("b", true);
  tree.SetBoolean("c", true);
  EXPECT_EQ(tree.Parse("{\"a\":{\"x\":1},\"c\":{\"y\":1}}"), S_OK);
  EXPECT_EQ(tree.Parse("{\"a\":{\"z\":1},\"c\":null}"), S_OK);
  EXPECT_EQ(TextOf(tree), "{\"a\":{\"z\":1},\"b\":true,\"c\":{\"y\":1}}");
}

TEST(Parse, ReadsIntegersAsNumbers) {
  VYXPropertyTree tree;
  EXPECT_EQ(tree.Parse("{\"n\":3,\"m\":-2.7}"), S_OK);
  std::int64_t integer = 0;
  EXPECT_EQ(tree.GetInteger("n", integer), S_OK);
  EXPECT_EQ(integer, 3);
  EXPECT_TRUE(tree.IsNumber("n"));
  EXPECT_EQ(tree.GetInteger("m", integer), S_OK);
  EXPECT_EQ(integer, -2);
}

TEST(Parse, RefusesIllFormedTextBeforeStoringAnything) {
  for (const char* const text : {"", "  ", "{", "{\"a\":1,", "{\"a\":1}}", "{\"a\":1} x", "{\"a\":01}", "{\"a\":1e400}",
                                 "{\"a\":NaN}", "{\"a\":\"\\ud800\"}", "{\"a\":\"\xFF\"}", "{\"a\":\"\n\"}", "{a:1}"}) {
    VYXPropertyTree tree;
    tree.SetBoolean("old", true);
    const std::string reason = ReasonOf(text);
    long code = S_OK;
    const auto lines = LinesOf([&] { code = tree.Parse(text); });
    EXPECT_EQ(code, E_FAIL) << text;
    EXPECT_THAT(reason, testing::StartsWith("JSON text refused at line ")) << text;
    EXPECT_THAT(lines, ElementsAre(Line("ERROR", reason), FailureReturnIn("VYXPropertyTree/parse"))) << text;
    EXPECT_EQ(TextOf(tree), "{\"old\":true}");
  }
}

TEST(Parse, RefusesATopThatIsNoObject) {
  for (const char* const text : {"[]", "[{}]", "1", "\"x\"", "null", "true"}) {
    VYXPropertyTree tree;
    long code = S_OK;
    const auto lines = LinesOf([&] { code = tree.Parse(text); });
    EXPECT_EQ(code, E_FAIL) << text;
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].text, "Cannot visit a JSON object: the top-level value is not an object");
    EXPECT_THAT(lines[1], FailureReturnIn("VYXPropertyTree/parse"));
    EXPECT_EQ(TextOf(tree), "{}");
  }
}

TEST(Parse, OfATreeWithoutRootFails) {
  VYXPropertyTree tree = RootlessTree();
  long code = S_OK;
  EXPECT_THAT(LinesOf([&] { code = tree.Parse("{}"); }), ElementsAre(FailureReturnIn("VYXPropertyTree/parse")));
  EXPECT_EQ(code, E_FAIL);
}

std::string Repeat(std::string_view iText, int iCount) {
  std::string text;
  for (; iCount > 0; --iCount) {
    text += iText;
  }
  return text;
}

TEST(Parse, AcceptsTheDeepestNesting) {
  VYXPropertyTree objects;
  EXPECT_EQ(objects.Parse(Unicode(Repeat("{\"a\":", 511) + "{}" + Repeat("}", 511))), S_OK);
  EXPECT_EQ(TextOf(objects), Repeat("{\"a\":", 511) + "{}" + Repeat("}", 511));
  VYXPropertyTree arrays;
  EXPECT_EQ(arrays.Parse(Unicode("{\"a\":" + Repeat("[", 511) + Repeat("]", 511) + "}")), S_OK);
  EXPECT_EQ(TextOf(arrays), "{\"a\":" + Repeat("[", 511) + Repeat("]", 511) + "}");
}

TEST(Parse, RefusesDepthBombs) {
  for (const std::string& text : {Repeat("{\"a\":", 512) + "{}" + Repeat("}", 512), Repeat("{\"a\":", 500'000),
                                  "{\"a\":" + Repeat("[", 1'000'000)}) {
    VYXPropertyTree tree;
    long code = S_OK;
    LinesOf([&] { code = tree.Parse(Unicode(text)); });
    EXPECT_EQ(code, E_FAIL);
    EXPECT_EQ(TextOf(tree), "{}");
  }
}

}  // namespace
}  // namespace VYX::Test
