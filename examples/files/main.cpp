// Files and folders: a small tree is written, searched, changed safely and removed.

#include <iostream>

#include "KORSysBase/KORDirectory.h"
#include "VYXInfStringUtil.h"
#include "VYXInfSystemUtil.h"

static long WriteTree() {
  if (KORCreateDirectoryR("photos/2024") < 0) {
    return E_FAIL;
  }
  for (const char* path : {"photos/fjord.jpg", "photos/2024/harbour.jpg", "photos/2024/notes.txt"}) {
    if (VYXInfSystemUtil::SaveToFile(path, "content", VYXInfSystemUtil::ONLY_NEW) < 0) {
      return E_FAIL;
    }
  }
  return S_OK;
}

int main() {
  if (WriteTree() < 0) {
    return 1;
  }

  const unsigned int flags =
      VYXInfSystemUtil::ENUM_FILES | VYXInfSystemUtil::ENUM_RECURSIVE | VYXInfSystemUtil::ENUM_RELATIVE;
  const auto isPicture = [](const KORUnicodeString& iName) { return VYXInfStringUtil::EndsWith(iName, ".jpg", false); };
  for (const KORUnicodeString& path : VYXInfSystemUtil::EnumDirectories("photos", "", flags, isPicture)) {
    std::cout << path << "\n";
  }

  // The file holds its old content or its new one, whatever happens meanwhile.
  const KORUnicodeString notes("photos/2024/notes.txt");
  KORUnicodeString text;
  unsigned int size = 0;
  if (VYXInfSystemUtil::ReadFile(notes, text) < 0 ||
      VYXInfSystemUtil::SaveToFile(notes, text + " and more", VYXInfSystemUtil::OVERWRITE | VYXInfSystemUtil::ATOMIC) <
          0 ||
      VYXInfSystemUtil::GetFileSize(notes, size) < 0) {
    return 1;
  }
  std::cout << size << " bytes\n";

  if (VYXInfSystemUtil::SaveToFile(notes, "again", VYXInfSystemUtil::ONLY_NEW) < 0) {
    std::cout << "the file is there already\n";
  }
  KORRemoveDirectoryR("photos");
  std::cout << (VYXInfSystemUtil::DoesFileExist("photos") ? "still there\n" : "all gone\n");
  return 0;
}
