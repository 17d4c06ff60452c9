#include "VYXInfi18n.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "platform/adapters/json_reader.h"
#include "support/captured_stdout.h"
#include "support/catalog_folder.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using VYX::Test::CapturedStdout;
using VYX::Test::CatalogFolder;
using VYX::Test::Environment;
using VYX::Test::FailureLogIn;
using VYX::Test::UserOf;
using VYXInfi18n::GetLocalizedString;
using VYXInfi18n::LocalizedString;

class VYXInfi18nTest : public testing::Test {
 protected:
  VYXInfi18nTest() {
    folder.Write(
        "M.json",
        R"({"NotFound":"File {0} not found","Twice":"{0} and {0}","All":"{2}{1}{0}","One":"{0}","No":"plain"})");
    folder.Write("M.fr.json", "{\"NotFound\":\"Fichier {0} introuvable \\u00e0 {1}\"}");
    folder.Write("Broken.json", "{\n  \"K\": 1\n}");
  }

  const CatalogFolder folder;
  const Environment environment{UserOf(folder.Root())};
};

TEST_F(VYXInfi18nTest, PutsParametersInTheirPlaces) {
  const struct {
    const char* key;
    const char* first;
    const char* second;
    const char* third;
    const char* text;
  } rows[] = {
      {"NotFound", "a.txt", "", "", "File a.txt not found"},
      {"NotFound", "", "x", "y", "File {0} not found"},
      {"Twice", "a", "", "", "a and a"},
      {"All", "a", "b", "c", "cba"},
      {"All", "", "b", "", "{2}b{0}"},
      {"One", "{1}", "x", "", "x"},
      {"One", "{1}", "{2}", "z", "z"},
      {"One", "{0}", "x", "y", "{0}"},
      {"One", "{2}", "", "z", "z"},
      {"All", "{1}", "", "c", "c{1}{1}"},
      {"No", "a", "b", "c", "plain"},
      {"Unknown", "a", "b", "c", ""},
      {"", "a", "b", "c", ""},
  };
  CapturedStdout captured;
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.key) + " " + row.first + " " + row.second + " " + row.third);
    EXPECT_EQ(GetLocalizedString("M", row.key, row.first, row.second, row.third), row.text);
    EXPECT_EQ(LocalizedString("M", row.key)(row.first, row.second, row.third), row.text);
  }
  EXPECT_THAT(captured.LogLines(), IsEmpty());
}

TEST_F(VYXInfi18nTest, AnswersNothingForUnknownCatalogs) {
  CapturedStdout captured;
  EXPECT_EQ(GetLocalizedString("Unknown", "NotFound", "a", "", ""), "");
  EXPECT_EQ(GetLocalizedString("", "", "", "", ""), "");
  EXPECT_EQ(GetLocalizedString("../msgcatalog/M", "No", "", "", ""), "");
  EXPECT_EQ(GetLocalizedString(KORUnicodeString(std::string_view("M\0", 2)), "No", "", "", ""), "");
  EXPECT_THAT(captured.LogLines(), IsEmpty());
}

TEST_F(VYXInfi18nTest, TracesBrokenCatalogs) {
  CapturedStdout captured;
  EXPECT_EQ(GetLocalizedString("Broken", "K", "a", "b", "c"), "");
  EXPECT_THAT(
      captured.LogLines(),
      ElementsAre(VYX::Test::LogLine{"ERROR", "Cannot use the message catalog '" + folder.Root() +
                                                  "/resources/msgcatalog/Broken.json': the message 'K' is no text"},
                  FailureLogIn("VYXInfi18n.cpp")));
}

TEST_F(VYXInfi18nTest, FollowsTheLanguage) {
  const LocalizedString message("M", "NotFound");
  {
    const Environment french(UserOf(folder.Root(), "fr_CA.UTF-8"));
    EXPECT_EQ(message("a", "b"), "Fichier a introuvable \xC3\xA0 b");
    EXPECT_EQ(LocalizedString("M", "No")("a"), "plain") << "from the file for no language";
  }
  EXPECT_EQ(message("a", "b"), "File a not found") << "a message is looked up anew each time";
}

TEST_F(VYXInfi18nTest, ConvertsToBothStringsWithVisiblePlaces) {
  const LocalizedString message("M", "NotFound");
  const KORUnicodeString text = message;
  const KORString narrow = message;
  EXPECT_EQ(text, "File {0} not found");
  EXPECT_STREQ(narrow.CastToCharPtr(), "File {0} not found");
  KORUnicodeString assigned;
  assigned = message;
  EXPECT_EQ(assigned, text);
}

TEST_F(VYXInfi18nTest, IsAValue) {
  LocalizedString first("M", "No");
  LocalizedString second = first;
  LocalizedString third = std::move(second);
  first = LocalizedString("M", "One");
  EXPECT_EQ(first("x"), "x");
  EXPECT_EQ(third("x"), "plain");
  third = first;
  EXPECT_EQ(third("y"), "y");
  EXPECT_EQ(LocalizedString(nullptr, nullptr)("x"), "");
}

// The catalogs that come with the project.

std::vector<std::pair<std::string, std::string>> MessagesOf(const std::filesystem::path& iFile) {
  std::ifstream stream(iFile, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
  VYX::Adapters::JsonDocument document;
  VYX::Adapters::JsonFailure failure;
  EXPECT_TRUE(document.Parse(text, failure)) << iFile << ": " << failure.reason;
  std::vector<std::pair<std::string, std::string>> messages;
  for (VYX::Adapters::JsonWalk walk(document.Root()); walk.Next();) {
    messages.emplace_back(walk.Key(), walk.Value().Text());
  }
  return messages;
}

TEST(ProjectCatalogs, HaveTheSameMessagesInEveryLanguage) {
  const std::filesystem::path folder = std::filesystem::path(VYX_SOURCE_FOLDER) / "resources" / "msgcatalog";
  const auto neutral = MessagesOf(folder / "MediaCatalogue.json");
  const auto english = MessagesOf(folder / "MediaCatalogue.en.json");
  const auto french = MessagesOf(folder / "MediaCatalogue.fr.json");
  EXPECT_FALSE(neutral.empty());
  EXPECT_EQ(neutral, english) << "English stands in for languages without a file";
  ASSERT_EQ(french.size(), neutral.size());
  for (std::size_t index = 0; index < neutral.size(); ++index) {
    const auto& [key, text] = neutral[index];
    EXPECT_EQ(french[index].first, key);
    for (const char* place : {"{0}", "{1}", "{2}"}) {
      EXPECT_EQ(text.find(place) == std::string::npos, french[index].second.find(place) == std::string::npos)
          << key << " " << place;
    }
  }
}

TEST(ProjectCatalogs, AreFoundInTheSourceFolder) {
  const Environment french(UserOf(VYX_SOURCE_FOLDER, "fr_FR.UTF-8"));
  EXPECT_EQ(LocalizedString("MediaCatalogue", "NoSuchFolder")("x"), "Il n'y a pas de dossier x");
  const Environment plain(UserOf(VYX_SOURCE_FOLDER, "C"));
  EXPECT_EQ(LocalizedString("MediaCatalogue", "NoSuchFolder")("x"), "There is no folder x");
}

}  // namespace
