#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "KORSysBase/KORSysZipFile.h"
#include "support/pending_error.h"
#include "support/temporary_folder.h"
#include "support/zip_builder.h"

namespace VYX::Test {

/// A folder with an archive "a.zip" and the target folder "out", which does not exist at first.
class ZipFixture : public ::testing::Test {
 protected:
  void Write(const BuiltArchive& iArchive) { Write(iArchive.Bytes()); }
  void Write(const std::string& iBytes) { _folder.MakeFile("a.zip", iBytes); }

  long Open(KORSysZipOpenMode iMode = KORSysZipOpenMode::Browse, int iOptions = 0) {
    return _zip.OpenZip(_folder.Path("a.zip"), iMode, iOptions);
  }

  /// Opens and extracts; the code of the first failure.
  long Extract(unsigned long iOptions = KORSysZipFile::kUtf8Names) {
    const long code = Open();
    return code < 0 ? code : _zip.ExtractAll(_folder.Path("out"), iOptions, &_count);
  }

  /// Extracts an archive that has to be refused: the code is the expected one, the message names what it should, and
  /// nothing is written.
  void ExpectRefused(const std::string& iBytes, long iCode, const std::string& iMention) {
    Write(iBytes);
    const std::vector<std::string> before = _folder.Names();
    EXPECT_EQ(Extract(), iCode);
    const std::string message = TakePendingError(iCode);
    EXPECT_NE(message.find(iMention), std::string::npos) << message;
    EXPECT_NE(message.find(_folder.Native("a.zip")), std::string::npos) << message;
    EXPECT_EQ(_folder.Names(), before);
  }
  void ExpectRefused(const BuiltArchive& iArchive, long iCode, const std::string& iMention) {
    ExpectRefused(iArchive.Bytes(), iCode, iMention);
  }

  /// The names that the open archive lists.
  std::vector<std::string> Listed() {
    KORUnicodeString* names = nullptr;
    unsigned int count = 0;
    EXPECT_EQ(_zip.BrowseZip(&names, &count), S_OK);
    std::vector<std::string> listed;
    for (unsigned int entry = 0; entry < count; ++entry) {
      listed.push_back(names[entry].ConvertToChar());
    }
    delete[] names;
    return listed;
  }

  /// The content of one entry; the message of the failure where it cannot be read.
  std::string ReadEntry(const char* iName) {
    if (const long code = _zip.OpenFileInZip(iName, 0, 0); code < 0) {
      return TakePendingError(code);
    }
    KORSysZipEntryInfo info;
    EXPECT_EQ(_zip.GetCurrentInfo(&info), S_OK);
    std::string content(info.uncompressedSize, '?');
    std::uint64_t read = 0;
    if (const long code = _zip.ReadBufferInZip(content.data(), content.size(), &read); code < 0) {
      return TakePendingError(code);
    }
    EXPECT_EQ(read, content.size());
    EXPECT_EQ(_zip.CloseFileInZip(), S_OK);
    return content;
  }

  std::string ContentOfOut(const std::string& iName) { return ContentOf(_folder.Native("out/" + iName)); }

  TemporaryFolder _folder;
  KORSysZipFile _zip{0};
  unsigned int _count = 0;
};

}  // namespace VYX::Test
