#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "KORSysBase/KORSysZipFile.h"
#include "VYXInfLog.h"
#include "VYXInfSystemUtil.h"
#include "support/captured_stdout.h"
#include "support/temporary_folder.h"
#include "support/zip_builder.h"

namespace {

using ::testing::ElementsAre;
using VYX::Test::BuiltArchive;
using VYX::Test::CapturedStdout;
using VYX::Test::ConsoleLevel;
using VYX::Test::Detail;
using VYX::Test::FailureReturnIn;
using VYX::Test::Line;
using VYX::Test::LogLine;

class VYXInfSystemUtilZip : public ::testing::Test {
 protected:
  void Write(const BuiltArchive& iArchive) { _folder.MakeFile("a.zip", iArchive.Bytes()); }

  std::string NativeZip() const { return _folder.Native("a.zip"); }

  VYX::Test::TemporaryFolder _folder;
  KORUnicodeString _path = _folder.Path("a.zip");
  KORListValKORUnicodeString _entries;
  QB::Binary _content;
};

KORListValKORUnicodeString List(const std::vector<const char*>& iTexts) {
  KORListValKORUnicodeString list;
  for (const char* const text : iTexts) {
    list.Append(KORUnicodeString(text));
  }
  return list;
}

std::string BytesOf(const QB::Binary& iContent) {
  return {iContent.GetData(), iContent.GetSize()};
}

TEST_F(VYXInfSystemUtilZip, BrowsesAndReplacesTheList) {
  Write({{{"dir/", ""}, {"dir/a.txt", "1"}, {"b", "2"}}});
  _entries = List({"old"});
  const CapturedStdout captured;
  EXPECT_EQ(VYXInfSystemUtil::BrowseZipArchive(_path, _entries), S_OK);
  EXPECT_EQ(_entries, List({"dir/", "dir/a.txt", "b"}));
}

TEST_F(VYXInfSystemUtilZip, BrowsingWhatIsNoArchiveNamesThePath) {
  _folder.MakeFile("a.zip", "no archive");
  _entries = List({"old"});
  std::vector<LogLine> lines;
  {
    CapturedStdout captured;
    EXPECT_EQ(VYXInfSystemUtil::BrowseZipArchive(_path, _entries), E_FAIL);
    lines = captured.LogLines();
  }
  EXPECT_THAT(lines, ElementsAre(Line("ERROR", "Cannot open the archive '" + NativeZip() +
                                                   "': it is no zip archive, or its end is missing"),
                                 FailureReturnIn("VYXInfSystemUtil"), Detail(NativeZip())));
  EXPECT_EQ(_entries, List({"old"}));
}

TEST_F(VYXInfSystemUtilZip, UnzipsAndListsTheArchivesOwnNames) {
  Write({{{"dir/", ""}, {"dir/\xC3\xA9.txt", "1"}, {"b", "2"}}});
  EXPECT_EQ(VYXInfSystemUtil::UnzipArchive(_path, _folder.Path("out"), _entries), S_OK);
  EXPECT_EQ(_entries, List({"dir/", "dir/\xC3\xA9.txt", "b"}));
  EXPECT_EQ(VYX::Test::ContentOf(_folder.Native("out/dir/\xC3\xA9.txt")), "1");
  EXPECT_EQ(VYX::Test::ContentOf(_folder.Native("out/b")), "2");
}

TEST_F(VYXInfSystemUtilZip, UnzippingPassesTheCodeOnAndKeepsTheList) {
  Write({{{"../evil", "1"}}});
  _entries = List({"old"});
  std::vector<LogLine> lines;
  {
    CapturedStdout captured;
    EXPECT_EQ(VYXInfSystemUtil::UnzipArchive(_path, _folder.Path("out"), _entries), KORSysZipFile::kUnsafeEntry);
    EXPECT_EQ(VYXInfSystemUtil::UnzipArchive(_folder.Path("none"), _folder.Path("out"), _entries),
              VYX::ResultCode(0x80070002U));
    lines = captured.LogLines();
  }
  EXPECT_THAT(lines, ElementsAre(Line("ERROR", "Cannot extract '../evil' from the archive '" + NativeZip() +
                                                   "': its path leads out of its folder"),
                                 FailureReturnIn("VYXInfSystemUtil"),
                                 Line("ERROR", "Cannot open the archive '" + _folder.Native("none") +
                                                   "': No such file or directory"),
                                 FailureReturnIn("VYXInfSystemUtil")));
  EXPECT_EQ(_entries, List({"old"}));
  EXPECT_THAT(_folder.Names(), ElementsAre("a.zip"));
}

TEST_F(VYXInfSystemUtilZip, ReadsAnEntryAndTellsHow) {
  Write({{{"sub/b.txt", std::string(1000, 'b'), true}, {"a", "content"}}});
  const ConsoleLevel level(TRACE);
  std::vector<LogLine> lines;
  {
    CapturedStdout captured;
    EXPECT_EQ(VYXInfSystemUtil::ReadFileFromZipArchive(_path, "a", _content, false), S_OK);
    lines = captured.LogLines();
  }
  EXPECT_THAT(lines, ElementsAre(Line("DEBUG", "Reading zip content as Binary: [" + NativeZip() + "] / [a] "),
                                 Line("TRACE", "FileInfo: size=7 zipsize=7"), Line("TRACE", "Read 7 bytes ."),
                                 Line("TRACE", "Success reading 7 bytes from file: a in " + NativeZip())));
  EXPECT_EQ(BytesOf(_content), "content");
  {
    const CapturedStdout captured;
    EXPECT_EQ(VYXInfSystemUtil::ReadFileFromZipArchive(_path, "sub\\b.txt", _content, true), S_OK);
  }
  EXPECT_EQ(BytesOf(_content), std::string(1000, 'b'));
}

TEST_F(VYXInfSystemUtilZip, AnEmptyEntryLeavesTheContentAsItWas) {
  Write({{{"a", "12345"}, {"empty", ""}}});
  const ConsoleLevel level(TRACE);
  std::vector<LogLine> lines;
  {
    CapturedStdout captured;
    ASSERT_EQ(VYXInfSystemUtil::ReadFileFromZipArchive(_path, "a", _content, false), S_OK);
    ASSERT_EQ(VYXInfSystemUtil::ReadFileFromZipArchive(_path, "empty", _content, false), S_OK);
    lines = captured.LogLines();
  }
  ASSERT_EQ(lines.size(), 7U);
  EXPECT_THAT(lines[5], Line("TRACE", "FileInfo: size=0 zipsize=0"));
  EXPECT_THAT(lines[6], Line("TRACE", "Success reading 5 bytes from file: empty in " + NativeZip()));
  EXPECT_EQ(BytesOf(_content), "12345");
}

TEST_F(VYXInfSystemUtilZip, AMissingOrDamagedEntryLeavesTheContentAsItWas) {
  Write({{{"a", "1"}, {.name = "bad", .content = "2", .crc = 1}, {.name = "secret", .content = "3", .flags = 1}}});
  std::vector<LogLine> lines;
  {
    CapturedStdout captured;
    ASSERT_EQ(VYXInfSystemUtil::ReadFileFromZipArchive(_path, "a", _content, false), S_OK);
    EXPECT_EQ(VYXInfSystemUtil::ReadFileFromZipArchive(_path, "none", _content, false), KORSysZipFile::kEntryNotFound);
    EXPECT_EQ(VYXInfSystemUtil::ReadFileFromZipArchive(_path, "bad", _content, false), KORSysZipFile::kWrongChecksum);
    EXPECT_EQ(VYXInfSystemUtil::ReadFileFromZipArchive(_path, "secret", _content, false), KORSysZipFile::kEncrypted);
    lines = captured.LogLines();
  }
  const std::string archive = " the archive '" + NativeZip() + "': ";
  EXPECT_THAT(lines, ElementsAre(Line("ERROR", "Cannot open 'none' in" + archive + "there is no such entry"),
                                 FailureReturnIn("VYXInfSystemUtil"),
                                 Line("ERROR", "Cannot read 'bad' from" + archive + "its checksum is wrong"),
                                 FailureReturnIn("VYXInfSystemUtil"),
                                 Line("ERROR", "Cannot open 'secret' in" + archive + "it is encrypted"),
                                 FailureReturnIn("VYXInfSystemUtil")));
  EXPECT_EQ(BytesOf(_content), "1");
}

TEST_F(VYXInfSystemUtilZip, TheOptionSaysHowUnmarkedNamesAreRead) {
  Write({{{"\xC3\xA9", "1"}}});
  EXPECT_EQ(VYXInfSystemUtil::ReadFileFromZipArchive(_path, "\xC3\xA9", _content, true), S_OK);
  ASSERT_EQ(VYXInfSystemUtil::BrowseZipArchive(_path, _entries), S_OK);
  EXPECT_EQ(VYXInfSystemUtil::ReadFileFromZipArchive(_path, _entries[1], _content, false), S_OK);
}

}  // namespace
