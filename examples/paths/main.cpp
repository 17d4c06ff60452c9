// Paths: taken apart and put together by their text, on every host in the same way.

#include <iostream>

#include "KORSysBase/KORPath.h"
#include "VYXInfSystemUtil.h"

/// Where a converted copy of a file is put: in a folder beside it, with another extension.
static KORUnicodeString ConvertedPath(const KORUnicodeString& iPath, const KORUnicodeString& iExtension) {
  KORUnicodeString folder;
  KORUnicodeString name;
  KORUnicodeString extension;
  if (VYXInfSystemUtil::SplitFilePath(iPath, folder, name, extension) < 0) {
    return KORUnicodeString();
  }
  return VYXInfSystemUtil::ConcatenateAsPath({folder, "converted", name + "." + iExtension});
}

int main() {
  for (const char* path : {"C:\\photos\\fjord.jpg", "/home/ann/harbour.tar.gz"}) {
    std::cout << path << " becomes " << ConvertedPath(path, "png") << "\n";
  }

  // A title as a file name.
  const KORUnicodeString title("18:30 - who? where?");
  if (VYXInfSystemUtil::DoesFileNameContainIllegalChars(title)) {
    std::cout << VYXInfSystemUtil::ReplaceFileNameIllegalChars(title) << "\n";
  }

  std::cout << VYXInfSystemUtil::ResolvePath("photos//2024/", false) << "\n"
            << VYXInfSystemUtil::GetLastNameFromPath("photos/2024/") << "\n"
            << VYXInfSystemUtil::GetParentDir("photos/2024/fjord.jpg") << "\n";

  // A file is looked for in a list of folders; what comes back is spelled for other software.
  VYXInfSystemUtil::SaveToFile("here.txt", "found", 0);
  const KORUnicodeString found = KORFindPath("here.txt", "no such folder;.");
  std::cout << (found.IsEmpty() ? "not found\n" : VYXInfSystemUtil::GetFileNameFromPath(found) + " was found\n");
  return 0;
}
