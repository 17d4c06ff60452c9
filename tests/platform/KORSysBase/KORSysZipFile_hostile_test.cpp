#include <gmock/gmock.h>

#include <cerrno>

#include "support/injected_faults.h"
#include "zip_fixture.h"

namespace {

using ::testing::ElementsAre;
using VYX::Test::BuiltArchive;
using VYX::Test::BuiltEntry;
using VYX::Test::Le16;
using VYX::Test::Le32;
using VYX::Test::Le64;
using VYX::Test::TakePendingError;

constexpr std::uint16_t kUtf8Flag = 1U << 11U;

class KORSysZipFileHostile : public VYX::Test::ZipFixture {};

struct UnsafeName {
  std::string name;
  const char* reason;
};

const UnsafeName kNeverSafe[] = {
    {"", "its name is empty"},
    {"../x", "leads out of its folder"},
    {"a/../../x", "leads out of its folder"},
    {"a/..", "leads out of its folder"},
    {"..\\x", "leads out of its folder"},
    {"a\\..\\..\\x", "leads out of its folder"},
    {"/x", "absolute"},
    {"//host/share/x", "absolute"},
    {"\\x", "absolute"},
    {"\\\\host\\share\\x", "absolute"},
    {"\\\\?\\C:\\x", "absolute"},
    {"C:\\x", "names a drive"},
    {"C:/x", "names a drive"},
    {"c:x", "names a drive"},
    {std::string("a\0b", 3), "zero byte"},
    {"\xFF\xFE", "no well-formed UTF-8"},
    {".", "stands for a folder"},
    {"a/.", "stands for a folder"},
    {std::string(256, 'x'), "longer than 255 bytes"},
    {std::string(4097, '/') + "x", "longer than 4096 bytes"},
};

const UnsafeName kNotPortable[] = {
    {"con", "the name of a device"},      {"a/NUL.txt", "the name of a device"},
    {"Com1.log", "the name of a device"}, {"lpt\xC2\xB9", "the name of a device"},
    {"aux .c", "the name of a device"},   {"file.txt:stream", "a colon"},
    {"dir./x", "a blank or a full stop"}, {"trail ", "a blank or a full stop"},
    {"bell\a", "a control character"},
};

TEST_F(KORSysZipFileHostile, RefusesNamesThatAreNeverSafe) {
  KORSysZipLimits limits;
  limits.arePortableNamesRequired = false;
  _zip.SetLimits(limits);
  for (const UnsafeName& row : kNeverSafe) {
    SCOPED_TRACE(row.name);
    ExpectRefused({{{"good", "1"}, {.name = row.name, .content = "2", .flags = kUtf8Flag}}},
                  KORSysZipFile::kUnsafeEntry, row.reason);
  }
}

TEST_F(KORSysZipFileHostile, RefusesNamesThatSomeHostCannotStore) {
  for (const UnsafeName& row : kNotPortable) {
    SCOPED_TRACE(row.name);
    ExpectRefused({{{"good", "1"}, {.name = row.name, .content = "2", .flags = kUtf8Flag}}},
                  KORSysZipFile::kUnsafeEntry, row.reason);
  }
}

TEST_F(KORSysZipFileHostile, TakesNamesOfThisHostWhereThatIsSet) {
  KORSysZipLimits limits;
  limits.arePortableNamesRequired = false;
  _zip.SetLimits(limits);
  for (const UnsafeName& row : kNotPortable) {
    Write({{{.name = row.name, .content = "2"}}});
    EXPECT_EQ(Extract(), S_OK) << row.name;
    EXPECT_EQ(ContentOfOut(row.name), "2");
  }
}

TEST_F(KORSysZipFileHostile, RefusesLinksAndSpecialFiles) {
  for (const std::uint32_t mode : {0120777U, 0010644U, 0020644U, 0060644U, 0140755U}) {
    SCOPED_TRACE(mode);
    ExpectRefused({{{.name = "thing", .content = "..", .unixMode = mode}, {"thing/x", "2"}}},
                  KORSysZipFile::kUnsafeEntry, mode == 0120777U ? "'thing' from the archive" : "special file");
  }
}

TEST_F(KORSysZipFileHostile, RefusesEntriesThatLandOnOneFile) {
  const BuiltArchive kClashes[] = {
      {{{"a", "1"}, {"a", "2"}}},
      {{{"a", "1"}, {"a/b", "2"}}},
      {{{"a/b", "1"}, {"a", "2"}}},
      {{{"a\\b", "1"}, {"a/b", "2"}}},
      {{{"a", "1"}, {"./a", "2"}}},
      {{{"a", "1"}, {"a/", ""}}},
      {{{"a!", "0"}, {"a", "1"}, {"a/b/c/d", "2"}}},
  };
  for (const BuiltArchive& archive : kClashes) {
    ExpectRefused(archive, KORSysZipFile::kDuplicateEntry, "another entry takes its place");
  }
  Write({{{"a/", ""}, {"a/", ""}, {"a/b", "1"}}});
  EXPECT_EQ(Extract(), S_OK) << "a folder may be told twice";
}

TEST_F(KORSysZipFileHostile, RefusesNamesThatDifferInCaseOnlyWhereCaseIsIgnored) {
  const BuiltArchive archive{{{"Read", "1"}, {"rEAD", "2"}}};
  Write(archive);
  EXPECT_EQ(Extract(), S_OK);
  VYX::Test::TemporaryFolder other;
  KORSysZipLimits limits;
  limits.isCaseIgnored = true;
  _zip.SetLimits(limits);
  ASSERT_EQ(Open(), S_OK);
  EXPECT_EQ(_zip.ExtractAll(other.Path("out"), 0, nullptr), KORSysZipFile::kDuplicateEntry);
  EXPECT_THAT(other.Names(), ElementsAre());
}

TEST_F(KORSysZipFileHostile, StopsBombsByRatio) {
  ExpectRefused({{{"small", "1"}, {"bomb", std::string(17U << 20U, '\0'), true}}}, KORSysZipFile::kLimitExceeded,
                "'bomb' from the archive");
  Write({{{"free", std::string(16U << 20U, '\0'), true}}});
  EXPECT_EQ(Extract(), S_OK) << "the first bytes are free";
}

TEST_F(KORSysZipFileHostile, StopsBombsOfManyEntries) {
  const std::string packed = VYX::Test::Deflated(std::string(12U << 20U, '\0'));
  std::vector<BuiltEntry> entries;
  for (const char* const name : {"a", "b", "c"}) {
    entries.push_back({.name = name, .content = std::string(12U << 20U, '\0'), .isDeflated = true, .data = packed});
  }
  ExpectRefused({entries}, KORSysZipFile::kLimitExceeded, "it grows more than 200 times");
}

TEST_F(KORSysZipFileHostile, StopsAtTheTotalAndTheNumberOfEntries) {
  KORSysZipLimits limits;
  limits.maxTotalSize = 10;
  limits.maxEntries = 2;
  _zip.SetLimits(limits);
  Write({{{"a", "12345"}, {"b", "12345"}}});
  EXPECT_EQ(Extract(), S_OK);
  ASSERT_EQ(VYX::Test::ContentOf(_folder.Native("out/b")), "12345");
  Write({{{"a", "12345"}, {"b", "123456"}}});
  EXPECT_EQ(Extract(), KORSysZipFile::kLimitExceeded);
  Write({{{"a", "12345678901"}}});
  EXPECT_EQ(Extract(), KORSysZipFile::kLimitExceeded);
  Write({{{"a", ""}, {"b", ""}, {"c", ""}}});
  EXPECT_EQ(Open(), KORSysZipFile::kLimitExceeded);
  EXPECT_EQ(TakePendingError(KORSysZipFile::kLimitExceeded),
            "Cannot open the archive '" + _folder.Native("a.zip") + "': it has 3 entries, more than 2");
}

TEST_F(KORSysZipFileHostile, TakesNoMemoryForEntriesThatCannotBeThere) {
  ExpectRefused({.entries = {{"a", "1"}}, .count = 0xFFFF}, KORSysZipFile::kDamaged, "directory is damaged");
  const std::string large =
      "PK\6\6" + Le64(44) + Le16(45) + Le16(45) + Le32(0) + Le32(0) + Le64(999'999) + Le64(999'999) + Le64(0) + Le64(0);
  const std::string locator = "PK\6\7" + Le32(0) + Le64(0) + Le32(1);
  const std::string end = "PK\5\6" + Le32(0) + Le32(0xFFFFFFFF) + Le32(0xFFFFFFFF) + Le32(0xFFFFFFFF) + Le16(0);
  ExpectRefused(large + locator + end, KORSysZipFile::kDamaged, "directory is damaged");
}

TEST_F(KORSysZipFileHostile, RefusesEntriesThatOverlap) {
  const BuiltEntry inner{"inner", "content of the inner entry"};
  const std::string image = BuiltArchive{{inner}}.Bytes();
  const std::string local = image.substr(0, 30 + inner.name.size() + inner.content.size());
  BuiltEntry hidden = inner;
  hidden.offset = 30 + 5;
  ExpectRefused({{{"outer", local}, hidden}}, KORSysZipFile::kDamaged, "it overlaps the entry 'outer'");
}

TEST_F(KORSysZipFileHostile, RefusesWhatContradictsItself) {
  const std::string text(1000, 'x');
  const std::pair<BuiltEntry, const char*> kLies[] = {
      {{.name = "e", .content = text, .isDeflated = true, .size = 999}, "damaged"},
      {{.name = "e", .content = text, .isDeflated = true, .size = 1001}, "damaged"},
      {{.name = "e", .content = text, .isDeflated = true, .size = 1U << 30U}, "sizes contradict"},
      {{.name = "e", .content = text, .size = 999}, "sizes contradict"},
      {{.name = "e", .content = text, .size = 0xFFFFFFFF}, "zip64 sizes are missing"},
      {{.name = "e", .content = text, .localSize = 999}, "differ"},
      {{.name = "e", .content = text, .localCrc = 1}, "differ"},
      {{.name = "e", .content = text, .localName = "f"}, "two names differ"},
      {{.name = "e", .content = text, .localMethod = 8}, "contradicts the directory"},
      {{.name = "e", .content = text, .offset = 1}, "local header is missing"},
      {{.name = "e", .content = text, .offset = 0x7FFFFFFF}, "lies outside the archive"},
      {{.name = "e", .content = text, .extra = Le16(1) + Le16(99)}, "extra fields are damaged"},
      {{.name = "e", .content = text, .isDeflated = true, .data = std::string(40, '\xFF')}, "damaged"},
      {{.name = "e/", .content = text}, "a folder with content"},
  };
  for (const auto& [entry, mention] : kLies) {
    SCOPED_TRACE(mention);
    ExpectRefused({{{"good", "1"}, entry}}, KORSysZipFile::kDamaged, mention);
    EXPECT_LT(Extract(), 0);
  }
}

TEST_F(KORSysZipFileHostile, RefusesWrongChecksumsOnEveryWay) {
  const std::string text(5000, 'x');
  for (const std::uint64_t maxInMemory : {std::uint64_t{1} << 20U, std::uint64_t{10}}) {
    KORSysZipLimits limits;
    limits.maxInMemory = maxInMemory;
    _zip.SetLimits(limits);
    for (const bool isDeflated : {false, true}) {
      const BuiltArchive archive{{{"good", "1"}, {.name = "bad", .content = text, .isDeflated = isDeflated, .crc = 1}}};
      ExpectRefused(archive, KORSysZipFile::kWrongChecksum, "'bad' from the archive");
      ASSERT_EQ(Open(KORSysZipOpenMode::Read), S_OK);
      EXPECT_THAT(ReadEntry("bad"), ::testing::HasSubstr("its checksum is wrong"));
      EXPECT_EQ(ReadEntry("good"), "1");
    }
  }
}

// Entries of no content are read too: only that tells that there is none.
TEST_F(KORSysZipFileHostile, RefusesWrongChecksumsAndHiddenContentOfEmptyEntries) {
  const BuiltEntry kRows[] = {
      {.name = "bad", .isDeflated = true, .crc = 1},
      {.name = "bad", .isDeflated = true, .data = VYX::Test::Deflated("hidden"), .crc = 0, .size = 0},
  };
  for (const std::uint64_t maxInMemory : {std::uint64_t{1} << 20U, std::uint64_t{1}}) {
    KORSysZipLimits limits;
    limits.maxInMemory = maxInMemory;
    _zip.SetLimits(limits);
    for (const BuiltEntry& entry : kRows) {
      Write({{entry}});
      ASSERT_EQ(Open(KORSysZipOpenMode::Read), S_OK);
      ASSERT_EQ(_zip.OpenFileInZip("bad", 0, 0), S_OK);
      char buffer[8];
      std::uint64_t read = 99;
      EXPECT_LT(_zip.ReadBufferInZip(buffer, sizeof buffer, &read), 0) << maxInMemory;
      EXPECT_EQ(read, 99U);
      EXPECT_LT(Extract(), 0) << maxInMemory;
    }
  }
}

TEST_F(KORSysZipFileHostile, TellsEncryptedAndUnknownEntriesApartAndReadsTheOthers) {
  const std::string kAes = Le16(0x9901) + Le16(7) + Le16(2) + "AE" + "\3" + Le16(8);
  const std::pair<BuiltEntry, long> kRows[] = {
      {{.name = "e", .content = "1", .flags = 1}, KORSysZipFile::kEncrypted},
      {{.name = "e", .content = "1", .flags = 1 | 1U << 6U}, KORSysZipFile::kEncrypted},
      {{.name = "e", .content = "1", .flags = 1, .extra = kAes, .method = 99}, KORSysZipFile::kEncrypted},
      {{.name = "e", .content = "1", .method = 12}, KORSysZipFile::kUnknownMethod},
      {{.name = "e", .content = "1", .method = 9}, KORSysZipFile::kUnknownMethod},
  };
  for (const auto& [entry, code] : kRows) {
    ExpectRefused({{{"good", "fine"}, entry}}, code, "Cannot extract 'e' from the archive");
    ASSERT_EQ(Open(KORSysZipOpenMode::Read), S_OK);
    EXPECT_EQ(_zip.OpenFileInZip("e", 0, 0), code);
    EXPECT_EQ(ReadEntry("good"), "fine");
    EXPECT_THAT(Listed(), ElementsAre("good", "e"));
  }
}

TEST_F(KORSysZipFileHostile, RefusesWhatStandsBehindTheEndOrTwoEnds) {
  const std::string bytes = BuiltArchive{{{"a", "1"}}}.Bytes();
  ExpectRefused(bytes + "junk", KORSysZipFile::kNotAnArchive, "its end is missing");
  ExpectRefused({.entries = {{"a", "1"}}, .comment = BuiltArchive{}.Bytes()}, KORSysZipFile::kNotAnArchive, "two ends");
  ExpectRefused("junk" + bytes, KORSysZipFile::kDamaged, "");
  ExpectRefused(std::string(), KORSysZipFile::kNotAnArchive, "no zip archive");
  ExpectRefused(std::string(100'000, 'x'), KORSysZipFile::kNotAnArchive, "no zip archive");
  std::string volumes = bytes;
  volumes[bytes.size() - 18] = 1;
  ExpectRefused(volumes, KORSysZipFile::kDamaged, "one of several volumes");
  Write({.entries = {{"a", "1"}}, .prefix = "#!/bin/sh\n"});
  EXPECT_EQ(Extract(), S_OK) << "a program in front that the archive knows of";
}

TEST_F(KORSysZipFileHostile, RefusesEveryTruncation) {
  const std::string bytes = BuiltArchive{{{"a", "stored"}, {"b", std::string(300, 'x'), true}}, "comment"}.Bytes();
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    Write(bytes.substr(0, size));
    EXPECT_LT(Extract(), 0) << size;
    ASSERT_THAT(_folder.Names(), ElementsAre("a.zip")) << size;
  }
}

TEST_F(KORSysZipFileHostile, SurvivesEveryChangedByte) {
  const std::string bytes = BuiltArchive{{{"a", "stored"}, {"b", std::string(300, 'x'), true}}, "comment"}.Bytes();
  for (std::size_t place = 0; place < bytes.size(); ++place) {
    for (const int change : {0x01, 0x80, 0xFF}) {
      std::string changed = bytes;
      changed[place] = static_cast<char>(changed[place] ^ change);
      VYX::Test::TemporaryFolder target;
      Write(changed);
      if (Open() < 0 || _zip.ExtractAll(target.Path("out"), 0, nullptr) < 0) {
        ASSERT_THAT(target.Names(), ElementsAre()) << place;
      } else {
        ASSERT_EQ(target.Names("out").size(), 2U) << place;
      }
    }
  }
}

TEST_F(KORSysZipFileHostile, LeavesNothingWhereTheHostFails) {
  Write({{{"a", "1"}, {"sub/b", std::string(3000, 'b'), true}, {"empty/", ""}}});
  int calls = 0;
  {
    VYX::Test::TemporaryFolder target;
    VYX::Test::InjectedFaults counter(0, EIO, true);
    ASSERT_EQ(Open(), S_OK);
    ASSERT_EQ(_zip.ExtractAll(target.Path("out"), 0, nullptr), S_OK);
    calls = counter.Count();
  }
  ASSERT_GT(calls, 20);
  for (int call = 1; call <= calls; ++call) {
    VYX::Test::TemporaryFolder target;
    const int descriptors = VYX::Test::CountOpenDescriptors();
    long code = S_OK;
    {
      const VYX::Test::InjectedFaults fault(call, EIO, true);
      KORSysZipFile zip(0);
      code = zip.OpenZip(_folder.Path("a.zip"), KORSysZipOpenMode::Browse, 0);
      code = code < 0 ? code : zip.ExtractAll(target.Path("out"), 0, nullptr);
    }
    EXPECT_EQ(VYX::Test::CountOpenDescriptors(), descriptors) << call;
    if (code < 0) {
      EXPECT_NE(TakePendingError(code), "(none)") << call;
      EXPECT_THAT(target.Names(), ElementsAre()) << call;
    } else {
      EXPECT_EQ(VYX::Test::ContentOf(target.Native("out/sub/b")), std::string(3000, 'b')) << call;
    }
  }
}

TEST_F(KORSysZipFileHostile, LeavesNothingOnAFullDisk) {
  Write({{{"a", "1"}, {"b", "2"}}});
  const VYX::Test::SavedSystemCalls saved;
  VYX::Os::Posix::Calls().Write = [](int, const void*, std::size_t) -> ssize_t {
    errno = ENOSPC;
    return -1;
  };
  constexpr long kDiskFull = VYX::ResultCode(0x80070070U);
  EXPECT_EQ(Extract(), kDiskFull);
  EXPECT_EQ(TakePendingError(kDiskFull),
            "Cannot extract 'a' from the archive '" + _folder.Native("a.zip") + "': No space left on device");
  EXPECT_THAT(_folder.Names(), ElementsAre("a.zip"));
}

}  // namespace
