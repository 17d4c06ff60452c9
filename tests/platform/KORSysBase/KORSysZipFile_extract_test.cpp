#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include "zip_fixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using VYX::Test::BuiltArchive;
using VYX::Test::ContentOf;
using VYX::Test::TakePendingError;

class KORSysZipFileExtract : public VYX::Test::ZipFixture {};

TEST_F(KORSysZipFileExtract, WritesStoredAndDeflatedEntriesAndFolders) {
  const std::string text(100'000, 'x');
  Write({{{"a.txt", "stored"}, {"empty/", ""}, {"deep/er/b.txt", text, true}, {"none", ""}}, "a comment"});
  ASSERT_EQ(Extract(), S_OK);
  EXPECT_EQ(_count, 4U);
  EXPECT_EQ(ContentOfOut("a.txt"), "stored");
  EXPECT_EQ(ContentOfOut("deep/er/b.txt"), text);
  EXPECT_EQ(ContentOfOut("none"), "");
  EXPECT_THAT(_folder.Names("out"), ElementsAre("a.txt", "deep", "empty", "none"));
  EXPECT_THAT(Listed(), ElementsAre("a.txt", "empty/", "deep/er/b.txt", "none"));
}

TEST_F(KORSysZipFileExtract, TakesAnEmptyArchive) {
  Write(BuiltArchive{});
  ASSERT_EQ(Extract(), S_OK);
  EXPECT_EQ(_count, 0U);
  EXPECT_THAT(Listed(), IsEmpty());
  EXPECT_THAT(_folder.Names("out"), IsEmpty());
}

TEST_F(KORSysZipFileExtract, CreatesTheTargetWithItsParents) {
  Write({{{"a", "1"}}});
  ASSERT_EQ(Open(), S_OK);
  EXPECT_EQ(_zip.ExtractAll(_folder.Path("x\\y/z\\"), 0, nullptr), S_OK);
  EXPECT_EQ(ContentOf(_folder.Native("x/y/z/a")), "1");
}

TEST_F(KORSysZipFileExtract, TreatsBackslashesAsSeparatorsAndDropsDots) {
  Write({{{"a\\b.txt", "1"}, {"./c//d.txt", "2"}, {"./", ""}, {"e\\", ""}}});
  ASSERT_EQ(Extract(), S_OK);
  EXPECT_EQ(ContentOfOut("a/b.txt"), "1");
  EXPECT_EQ(ContentOfOut("c/d.txt"), "2");
  EXPECT_THAT(_folder.Names("out/e"), IsEmpty());
}

TEST_F(KORSysZipFileExtract, ReplacesFilesAndLinksButNotWhatALinkLeadsTo) {
  _folder.MakeFile("outside", "kept");
  _folder.MakeFolder("out");
  _folder.MakeFile("out/file", "old");
  _folder.MakeLink("out/link", _folder.Native("outside"));
  Write({{{"file", "new"}, {"link", "new"}}});
  ASSERT_EQ(Extract(), S_OK);
  EXPECT_EQ(ContentOfOut("file"), "new");
  EXPECT_EQ(ContentOfOut("link"), "new");
  EXPECT_EQ(ContentOf(_folder.Native("outside")), "kept");
}

TEST_F(KORSysZipFileExtract, NeverGoesThroughALinkInsideTheTarget) {
  _folder.MakeFolder("outside");
  _folder.MakeFolder("out");
  _folder.MakeLink("out/link", _folder.Native("outside"));
  Write({{{"first", "1"}, {"link/file", "2"}}});
  EXPECT_EQ(Extract(), VYX::ResultCode(0x8007010B));
  EXPECT_EQ(TakePendingError(VYX::ResultCode(0x8007010B)),
            "Cannot extract 'link/file' from the archive '" + _folder.Native("a.zip") +
                "': something else of that name, or a link, is in its place in the target folder");
  EXPECT_THAT(_folder.Names("outside"), IsEmpty());
  EXPECT_THAT(_folder.Names("out"), ElementsAre("link"));
}

TEST_F(KORSysZipFileExtract, LeavesTheTargetAloneWhereAFolderIsInTheWay) {
  _folder.MakeFolder("out/b");
  _folder.MakeFile("out/old", "old");
  Write({{{"old", "new"}, {"b", "2"}}});
  EXPECT_LT(Extract(), 0);
  EXPECT_EQ(ContentOfOut("old"), "old");
  EXPECT_THAT(_folder.Names("out"), ElementsAre("b", "old"));
  Write({{{"old/", ""}}});
  EXPECT_LT(Extract(), 0);
  EXPECT_THAT(_folder.Names("out"), ElementsAre("b", "old"));
}

TEST_F(KORSysZipFileExtract, KeepsExistingFilesWhenAnEntryIsDamaged) {
  _folder.MakeFolder("out");
  _folder.MakeFile("out/a", "old");
  Write({{{"a", "new"}, {.name = "b", .content = "x", .crc = 1}}});
  EXPECT_EQ(Extract(), KORSysZipFile::kWrongChecksum);
  EXPECT_EQ(ContentOfOut("a"), "old");
  EXPECT_THAT(_folder.Names("out"), ElementsAre("a"));
}

TEST_F(KORSysZipFileExtract, MakesProgramsRunnable) {
  Write(
      {{{.name = "run", .content = "1", .unixMode = 0104755}, {.name = "data", .content = "2", .unixMode = 0100644}}});
  ASSERT_EQ(Extract(), S_OK);
  struct stat info {};
  ASSERT_EQ(::stat(_folder.Native("out/run").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & (S_IXUSR | S_ISUID), S_IXUSR);
  ASSERT_EQ(::stat(_folder.Native("out/data").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & S_IXUSR, 0U);
}

TEST_F(KORSysZipFileExtract, DecodesPieceByPieceWhatIsTooLargeForMemory) {
  std::string text;
  for (int line = 0; line < 100'000; ++line) {
    text += std::to_string(line) + "\n";
  }
  KORSysZipLimits limits;
  limits.maxInMemory = 1000;
  _zip.SetLimits(limits);
  Write({{{"deflated", text, true}, {"stored", text}}});
  ASSERT_EQ(Extract(), S_OK);
  EXPECT_EQ(ContentOfOut("deflated"), text);
  EXPECT_EQ(ContentOfOut("stored"), text);
}

struct NameReading {
  const char* raw;
  std::uint16_t flags;
  unsigned long options;
  const char* name;
};

TEST_F(KORSysZipFileExtract, ReadsNamesByFlagOptionAndCodePage) {
  constexpr NameReading kReadings[] = {
      {"\xC3\xA9", 1U << 11U, 0, "\xC3\xA9"},          // flagged UTF-8
      {"\xC3\xA9", 0, 16, "\xC3\xA9"},                 // UTF-8 that the archive does not tell
      {"\xC3\xA9", 0, 0, "\xE2\x94\x9C\xE2\x8C\x90"},  // the same bytes in code page 437
      {"\x81", 0, 16, "\xC3\xBC"},                     // no UTF-8, so code page 437 all the same
      {"\x81\xE1", 0, 0, "\xC3\xBC\xC3\x9F"},
  };
  for (const NameReading& reading : kReadings) {
    Write({{{.name = reading.raw, .content = "1", .flags = reading.flags}}});
    ASSERT_EQ(Open(KORSysZipOpenMode::Browse, static_cast<int>(reading.options)), S_OK);
    EXPECT_THAT(Listed(), ElementsAre(reading.name));
    ASSERT_EQ(Extract(reading.options), S_OK) << reading.name;
    EXPECT_EQ(ContentOfOut(reading.name), "1");
    EXPECT_THAT(Listed(), ElementsAre(reading.name)) << "the listing names what was written";
  }
}

TEST_F(KORSysZipFileExtract, TakesTheUnicodePathFieldOnlyWhileItFits) {
  using VYX::Test::Le16;
  using VYX::Test::Le32;
  constexpr std::uint32_t kCrcOfName = 0x48BD5C3B;  // of the byte 0x81
  const auto field = [](std::uint32_t iCrc) { return Le16(0x7075) + Le16(7) + "\1" + Le32(iCrc) + "\xC3\xA9"; };
  Write({{{.name = "\x81", .content = "1", .extra = field(kCrcOfName)}}});
  ASSERT_EQ(Open(), S_OK);
  EXPECT_THAT(Listed(), ElementsAre("\xC3\xA9"));
  Write({{{.name = "\x81", .content = "1", .extra = field(kCrcOfName + 1)}}});
  ASSERT_EQ(Open(), S_OK);
  EXPECT_THAT(Listed(), ElementsAre("\xC3\xBC"));
}

TEST_F(KORSysZipFileExtract, TakesDataDescriptorsOfBothKinds) {
  Write({{{.name = "a", .content = std::string(5000, 'a'), .isDeflated = true, .hasDescriptor = true},
          {.name = "b", .content = "2", .hasDescriptor = true, .isDescriptorSigned = false},
          {.name = "c", .content = "3"}}});
  ASSERT_EQ(Extract(), S_OK);
  EXPECT_EQ(ContentOfOut("a"), std::string(5000, 'a'));
  EXPECT_EQ(ContentOfOut("b"), "2");
  EXPECT_EQ(ContentOfOut("c"), "3");
}

}  // namespace
