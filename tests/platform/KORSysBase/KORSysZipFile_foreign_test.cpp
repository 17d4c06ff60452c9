#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "zip_fixture.h"

namespace {

using VYX::Test::ContentOf;

// Archives go from here to other programs and back.
class KORSysZipFileForeign : public VYX::Test::ZipFixture {
 protected:
  void SetUp() override {
    _folder.MakeFolder("in/sub");
    _folder.MakeFolder("in/nothing");
    _folder.MakeFile("in/a.txt", "short");
    _folder.MakeFile("in/empty", "");
    _folder.MakeFile("in/sub/long.txt", _text);
    _folder.MakeFile("in/sub/\xC3\xA9.txt", "accent");
    _folder.MakeFile("in/b c.txt", "blank");
  }

  bool Run(const std::string& iCommand) const {
    const std::string command = "cd '" + _folder.Native() + "' && LC_ALL=C.UTF-8 " + iCommand + " >log 2>&1";
    return std::system(command.c_str()) == 0;
  }

  void ExpectEverythingIn(const std::string& iFolder) const {
    EXPECT_EQ(ContentOf(_folder.Native(iFolder + "/a.txt")), "short");
    EXPECT_EQ(ContentOf(_folder.Native(iFolder + "/empty")), "");
    EXPECT_EQ(ContentOf(_folder.Native(iFolder + "/sub/long.txt")), _text);
    EXPECT_EQ(ContentOf(_folder.Native(iFolder + "/sub/\xC3\xA9.txt")), "accent");
    EXPECT_EQ(ContentOf(_folder.Native(iFolder + "/b c.txt")), "blank");
  }

  void WriteOurs() {
    ASSERT_EQ(Open(KORSysZipOpenMode::Create), S_OK);
    const KORUnicodeString base = _folder.Path("in");
    for (const char* const name : {"a.txt", "empty", "sub/long.txt", "sub/\xC3\xA9.txt", "b c.txt"}) {
      const KORUnicodeString file = base + "/" + name;
      ASSERT_EQ(_zip.AddFile(&file, 1, 0, &base, 0), S_OK);
    }
    ASSERT_EQ(_zip.Close(0), S_OK);
  }

  const std::string _text = std::string(70'000, 'x') + std::string(70'000, 'y');
};

struct Writer {
  const char* name;
  const char* command;
};

constexpr Writer kWriters[] = {
    {"zip", "sh -c 'cd in && zip -qr ../a.zip .'"},
    {"zip, stored, with a comment", "sh -c 'cd in && echo comment | zip -qrz0 ../a.zip .'"},
    {"zip to a pipe", "sh -c 'cd in && zip -qr - . | cat >../a.zip'"},
    {"zip, zip64", "sh -c 'cd in && zip -qr --force-zip64 ../a.zip .'"},
    {"bsdtar", "bsdtar -a -cf a.zip -C in ."},
    {"bsdtar, stored", "bsdtar --format zip --options zip:compression=store -cf a.zip -C in ."},
    {"python", "sh -c 'cd in && python3 -m zipfile -c ../a.zip ./*'"},
    {"python to a pipe",
     "python3 -c \"import os, sys, zipfile\n"
     "r, w = os.pipe()\n"
     "if os.fork() == 0:\n"
     "  os.close(r)\n"
     "  with zipfile.ZipFile(os.fdopen(w, 'wb'), 'w', zipfile.ZIP_DEFLATED) as z:\n"
     "    [z.write(os.path.join(d, f), os.path.relpath(os.path.join(d, f), 'in')) for d, s, n in os.walk('in') for f "
     "in n]\n"
     "  os._exit(0)\n"
     "os.close(w)\n"
     "open('a.zip', 'wb').write(os.fdopen(r, 'rb').read())\""},
    {"python, zip64",
     "python3 -c \"import zipfile\n"
     "z = zipfile.ZipFile('a.zip', 'w')\n"
     "for n in ['a.txt', 'empty', 'sub/long.txt', 'sub/\\u00e9.txt', 'b c.txt']:\n"
     "  with z.open(zipfile.ZipInfo(n), 'w', force_zip64=True) as e: e.write(open('in/' + n, 'rb').read())\n"
     "z.comment = b'a comment'\n"
     "z.close()\""},
};

TEST_F(KORSysZipFileForeign, ReadsTheArchivesOfOthers) {
  for (const Writer& writer : kWriters) {
    SCOPED_TRACE(writer.name);
    std::filesystem::remove(_folder.Native("a.zip"));
    std::filesystem::remove_all(_folder.Native("out"));
    ASSERT_TRUE(Run(writer.command)) << ContentOf(_folder.Native("log"));
    ASSERT_EQ(Extract(), S_OK) << VYX::Test::TakePendingError(E_FAIL);
    ExpectEverythingIn("out");
  }
}

TEST_F(KORSysZipFileForeign, ReadsNamesInCodePage437) {
  ASSERT_TRUE(Run(
      "python3 -c \"import zipfile\n"
      "b = zipfile.ZipInfo('x'); z = zipfile.ZipFile('a.zip', 'w'); b.filename = 'QQ.txt'; z.writestr(b, 'dos')\n"
      "z.close(); d = open('a.zip', 'rb').read().replace(b'QQ', bytes([0x81, 0x84])); open('a.zip', 'wb').write(d)\""));
  ASSERT_EQ(Extract(), S_OK) << VYX::Test::TakePendingError(E_FAIL);
  EXPECT_EQ(ContentOfOut("\xC3\xBC\xC3\xA4.txt"), "dos");
}

TEST_F(KORSysZipFileForeign, OthersReadOurArchives) {
  WriteOurs();
  ASSERT_TRUE(Run("unzip -tq a.zip")) << ContentOf(_folder.Native("log"));
  ASSERT_TRUE(Run("unzip -q a.zip -d by_unzip")) << ContentOf(_folder.Native("log"));
  ExpectEverythingIn("by_unzip");
  ASSERT_TRUE(Run("sh -c 'mkdir by_bsdtar && bsdtar -xf a.zip -C by_bsdtar'")) << ContentOf(_folder.Native("log"));
  ExpectEverythingIn("by_bsdtar");
  ASSERT_TRUE(Run("python3 -m zipfile -e a.zip by_python")) << ContentOf(_folder.Native("log"));
  ExpectEverythingIn("by_python");
  ASSERT_TRUE(Run("python3 -c \"import zipfile; assert zipfile.ZipFile('a.zip').testzip() is None\""));
}

TEST_F(KORSysZipFileForeign, OthersReadOurEmptyArchive) {
  ASSERT_EQ(Open(KORSysZipOpenMode::Create), S_OK);
  ASSERT_EQ(_zip.Close(0), S_OK);
  EXPECT_TRUE(Run("python3 -c \"import zipfile; assert zipfile.ZipFile('a.zip').namelist() == []\""));
  EXPECT_TRUE(Run("bsdtar -tf a.zip"));
  EXPECT_TRUE(Run("sh -c 'unzip -l a.zip; test $? -le 1'"));
}

TEST_F(KORSysZipFileForeign, ReadsMoreThan65535Entries) {
  ASSERT_TRUE(
      Run("python3 -c \"import zipfile\n"
          "with zipfile.ZipFile('a.zip', 'w') as z: [z.writestr('f%d' % n, str(n)) for n in range(66000)]\""));
  ASSERT_EQ(Open(), S_OK) << VYX::Test::TakePendingError(E_FAIL);
  EXPECT_EQ(Listed().size(), 66000U);
  EXPECT_EQ(ReadEntry("f65999"), "65999");
  ASSERT_EQ(Extract(), S_OK);
  EXPECT_EQ(_count, 66000U);
  EXPECT_EQ(ContentOfOut("f65535"), "65535");
}

}  // namespace
