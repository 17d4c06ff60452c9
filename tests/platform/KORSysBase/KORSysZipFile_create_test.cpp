#include <gmock/gmock.h>
#include <sys/stat.h>
#include <utime.h>

#include <cerrno>
#include <filesystem>
#include <optional>

#include "support/injected_faults.h"
#include "zip_fixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using VYX::Test::ContentOf;
using VYX::Test::TakePendingError;

class KORSysZipFileCreate : public VYX::Test::ZipFixture {
 protected:
  long Add(const std::string& iFile, const char* iBase) {
    const KORUnicodeString file = _folder.Path(iFile);
    const KORUnicodeString base = _folder.Path(iBase);
    return _zip.AddFile(&file, 1, 0, &base, 0);
  }
};

TEST_F(KORSysZipFileCreate, StoresFilesRelativeToTheirBase) {
  const std::string text(200'000, 'x');
  _folder.MakeFolder("in/sub");
  _folder.MakeFile("in/a.txt", "content");
  _folder.MakeFile("in/sub/b.txt", text);
  _folder.MakeFile("in/\xC3\xA9", "");
  ASSERT_EQ(Open(KORSysZipOpenMode::Create), S_OK);
  EXPECT_EQ(Add("in/a.txt", "in"), S_OK);
  EXPECT_EQ(Add("in\\sub//b.txt", "in\\"), S_OK);
  EXPECT_EQ(Add("in/\xC3\xA9", "in/."), S_OK);
  const KORUnicodeString bare = _folder.Path("in/sub/b.txt");
  EXPECT_EQ(_zip.AddFile(&bare, 1, 0, nullptr, 0), S_OK);
  EXPECT_EQ(_zip.Close(0), S_OK);
  ASSERT_EQ(Open(), S_OK);
  EXPECT_THAT(Listed(), ElementsAre("a.txt", "sub/b.txt", "\xC3\xA9", "b.txt"));
  EXPECT_EQ(ReadEntry("a.txt"), "content");
  EXPECT_EQ(ReadEntry("sub\\b.txt"), text);
  EXPECT_EQ(ReadEntry("\xC3\xA9"), "");
  EXPECT_LT(std::filesystem::file_size(_folder.Native("a.zip")), 10'000U);
  EXPECT_EQ(Extract(), S_OK);
}

TEST_F(KORSysZipFileCreate, AnEmptyArchiveIsItsEndRecord) {
  ASSERT_EQ(Open(KORSysZipOpenMode::Create), S_OK);
  EXPECT_EQ(_zip.Close(0), S_OK);
  EXPECT_EQ(ContentOf(_folder.Native("a.zip")), std::string("PK\5\6", 4) + std::string(18, '\0'));
  EXPECT_EQ(Extract(), S_OK);
}

TEST_F(KORSysZipFileCreate, GivesTheNameOnlyToACompleteArchive) {
  _folder.MakeFile("f", "1");
  _folder.MakeFile("a.zip", "old");
  {
    KORSysZipFile zip(0);
    ASSERT_EQ(zip.OpenZip(_folder.Path("a.zip"), KORSysZipOpenMode::Create, 0), S_OK);
    EXPECT_EQ(_folder.Names().size(), 3U);
    EXPECT_EQ(ContentOf(_folder.Native("a.zip")), "old");
  }
  EXPECT_THAT(_folder.Names(), ElementsAre("a.zip", "f"));
  EXPECT_EQ(ContentOf(_folder.Native("a.zip")), "old");
  ASSERT_EQ(Open(KORSysZipOpenMode::Create), S_OK);
  EXPECT_EQ(Add("f", ""), S_OK);
  EXPECT_EQ(_zip.Close(0), S_OK);
  EXPECT_THAT(_folder.Names(), ElementsAre("a.zip", "f"));
  ASSERT_EQ(Open(), S_OK);
  EXPECT_EQ(ReadEntry("f"), "1");
}

TEST_F(KORSysZipFileCreate, RefusesFilesThatCannotBeStored) {
  _folder.MakeFolder("in/x");
  _folder.MakeFile("in/a", "1");
  _folder.MakeFile("in/x/a", "2");
  _folder.MakeFile("in/\xFF", "3");
  _folder.MakeLink("in/dangling", "nowhere");
  ASSERT_EQ(Open(KORSysZipOpenMode::Create), S_OK);
  EXPECT_EQ(Add("in/a", "in"), S_OK);
  EXPECT_EQ(Add("in/x/a", "in/x"), KORSysZipFile::kDuplicateEntry);
  EXPECT_EQ(TakePendingError(KORSysZipFile::kDuplicateEntry), "Cannot store '" + _folder.Native("in/x/a") +
                                                                  "' in the archive '" + _folder.Native("a.zip") +
                                                                  "': the archive has an entry of this name already");
  constexpr long kNotFound = VYX::ResultCode(0x80070002U);
  EXPECT_EQ(Add("in/none", "in"), kNotFound);
  EXPECT_EQ(TakePendingError(kNotFound), "Cannot store '" + _folder.Native("in/none") + "' in the archive '" +
                                             _folder.Native("a.zip") + "': No such file or directory");
  EXPECT_EQ(Add("in/dangling", "in"), kNotFound);
  EXPECT_EQ(Add("in/x", "in"), VYX::ResultCode(0x80070005U)) << "a folder";
  EXPECT_EQ(Add("in/\xFF", "in"), KORSysZipFile::kUnsafeEntry);
  EXPECT_EQ(Add("in/x/a", "in/y"), E_INVALIDARG);
  EXPECT_EQ(Add("in/x/a", "in/x/a"), E_INVALIDARG);
  EXPECT_EQ(Add("in/x/../a", "in"), KORSysZipFile::kUnsafeEntry);
  EXPECT_EQ(_zip.Close(0), S_OK);
  ASSERT_EQ(Open(), S_OK);
  EXPECT_THAT(Listed(), ElementsAre("a"));
}

TEST_F(KORSysZipFileCreate, FailsWholeWhereAFileVanishes) {
  _folder.MakeFile("f", "1");
  _folder.MakeFile("g", "2");
  _folder.MakeFile("a.zip", "old");
  ASSERT_EQ(Open(KORSysZipOpenMode::Create), S_OK);
  EXPECT_EQ(Add("f", ""), S_OK);
  EXPECT_EQ(Add("g", ""), S_OK);
  std::filesystem::remove(_folder.Native("g"));
  constexpr long kNotFound = VYX::ResultCode(0x80070002U);
  EXPECT_EQ(_zip.Close(0), kNotFound);
  EXPECT_EQ(TakePendingError(kNotFound),
            "Cannot write 'g' in the archive '" + _folder.Native("a.zip") + "': No such file or directory");
  EXPECT_THAT(_folder.Names(), ElementsAre("a.zip", "f"));
  EXPECT_EQ(ContentOf(_folder.Native("a.zip")), "old");
}

TEST_F(KORSysZipFileCreate, StoresWhatAChangingFileHoldsWhenItIsRead) {
  _folder.MakeFile("grows", "1");
  _folder.MakeFile("shrinks", std::string(1000, '2'));
  _folder.MakeFile("fills", "");
  ASSERT_EQ(Open(KORSysZipOpenMode::Create), S_OK);
  for (const char* const name : {"grows", "shrinks", "fills"}) {
    EXPECT_EQ(Add(name, ""), S_OK);
  }
  _folder.MakeFile("grows", std::string(1000, '1'));
  _folder.MakeFile("shrinks", "2");
  _folder.MakeFile("fills", "3");
  ASSERT_EQ(_zip.Close(0), S_OK);
  ASSERT_EQ(Open(), S_OK);
  EXPECT_EQ(ReadEntry("grows"), std::string(1000, '1'));
  EXPECT_EQ(ReadEntry("shrinks"), "2");
  EXPECT_EQ(ReadEntry("fills"), "3");
}

TEST_F(KORSysZipFileCreate, CompressesPieceByPieceWhatIsTooLargeForMemory) {
  std::string text;
  for (int line = 0; line < 50'000; ++line) {
    text += std::to_string(line) + "\n";
  }
  _folder.MakeFile("large", text);
  KORSysZipLimits limits;
  limits.maxInMemory = 1000;
  _zip.SetLimits(limits);
  ASSERT_EQ(Open(KORSysZipOpenMode::Create), S_OK);
  EXPECT_EQ(Add("large", ""), S_OK);
  ASSERT_EQ(_zip.Close(0), S_OK);
  EXPECT_LT(std::filesystem::file_size(_folder.Native("a.zip")), text.size() / 2);
  ASSERT_EQ(Open(), S_OK);
  EXPECT_EQ(ReadEntry("large"), text);
}

TEST_F(KORSysZipFileCreate, TakesFilesOfEveryAgeAndMode) {
  const utimbuf old{1000, 1000};
  const utimbuf future{5'000'000'000, 5'000'000'000};
  ::utime(_folder.MakeFile("old", "1").c_str(), &old);
  ::utime(_folder.MakeFile("future", "2").c_str(), &future);
  ::chmod(_folder.MakeFile("program", "3").c_str(), 0755);
  ASSERT_EQ(Open(KORSysZipOpenMode::Create), S_OK);
  for (const char* const name : {"old", "future", "program"}) {
    EXPECT_EQ(Add(name, ""), S_OK);
  }
  ASSERT_EQ(_zip.Close(0), S_OK);
  ASSERT_EQ(Extract(), S_OK);
  struct stat info {};
  ASSERT_EQ(::stat(_folder.Native("out/program").c_str(), &info), 0);
  EXPECT_NE(info.st_mode & S_IXUSR, 0U);
}

TEST_F(KORSysZipFileCreate, RefusesPlacesWhereNoArchiveCanBe) {
  _folder.MakeFolder("folder");
  EXPECT_EQ(_zip.OpenZip(_folder.Path("none/a.zip"), KORSysZipOpenMode::Create, 0), VYX::ResultCode(0x80070002U));
  EXPECT_EQ(_zip.OpenZip(_folder.Path("folder"), KORSysZipOpenMode::Create, 0), VYX::ResultCode(0x80070005U));
  EXPECT_THAT(_folder.Names(), ElementsAre("folder"));
}

TEST_F(KORSysZipFileCreate, LeavesOldOrNewWhereTheHostFails) {
  _folder.MakeFile("f", std::string(5000, 'f'));
  const auto create = [this] {
    KORSysZipFile zip(0);
    const KORUnicodeString file = _folder.Path("f");
    long code = zip.OpenZip(_folder.Path("a.zip"), KORSysZipOpenMode::Create, 0);
    code = code < 0 ? code : zip.AddFile(&file, 1, 0, nullptr, 0);
    return code < 0 ? code : zip.Close(0);
  };
  int calls = 0;
  {
    const VYX::Test::InjectedFaults counter(0, EIO, true);
    ASSERT_EQ(create(), S_OK);
    calls = counter.Count();
  }
  KORError::KORCleanLastError();
  const std::string complete = ContentOf(_folder.Native("a.zip"));
  ASSERT_GT(calls, 8);
  for (int call = 1; call <= calls; ++call) {
    _folder.MakeFile("a.zip", "old");
    const int descriptors = VYX::Test::CountOpenDescriptors();
    std::optional<VYX::Test::InjectedFaults> fault;
    fault.emplace(call, EIO, true);
    const long code = create();
    fault.reset();
    EXPECT_EQ(VYX::Test::CountOpenDescriptors(), descriptors) << call;
    EXPECT_THAT(_folder.Names(), ElementsAre("a.zip", "f")) << call;
    EXPECT_EQ(ContentOf(_folder.Native("a.zip")), code < 0 ? "old" : complete) << call;
    EXPECT_EQ(code < 0, TakePendingError(E_FAIL) != "(none)") << call;
  }
}

TEST_F(KORSysZipFileCreate, RefusesCallsOutOfTurn) {
  const KORUnicodeString file = _folder.Path("f");
  KORUnicodeString* names = nullptr;
  unsigned int count = 0;
  char buffer[4];
  std::uint64_t read = 0;
  KORSysZipEntryInfo info;
  const auto expectNothingRead = [&] {
    EXPECT_EQ(_zip.BrowseZip(&names, &count), KORSysZipFile::kWrongState);
    EXPECT_EQ(_zip.ExtractAll(_folder.Path("out"), 0, nullptr), KORSysZipFile::kWrongState);
    EXPECT_EQ(_zip.OpenFileInZip("f", 0, 0), KORSysZipFile::kWrongState);
    EXPECT_EQ(_zip.GetCurrentInfo(&info), KORSysZipFile::kWrongState);
    EXPECT_EQ(_zip.ReadBufferInZip(buffer, 4, &read), KORSysZipFile::kWrongState);
    EXPECT_EQ(_zip.CloseFileInZip(), KORSysZipFile::kWrongState);
  };
  expectNothingRead();
  EXPECT_EQ(_zip.AddFile(&file, 1, 0, nullptr, 0), KORSysZipFile::kWrongState);
  EXPECT_EQ(_zip.Close(0), KORSysZipFile::kWrongState);
  ASSERT_EQ(Open(KORSysZipOpenMode::Create), S_OK);
  expectNothingRead();
  EXPECT_EQ(_zip.AddFile(nullptr, 1, 0, nullptr, 0), E_INVALIDARG);
  EXPECT_EQ(_zip.AddFile(&file, 2, 0, nullptr, 0), E_INVALIDARG);
  EXPECT_EQ(_zip.Close(0), S_OK);
  EXPECT_EQ(Open(static_cast<KORSysZipOpenMode>(2)), E_INVALIDARG);
  EXPECT_EQ(Open(KORSysZipOpenMode::Browse, 1), E_INVALIDARG);
  EXPECT_THAT(TakePendingError(E_INVALIDARG), HasSubstr("the options are unknown"));
}

}  // namespace
