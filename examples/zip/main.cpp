// Zip archives: files are packed, listed, read one by one, and unpacked; a broken archive is refused.

#include <iostream>

#include "KORSysBase/KORSysZipFile.h"
#include "VYXCompressionFileHelper.h"
#include "VYXInfSystemUtil.h"

/// Writes the files to be packed.
static KORListValKORUnicodeString WriteFiles() {
  KORListValKORUnicodeString paths;
  for (const char* name : {"fjord.txt", "harbour.txt"}) {
    VYXInfSystemUtil::SaveToFile(name, "about the " + KORUnicodeString(name), VYXInfSystemUtil::OVERWRITE);
    paths.Append(name);
  }
  return paths;
}

int main() {
  VYXCompressionFileHelper helper;  // removes the archive in the end
  KORUnicodeString archive;
  KORListValKORUnicodeString entries;
  if (helper.ZipTmpArchive(WriteFiles(), "places.zip", archive) < 0 ||
      VYXInfSystemUtil::BrowseZipArchive(archive, entries) < 0) {
    return 1;
  }
  for (const KORUnicodeString& entry : entries) {
    QB::Binary content;
    if (VYXInfSystemUtil::ReadFileFromZipArchive(archive, entry, content, true) < 0) {
      return 1;
    }
    std::cout << entry << ": " << content.GetSize() << " bytes\n";
  }

  if (VYXInfSystemUtil::UnzipArchive(archive, "unpacked", entries) < 0) {
    return 1;
  }
  KORUnicodeString text;
  VYXInfSystemUtil::ReadFile("unpacked/fjord.txt", text);
  std::cout << text << "\n";

  VYXInfSystemUtil::SaveToFile("broken.zip", "PK and nothing behind it", VYXInfSystemUtil::OVERWRITE);
  KORSysZipFile zip;
  if (zip.OpenZip("broken.zip", KORSysZipOpenMode::Browse, 0) == KORSysZipFile::kNotAnArchive) {
    std::cout << "broken.zip is no archive\n";
  }
  return 0;
}
