#include "KORSysBase/KORMsgCatalog.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "KORSysBase/KORError.h"
#include "support/catalog_folder.h"
#include "support/pending_error.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;
using VYX::Test::CatalogFolder;
using VYX::Test::Environment;
using VYX::Test::UserOf;

struct Answer {
  std::string text;
  long result;

  bool operator==(const Answer&) const = default;
};

void PrintTo(const Answer& iAnswer, std::ostream* ioStream) {
  *ioStream << "'" << iAnswer.text << "' with " << iAnswer.result;
}

Answer Ask(std::string_view iCatalog, std::string_view iKey) {
  long result = E_FAIL;
  const KORUnicodeString text =
      KORMsgCatalog::BuildMessage(KORString(iCatalog), KORString(iKey), nullptr, 0, "default", &result);
  return {text.ConvertToChar(), result};
}

// The pending error of an unusable file, which is taken away; "(none)" when there is none.
std::string TakePendingError() {
  return VYX::Test::TakePendingError(KORMsgCatalog::kUnusableFile);
}

class KORMsgCatalogTest : public testing::Test {
 protected:
  void SetUp() override { KORError::KORCleanLastError(); }
  const CatalogFolder folder;
};

TEST_F(KORMsgCatalogTest, FollowsTheLanguageOfTheEnvironment) {
  folder.Write("M.fr_CA.json", R"({"Only":"fr_CA","Two":"fr_CA","All":"fr_CA"})");
  folder.Write("M.fr.json", R"({"Two":"fr","All":"fr","Shared":"fr"})");
  folder.Write("M.de.json", R"({"All":"de","German":"de"})");
  folder.Write("M.json", R"({"All":"none","Neutral":"none"})");
  const struct {
    std::map<std::string, std::string> settings;
    const char* key;
    const char* text;
  } rows[] = {
      {{{"LANG", "fr_CA.UTF-8"}}, "All", "fr_CA"},
      {{{"LANG", "fr_CA"}}, "Two", "fr_CA"},
      {{{"LANG", "fr_CA@euro"}}, "Shared", "fr"},
      {{{"LANG", "fr_CA"}}, "Neutral", "none"},
      {{{"LANG", "fr_CH"}}, "All", "fr"},
      {{{"LANG", "fr"}}, "Only", "default"},
      {{{"LANG", "sv_SE"}}, "All", "none"},
      {{{"LANG", "C"}}, "All", "none"},
      {{{"LANG", "POSIX"}}, "All", "none"},
      {{{"LANG", "C.UTF-8"}}, "All", "none"},
      {{}, "All", "none"},
      {{{"LANG", "de_DE"}, {"LC_MESSAGES", "fr_FR"}}, "All", "fr"},
      {{{"LANG", "de_DE"}, {"LC_MESSAGES", "fr_FR"}, {"LC_ALL", "C"}}, "All", "none"},
      {{{"LANG", "fr_FR"}, {"LANGUAGE", "de"}}, "All", "de"},
      {{{"LANG", "fr_FR"}, {"LANGUAGE", "sv:de:fr_CA"}}, "All", "de"},
      {{{"LANG", "fr_FR"}, {"LANGUAGE", "de:fr_CA"}}, "Only", "fr_CA"},
      {{{"LANG", "fr_FR"}, {"LANGUAGE", ":::de.UTF-8:"}}, "All", "de"},
      {{{"LANG", "C"}, {"LANGUAGE", "de"}}, "All", "none"},
      {{{"LANGUAGE", "de"}}, "All", "none"},
      {{{"LANG", "fr_CA"}}, "Unknown", "default"},
  };
  for (const auto& row : rows) {
    auto settings = UserOf(folder.Root());
    std::string shown;
    for (const auto& [name, value] : row.settings) {
      settings[name] = value;
      shown += name + "=" + value + " ";
    }
    SCOPED_TRACE(shown + row.key);
    const Environment environment(settings);
    const bool isKnown = row.text != std::string_view("default");
    EXPECT_EQ(Ask("M", row.key), (Answer{row.text, isKnown ? S_OK : S_FALSE}));
    EXPECT_EQ(TakePendingError(), "(none)");
  }
}

TEST_F(KORMsgCatalogTest, LetsNoLanguageSettingLeaveTheFolder) {
  folder.Write("M.json", R"({"All":"none"})");
  std::filesystem::create_directories(folder.PathOf("M.."));
  folder.Write("M../secret.json", R"({"All":"secret"})");
  folder.Write("secret.json", R"({"All":"secret"})");
  for (const std::string& value :
       {std::string("../secret"), std::string("./secret"), std::string("/secret"), std::string("..\\secret"),
        std::string("_"), std::string(65536, 'a'), std::string("fr\nde"), std::string("\xC3\xA9")}) {
    SCOPED_TRACE(value.substr(0, 80));
    const Environment asLang(UserOf(folder.Root(), value));
    EXPECT_EQ(Ask("M", "All"), (Answer{"none", S_OK}));
    const Environment asLanguage(UserOf(folder.Root(), "de", value));
    EXPECT_EQ(Ask("M", "All"), (Answer{"none", S_OK}));
  }
}

TEST_F(KORMsgCatalogTest, LetsNoCatalogNameLeaveTheFolder) {
  folder.Write("M.json", R"({"All":"none"})");
  folder.Write("..M.json", R"({"All":"secret"})");
  std::filesystem::create_directories(folder.PathOf("sub"));
  folder.Write("sub/M.json", R"({"All":"secret"})");
  const Environment environment(UserOf(folder.Root()));
  for (const std::string& name :
       {std::string(), std::string("sub/M"), std::string("sub\\M"), std::string("../msgcatalog/M"), std::string("..M"),
        std::string("M\0", 2), std::string("M\0.json", 7), std::string("C:M"), std::string("M\n"),
        std::string(100000, 'M'), std::string(201, 'M'), std::string(200, 'M'), std::string("Unknown")}) {
    SCOPED_TRACE(name.substr(0, 80));
    EXPECT_EQ(Ask(name, "All"), (Answer{"default", S_FALSE}));
    EXPECT_EQ(TakePendingError(), "(none)");
  }
  EXPECT_EQ(Ask("M", "All"), (Answer{"none", S_OK}));
}

TEST_F(KORMsgCatalogTest, NeedsAnInstallationFolder) {
  const Environment environment(UserOf(""));
  EXPECT_EQ(Ask("M", "All"), (Answer{"default", S_FALSE}));
}

TEST_F(KORMsgCatalogTest, SearchesTheInstallationFoldersInOrder) {
  const CatalogFolder other;
  folder.Write("M.json", R"({"All":"first"})");
  other.Write("M.json", R"({"All":"second","More":"second"})");
  other.Write("N.json", R"({"All":"second"})");
  const Environment environment(UserOf("/no/such/folder;" + folder.Root() + ";" + other.Root()));
  EXPECT_EQ(Ask("M", "All"), (Answer{"first", S_OK}));
  EXPECT_EQ(Ask("M", "More"), (Answer{"default", S_FALSE})) << "the first folder that has the file counts";
  EXPECT_EQ(Ask("N", "All"), (Answer{"second", S_OK}));
}

TEST_F(KORMsgCatalogTest, ReadsAFileOnce) {
  folder.Write("M.json", R"({"K":"before"})");
  const Environment environment(UserOf(folder.Root()));
  EXPECT_EQ(Ask("M", "K"), (Answer{"before", S_OK}));
  folder.Write("M.json", R"({"K":"after"})");
  EXPECT_EQ(Ask("M", "K"), (Answer{"before", S_OK}));
}

TEST_F(KORMsgCatalogTest, RefusesFilesThatItCannotUse) {
  const struct {
    const char* name;
    std::string text;
    const char* cause;
  } rows[] = {
      {"Empty", "", "line 1, column 1: "},
      {"Cut", "{\n \"K\": \"te", "line 2, "},
      {"Array", "[\"K\"]", "it holds no object"},
      {"Text", "\"K\"", "it holds no object"},
      {"Number", R"({"A":"a","K":1})", "the message 'K' is no text"},
      {"Nested", R"({"A":"a","K":{"K":"k"}})", "the message 'K' is no text"},
      {"Deep", "{\"A\":\"a\",\"K\":" + std::string(100000, '['), "line 1, "},
      {"BadUtf8", "{\"A\":\"a\",\"K\":\"\xFF\"}", "line 1, "},
  };
  const Environment environment(UserOf(folder.Root()));
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    folder.Write(std::string(row.name) + ".json", row.text);
    const std::string start = "Cannot use the message catalog '" + folder.Root() + "/resources/msgcatalog/" + row.name +
                              ".json': " + row.cause;
    EXPECT_EQ(Ask(row.name, "A"), (Answer{"default", KORMsgCatalog::kUnusableFile}));
    EXPECT_THAT(TakePendingError(), StartsWith(start));
    EXPECT_EQ(Ask(row.name, "K"), (Answer{"default", KORMsgCatalog::kUnusableFile})) << "each time";
    EXPECT_THAT(TakePendingError(), StartsWith(start));
  }
}

TEST_F(KORMsgCatalogTest, RefusesWhatIsNoRegularFile) {
  std::filesystem::create_directories(folder.PathOf("Folder.json"));
  ASSERT_EQ(::mkfifo(folder.PathOf("Pipe.json").c_str(), 0600), 0);
  std::ofstream(folder.PathOf("Huge.json")).close();
  std::filesystem::resize_file(folder.PathOf("Huge.json"), (16U << 20) + 1);
  const Environment environment(UserOf(folder.Root()));
  for (const char* name : {"Folder", "Pipe", "Huge"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(Ask(name, "K"), (Answer{"default", KORMsgCatalog::kUnusableFile}));
    EXPECT_THAT(TakePendingError(), HasSubstr(std::string(name) + ".json': "));
  }
}

TEST_F(KORMsgCatalogTest, UsesTheOtherFilesOfABrokenCatalog) {
  folder.Write("M.fr.json", "{");
  folder.Write("M.json", R"({"K":"none"})");
  const Environment environment(UserOf(folder.Root(), "fr_FR"));
  EXPECT_EQ(Ask("M", "K"), (Answer{"none", KORMsgCatalog::kUnusableFile}));
  EXPECT_THAT(TakePendingError(), HasSubstr("M.fr.json"));
}

TEST_F(KORMsgCatalogTest, TakesTheLastOfRepeatedKeys) {
  folder.Write("M.json", "\xEF\xBB\xBF{\"K\":\"first\",\"\":\"empty\",\"K\":\"last\"}");
  const Environment environment(UserOf(folder.Root()));
  EXPECT_EQ(Ask("M", "K"), (Answer{"last", S_OK}));
  EXPECT_EQ(Ask("M", ""), (Answer{"empty", S_OK}));
}

TEST_F(KORMsgCatalogTest, PutsParametersInInOnePass) {
  const KORUnicodeString parameters[] = {"{1}", "two", "three"};
  const struct {
    const char* text;
    int count;
    const char* filled;
  } rows[] = {
      {"{0}{1}", 3, "{1}two"},
      {"a {2} b {0}", 3, "a three b {1}"},
      {"{3}", 3, "{3}"},
      {"{1}", 1, "{1}"},
      {"{x} {} { {0", 3, "{x} {} { {0"},
      {"{00001}", 3, "two"},
      {"{-1}", 3, "{-1}"},
      {"{99999999999}", 3, "{99999999999}"},
      {"{{1}}", 3, "{two}"},
      {"", 3, ""},
  };
  const Environment environment(UserOf(""));
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(KORMsgCatalog::BuildMessage("M", "K", parameters, row.count, row.text), row.filled);
  }
  EXPECT_EQ(KORMsgCatalog::BuildMessage("M", "K", nullptr, 3, "{0}"), "{0}");
  EXPECT_EQ(KORMsgCatalog::BuildMessage("M", "K", parameters, -1, "{0}"), "{0}");
}

TEST_F(KORMsgCatalogTest, SurvivesEndlessUnknownNames) {
  folder.Write("M.json", R"({"K":"k"})");
  const Environment environment(UserOf(folder.Root()));
  for (int number = 0; number < 3000; ++number) {
    ASSERT_EQ(Ask("Unknown" + std::to_string(number), "K").result, S_FALSE);
  }
  EXPECT_EQ(Ask("M", "K"), (Answer{"k", S_OK}));
}

TEST_F(KORMsgCatalogTest, AnswersSeveralThreadsAtOnce) {
  folder.Write("M.fr.json", R"({"K":"fr"})");
  folder.Write("M.json", R"({"N":"none"})");
  folder.Write("Broken.json", "{");
  const Environment environment(UserOf(folder.Root(), "fr"));
  std::vector<std::thread> threads;
  for (int number = 0; number < 4; ++number) {
    threads.emplace_back([number] {
      for (int round = 0; round < 200; ++round) {
        EXPECT_EQ(Ask("M", "K"), (Answer{"fr", S_OK}));
        EXPECT_EQ(Ask("M", "N"), (Answer{"none", S_OK}));
        EXPECT_EQ(Ask("Unknown" + std::to_string(round * 4 + number), "K").result, S_FALSE);
        EXPECT_EQ(Ask("Broken", "K").result, KORMsgCatalog::kUnusableFile);
        EXPECT_NE(TakePendingError(), "(none)");
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
}

}  // namespace
