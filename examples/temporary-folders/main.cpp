// A work folder for one piece of work: private, and gone when the work is done, also when it fails half-way.

#include <iostream>

#include "VYXInfFileHelper.h"
#include "VYXInfStringUtil.h"
#include "VYXInfSystemUtil.h"

/// Works in a folder of its own, which is told in oFolder; false when something failed.
static bool Export(KORUnicodeString& oFolder) {
  VYXInfFileHelper helper;
  if (helper.CreateTmpDir("Export", oFolder) < 0) {
    return false;
  }
  const KORUnicodeString list = oFolder + "list.txt";
  if (VYXInfSystemUtil::SaveToFile(list, "fjord.jpg\n", VYXInfSystemUtil::ONLY_NEW) < 0) {
    return false;
  }
  std::cout << (VYXInfSystemUtil::DoesFileExist(list) ? "written\n" : "not written\n");
  return true;
}  // The folder and all that is in it goes away here.

int main() {
  KORUnicodeString folder;
  if (!Export(folder)) {
    return 1;
  }
  const KORUnicodeString name = VYXInfSystemUtil::GetLastNameFromPath(folder);
  std::cout << (VYXInfStringUtil::StartsWith(name, "Export_", true) ? "named after its purpose\n" : "named otherwise\n")
            << (VYXInfSystemUtil::DoesFileExist(folder) ? "left behind\n" : "removed\n")
            << (VYXInfSystemUtil::DoesFileExist(VYXInfSystemUtil::GetTempFolderPath()) ? "" : "its parent too\n");
  return 0;
}
