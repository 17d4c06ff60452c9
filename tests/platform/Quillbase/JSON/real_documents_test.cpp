#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "KORSysTS/KORUnicodeString.h"
#include "Quillbase/JSON/JIStream.h"
#include "Quillbase/JSON/JOStream.h"
#include "platform/adapters/json_diagnosis.h"
#include "platform/adapters/json_reader.h"
#include "support/real_documents.h"
#include "support/temporary_folder.h"

using VYX::Adapters::DiagnoseJson;
using VYX::Adapters::JsonDiagnosis;
using VYX::Adapters::JsonDocument;
using VYX::Adapters::JsonFailure;
using VYX::Adapters::JsonNode;
using VYX::Adapters::JsonWalk;
using VYX::Test::ContentOf;
using VYX::Test::RealDocuments;

namespace {

bool AreSame(JsonNode iLeft, JsonNode iRight) {
  if (iLeft.Kind() != iRight.Kind() || iLeft.Boolean() != iRight.Boolean() || iLeft.Number() != iRight.Number() ||
      iLeft.Text() != iRight.Text() || iLeft.Count() != iRight.Count()) {
    return false;
  }
  JsonWalk left(iLeft);
  for (JsonWalk right(iRight); right.Next();) {
    if (!left.Next() || left.Key() != right.Key() || !AreSame(left.Value(), right.Value())) {
      return false;
    }
  }
  return !left.Next();
}

TEST_F(RealDocuments, BothReadingsTakeThemAsTheyStand) {
  for (const auto& path : _paths) {
    const std::string text = ContentOf(path);
    JsonDocument document;
    JsonFailure failure;
    EXPECT_TRUE(document.Parse(text, failure)) << path << ": " << failure.line << ": " << failure.reason;
    const JsonDiagnosis diagnosis = DiagnoseJson(text);
    EXPECT_TRUE(diagnosis.isWellFormed) << path << ": " << diagnosis.offset << ": " << diagnosis.reason;
    EXPECT_FALSE(diagnosis.isRewritten) << path;
  }
}

TEST_F(RealDocuments, BothReadingsRefuseThemCutShort) {
  for (const auto& path : _paths) {
    std::string text = ContentOf(path);
    text.resize(text.find_last_of("]}"));
    JsonDocument document;
    JsonFailure failure;
    EXPECT_FALSE(document.Parse(text, failure)) << path;
    EXPECT_EQ(failure.offset, text.size()) << path;
    EXPECT_EQ(failure.line, static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1) << path;
  }
}

TEST_F(RealDocuments, ComeBackFromTheWriterAsTheyWere) {
  for (const auto& path : _paths) {
    const std::string text = "{\"document\":" + ContentOf(path) + "}";
    JSON::JIStream stream;
    ASSERT_TRUE(stream.Parse(KORUnicodeString(std::string_view(text)), false)) << path;
    const KORUnicodeString written = JSON::JOStream(stream).Stringify();
    JsonDocument before;
    JsonDocument after;
    JsonFailure failure;
    ASSERT_TRUE(before.Parse(text, failure)) << path;
    ASSERT_TRUE(after.Parse(written.ToStringView(), failure))
        << path << ": " << failure.offset << ": " << failure.reason;
    EXPECT_TRUE(AreSame(before.Root(), after.Root())) << path;
  }
}

}  // namespace
