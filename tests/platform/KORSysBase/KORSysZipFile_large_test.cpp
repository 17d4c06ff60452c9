#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

#include "platform/adapters/crc32.h"
#include "zip_fixture.h"

namespace {

using VYX::Test::Le16;
using VYX::Test::Le32;
using VYX::Test::Le64;

constexpr std::uint64_t kSize = (std::uint64_t{4} << 30U) + 5;

// Files beyond 4 GiB, which are holes and take no room.
class KORSysZipFileLarge : public VYX::Test::ZipFixture {
 protected:
  void SetUp() override {
    KORSysZipLimits limits;
    limits.maxTotalSize = 2 * kSize;
    limits.maxRatio = 2000;
    _zip.SetLimits(limits);
  }

  static std::uint32_t CrcOfZeros(std::uint64_t iSize) {
    const std::vector<char> zeros(std::size_t{1} << 20U);
    std::uint32_t crc = 0;
    for (std::uint64_t rest = iSize; rest > 0;) {
      const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(rest, zeros.size()));
      crc = VYX::Adapters::Crc32(crc, zeros.data(), count);
      rest -= count;
    }
    return crc;
  }

  // Reads the entry up to a size, which has to be there; all of it is verified where that is its end.
  void ExpectZeros(std::uint64_t iSize) {
    ASSERT_EQ(_zip.OpenFileInZip("hole", 0, 0), S_OK);
    KORSysZipEntryInfo info;
    ASSERT_EQ(_zip.GetCurrentInfo(&info), S_OK);
    EXPECT_EQ(info.uncompressedSize, kSize);
    std::vector<char> buffer(std::size_t{16} << 20U);
    std::uint64_t total = 0;
    std::uint64_t read = 1;
    while (read != 0 && total < iSize) {
      ASSERT_EQ(_zip.ReadBufferInZip(buffer.data(), buffer.size(), &read), S_OK) << VYX::Test::TakePendingError(E_FAIL);
      total += read;
    }
    EXPECT_GE(total, iSize);
  }
};

TEST_F(KORSysZipFileLarge, ReadsAnEntryBeyond4GiB) {
  const std::string crc = Le32(CrcOfZeros(kSize));
  const std::string marker = Le32(0xFFFFFFFF);
  const std::string large = Le16(1) + Le16(16) + Le64(kSize) + Le64(kSize);
  const std::string middle = Le16(45) + Le16(0) + Le16(0) + Le32(0x21'0000) + crc + marker + marker + Le16(4);
  const std::string local = "PK\3\4" + middle + Le16(large.size()) + "hole" + large;
  const std::string record = "PK\1\2" + Le16(45) + middle + Le16(large.size()) + std::string(14, '\0') + "hole" + large;
  const std::uint64_t place = local.size() + kSize;
  const std::string end = "PK\6\6" + Le64(44) + Le16(45) + Le16(45) + Le32(0) + Le32(0) + Le64(1) + Le64(1) +
                          Le64(record.size()) + Le64(place) + "PK\6\7" + Le32(0) + Le64(place + record.size()) +
                          Le32(1) + "PK\5\6" + Le32(0) + Le16(1) + Le16(1) + Le32(record.size()) + marker + Le16(0);
  std::ofstream file(_folder.Native("a.zip"), std::ios::binary);
  file << local;
  file.seekp(static_cast<std::streamoff>(place));
  file << record << end;
  file.close();
  ASSERT_EQ(Open(KORSysZipOpenMode::Read), S_OK) << VYX::Test::TakePendingError(E_FAIL);
  ExpectZeros(kSize);
}

TEST_F(KORSysZipFileLarge, WritesAnEntryBeyond4GiB) {
  const std::string path = _folder.MakeFile("hole", "");
  std::filesystem::resize_file(path, kSize);
  const KORUnicodeString file = _folder.Path("hole");
  ASSERT_EQ(Open(KORSysZipOpenMode::Create), S_OK);
  ASSERT_EQ(_zip.AddFile(&file, 1, 0, nullptr, 0), S_OK);
  ASSERT_EQ(_zip.Close(0), S_OK) << VYX::Test::TakePendingError(E_FAIL);
  ASSERT_EQ(Open(KORSysZipOpenMode::Read), S_OK) << VYX::Test::TakePendingError(E_FAIL);
  ExpectZeros(std::uint64_t{1} << 28U);
  const std::string check = "cd '" + _folder.Native() +
                            "' && python3 -c \"import zipfile; i = zipfile.ZipFile('a.zip').infolist(); "
                            "assert [e.file_size for e in i] == [2**32 + 5]\" && unzip -l a.zip >log";
  EXPECT_EQ(std::system(check.c_str()), 0);
}

}  // namespace
