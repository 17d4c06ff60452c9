#include "KORSysBase/KORFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <string_view>

#include "support/injected_faults.h"
#include "support/pending_error.h"
#include "support/temporary_folder.h"
#include "support/unprivileged.h"

namespace VYX::Test {
namespace {

constexpr long Code(unsigned int iNumber) {
  return static_cast<long>(static_cast<int>(0x80070000U + iNumber));
}

class KORFile : public ::testing::Test {
 protected:
  TemporaryFolder _folder;
};

TEST_F(KORFile, WritesAppendsAndReads) {
  unsigned int file = 0;
  unsigned int count = 0;
  for (const char* mode : {"w", "ab"}) {
    ASSERT_EQ(KORFOpen(_folder.Path("f"), mode, &file), 0);
    EXPECT_NE(file, 0U);
    EXPECT_EQ(KORFWrite(file, "abc", 3, &count), 0);
    EXPECT_EQ(count, 3U);
    EXPECT_EQ(KORFClose(file), 0);
  }
  ASSERT_EQ(KORFOpen(_folder.Path("f"), "rb", &file), 0);
  unsigned int size = 0;
  EXPECT_EQ(KORFSize(file, &size), 0);
  EXPECT_EQ(size, 6U);
  char buffer[8] = {};
  EXPECT_EQ(KORFRead(file, buffer, 4, &count), 0);
  EXPECT_EQ(std::string(buffer, count), "abca");
  EXPECT_EQ(KORFRead(file, buffer, 4, &count), 0);
  EXPECT_EQ(std::string(buffer, count), "bc");
  EXPECT_EQ(KORFRead(file, buffer, 4, &count), 0);
  EXPECT_EQ(count, 0U);
  EXPECT_EQ(KORFClose(file), 0);
}

TEST_F(KORFile, BackslashSeparatesHereToo) {
  _folder.MakeFile("f", "x");
  std::string path = _folder.Native("f");
  for (char& byte : path) {
    byte = byte == '/' ? '\\' : byte;
  }
  EXPECT_EQ(_KORFileAccess(KORUnicodeString(std::string_view(path)), 0), 0);
}

TEST_F(KORFile, FailuresNameObjectAndCause) {
  _folder.MakeFile("f", "x");
  struct Row {
    KORUnicodeString path;
    const char* mode;
    long code;
    std::string message;
  };
  const std::string none = _folder.Native("none");
  const Row kRows[] = {
      {_folder.Path("none"), "r", Code(2), "Cannot open '" + none + "' for reading: No such file or directory"},
      {_folder.Path("f/x"), "w", Code(267), "Cannot open '" + _folder.Native("f/x") + "' for writing: Not a directory"},
      {_folder.Path(), "r", Code(5), "Cannot open '" + _folder.Native() + "' for reading: Is a directory"},
      {_folder.Path("f"), "ax", Code(183), "Cannot open '" + _folder.Native("f") + "' for appending: File exists"},
      {"C:\\f", "rb", Code(3), "Cannot open 'C:\\f' for reading: No such device"},
      {_folder.Path("f"), "r+", Code(87), "Cannot open '" + _folder.Native("f") + "': unknown mode"},
      {_folder.Path("f"), "", Code(87), "Cannot open '" + _folder.Native("f") + "': unknown mode"},
      {_folder.Path("f"), "rbb", Code(87), "Cannot open '" + _folder.Native("f") + "': unknown mode"},
      {_folder.Path("f"), "rx", Code(87), "Cannot open '" + _folder.Native("f") + "': unknown mode"},
      {_folder.Path("f"), nullptr, Code(87), "Cannot open '" + _folder.Native("f") + "': unknown mode"},
      {_folder.Path(std::string(300, 'n')), "w", Code(206),
       "Cannot open '" + _folder.Native(std::string(300, 'n')) + "' for writing: File name too long"},
  };
  for (const Row& row : kRows) {
    unsigned int file = 77;
    EXPECT_EQ(KORFOpen(row.path, row.mode, &file), row.code) << row.message;
    EXPECT_EQ(TakePendingError(row.code), row.message);
    EXPECT_EQ(file, 77U);
  }
}

TEST_F(KORFile, ZeroByteInAPathIsNeverCutAt) {
  const std::string path = _folder.MakeFile("f", "kept") + std::string("\0.txt", 5);
  unsigned int file = 0;
  const KORUnicodeString text{std::string_view(path)};
  EXPECT_EQ(KORFOpen(text, "w", &file), Code(123));
  EXPECT_EQ(_KORDeleteFile(text), Code(123));
  EXPECT_EQ(_KORFileAccess(text, 0), Code(123));
  EXPECT_EQ(ContentOf(_folder.Native("f")), "kept");
}

TEST_F(KORFile, WhatHasNoSizeIsRefused) {
  ASSERT_EQ(::mkfifo(_folder.Native("pipe").c_str(), 0600), 0);
  unsigned int file = 0;
  unsigned int size = 77;
  ASSERT_EQ(KORFOpen(_folder.Path("pipe"), "r", &file), 0);
  EXPECT_EQ(KORFSize(file, &size), Code(87));
  EXPECT_EQ(TakePendingError(Code(87)), "Cannot tell the size of '" + _folder.Native("pipe") + "': not a regular file");
  EXPECT_EQ(size, 77U);
  EXPECT_EQ(KORFClose(file), 0);
}

TEST_F(KORFile, SizeBeyond32BitsIsRefusedAndTheLargestIsNot) {
  _folder.MakeFile("big", "");
  if (::truncate(_folder.Native("big").c_str(), off_t{0xFFFFFFFF}) != 0) {
    GTEST_SKIP() << "the file system takes no file of 4 GiB";
  }
  unsigned int file = 0;
  unsigned int size = 77;
  ASSERT_EQ(KORFOpen(_folder.Path("big"), "r", &file), 0);
  EXPECT_EQ(KORFSize(file, &size), 0);
  EXPECT_EQ(size, 0xFFFFFFFFU);
  size = 77;
  ASSERT_EQ(::truncate(_folder.Native("big").c_str(), off_t{0x100000000}), 0);
  EXPECT_EQ(KORFSize(file, &size), Code(223));
  EXPECT_EQ(size, 77U);
  EXPECT_EQ(TakePendingError(Code(223)),
            "Cannot tell the size of '" + _folder.Native("big") + "': 4294967296 bytes do not fit into 32 bits");
  EXPECT_EQ(KORFClose(file), 0);
}

TEST_F(KORFile, UnusableDescriptorsAreRefused) {
  unsigned int count = 0;
  char byte = 0;
  EXPECT_LT(KORFRead(0, &byte, 1, &count), 0);
  EXPECT_LT(KORFWrite(0, &byte, 1, &count), 0);
  EXPECT_LT(KORFSize(0, &count), 0);
  EXPECT_LT(KORFClose(0), 0);
  constexpr unsigned int kNeverOpened = 0x7FFFFFFF;
  EXPECT_EQ(KORFRead(kNeverOpened, &byte, 1, &count), Code(6));
  EXPECT_EQ(TakePendingError(Code(6)), "Cannot read 'descriptor 2147483647': Bad file descriptor");
  EXPECT_EQ(KORFClose(kNeverOpened), Code(6));
}

TEST_F(KORFile, FullDeviceNamesTheFile) {
  unsigned int file = 0;
  unsigned int count = 77;
  ASSERT_EQ(KORFOpen("/dev/full", "w", &file), 0);
  EXPECT_EQ(KORFWrite(file, "x", 1, &count), Code(112));
  EXPECT_EQ(count, 77U);
  EXPECT_EQ(TakePendingError(Code(112)), "Cannot write '/dev/full': No space left on device");
  EXPECT_EQ(KORFClose(file), 0);
}

TEST_F(KORFile, AccessTellsExistenceAndWritability) {
  ASSERT_EQ(::chmod(_folder.Native().c_str(), 0755), 0);
  _folder.MakeFile("f", "x");
  ASSERT_EQ(::chmod(_folder.Native("f").c_str(), 0444), 0);
  EXPECT_EQ(_KORFileAccess(_folder.Path("f"), 0, 0), 0);
  EXPECT_EQ(_KORFileAccess(_folder.Path(), 0, 0), 0) << "a folder exists too";
  EXPECT_EQ(_KORFileAccess(_folder.Path("none"), 0, 0), Code(2));
  EXPECT_EQ(TakePendingError(Code(2)), "Cannot access '" + _folder.Native("none") + "': No such file or directory");
  EXPECT_EQ(_KORFileAccess(_folder.Path("f"), 1, 0), Code(87));
  _folder.MakeLink("dangling", "nowhere");
  EXPECT_EQ(_KORFileAccess(_folder.Path("dangling"), 0, 0), Code(2));
  EXPECT_TRUE(HoldsForOrdinaryUser([this] { return _KORFileAccess(_folder.Path("f"), 2, 0) == Code(5); }));
}

TEST_F(KORFile, DeletesFilesOnly) {
  _folder.MakeFile("f", "x");
  _folder.MakeFolder("d");
  EXPECT_EQ(_KORDeleteFile(_folder.Path("f")), 0);
  EXPECT_EQ(_KORDeleteFile(_folder.Path("f")), Code(2));
  EXPECT_EQ(TakePendingError(Code(2)), "Cannot delete '" + _folder.Native("f") + "': No such file or directory");
  EXPECT_EQ(_KORDeleteFile(_folder.Path("d")), Code(5));
}

}  // namespace
}  // namespace VYX::Test
