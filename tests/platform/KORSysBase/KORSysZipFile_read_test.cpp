#include <gmock/gmock.h>

#include "zip_fixture.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using VYX::Test::TakePendingError;

class KORSysZipFileRead : public VYX::Test::ZipFixture {};

TEST_F(KORSysZipFileRead, ListsNamesWithTheirFigures) {
  Write({{{"dir/", ""}, {"dir/a.txt", "123456789"}, {"b", std::string(1000, 'b'), true}}});
  ASSERT_EQ(Open(), S_OK);
  KORUnicodeString* names = nullptr;
  unsigned int count = 0;
  std::uint64_t* sizes = nullptr;
  std::uint64_t* compressed = nullptr;
  std::uint32_t* checksums = nullptr;
  ASSERT_EQ(_zip.BrowseZip(&names, &count, &sizes, &compressed, &checksums), S_OK);
  ASSERT_EQ(count, 3U);
  EXPECT_EQ(names[1], "dir/a.txt");
  EXPECT_EQ(sizes[1], 9U);
  EXPECT_EQ(compressed[1], 9U);
  EXPECT_EQ(checksums[1], 0xCBF43926U) << "the check value of CRC-32";
  EXPECT_EQ(sizes[2], 1000U);
  EXPECT_LT(compressed[2], 100U);
  delete[] names;
  delete[] sizes;
  delete[] compressed;
  delete[] checksums;
}

TEST_F(KORSysZipFileRead, ReadsInOneGoInPiecesAndAgain) {
  std::string text;
  for (int line = 0; line < 5000; ++line) {
    text += std::to_string(line);
  }
  Write({{{"a", text, true}, {"b", text}}});
  for (const std::uint64_t maxInMemory : {std::uint64_t{1} << 20U, std::uint64_t{100}}) {
    KORSysZipLimits limits;
    limits.maxInMemory = maxInMemory;
    _zip.SetLimits(limits);
    ASSERT_EQ(Open(KORSysZipOpenMode::Read), S_OK);
    for (const char* const name : {"a", "b", "a"}) {
      EXPECT_EQ(ReadEntry(name), text);
      ASSERT_EQ(_zip.OpenFileInZip(name, 0, 0), S_OK);
      std::string pieces;
      std::uint64_t read = 1;
      while (read != 0) {
        char buffer[777];
        ASSERT_EQ(_zip.ReadBufferInZip(buffer, sizeof buffer, &read), S_OK);
        pieces.append(buffer, read);
      }
      EXPECT_EQ(pieces, text);
    }
  }
}

TEST_F(KORSysZipFileRead, TellsWhatIsMissingOrDouble) {
  Write({{{"a", "1"}, {"b", "2"}, {"b", "3"}}});
  ASSERT_EQ(Open(KORSysZipOpenMode::Read), S_OK);
  EXPECT_EQ(_zip.OpenFileInZip("c", 0, 0), KORSysZipFile::kEntryNotFound);
  EXPECT_EQ(TakePendingError(KORSysZipFile::kEntryNotFound),
            "Cannot open 'c' in the archive '" + _folder.Native("a.zip") + "': there is no such entry");
  EXPECT_EQ(_zip.OpenFileInZip("b", 0, 0), KORSysZipFile::kDuplicateEntry);
  EXPECT_EQ(ReadEntry("a"), "1");
}

TEST_F(KORSysZipFileRead, HoldsSingleEntriesAgainstTheLimits) {
  Write({{{"bomb", std::string(17U << 20U, '\0'), true}, {"good", "1"}}});
  ASSERT_EQ(Open(KORSysZipOpenMode::Read), S_OK);
  EXPECT_EQ(_zip.OpenFileInZip("bomb", 0, 0), KORSysZipFile::kLimitExceeded);
  EXPECT_EQ(ReadEntry("good"), "1");
  KORSysZipLimits limits;
  limits.maxRatio = 2000;
  _zip.SetLimits(limits);
  ASSERT_EQ(Open(KORSysZipOpenMode::Read), S_OK);
  EXPECT_EQ(ReadEntry("bomb"), std::string(17U << 20U, '\0'));
}

TEST_F(KORSysZipFileRead, StartsFromTheDefaultLimits) {
  const KORSysZipLimits before = KORSysZipFile::GetDefaultLimits();
  KORSysZipLimits limits = before;
  limits.maxEntries = 1;
  KORSysZipFile::SetDefaultLimits(limits);
  Write({{{"a", "1"}, {"b", "2"}}});
  KORSysZipFile zip(0);
  KORSysZipFile::SetDefaultLimits(before);
  EXPECT_EQ(zip.OpenZip(_folder.Path("a.zip"), KORSysZipOpenMode::Read, 0), KORSysZipFile::kLimitExceeded);
  EXPECT_EQ(Open(), S_OK);
}

TEST_F(KORSysZipFileRead, TellsFilesThatCannotBeOpened) {
  constexpr long kNotFound = VYX::ResultCode(0x80070002U);
  EXPECT_EQ(Open(), kNotFound);
  EXPECT_EQ(TakePendingError(kNotFound),
            "Cannot open the archive '" + _folder.Native("a.zip") + "': No such file or directory");
  _folder.MakeFolder("folder");
  EXPECT_LT(_zip.OpenZip(_folder.Path("folder"), KORSysZipOpenMode::Browse, 0), 0);
  EXPECT_LT(_zip.OpenZip(KORUnicodeString(std::string_view("a\0b", 3)), KORSysZipOpenMode::Browse, 0), 0);
  EXPECT_LT(_zip.OpenZip("", KORSysZipOpenMode::Browse, 0), 0);
  EXPECT_LT(_zip.OpenZip("C:\\a.zip", KORSysZipOpenMode::Browse, 0), 0);
}

}  // namespace
