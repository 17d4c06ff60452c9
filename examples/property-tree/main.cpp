// A settings file: read, completed by defaults, changed in place, and written for other readers.

#include <iostream>

#include "VYXInfSystemUtil.h"
#include "VYXInfUtils.h"

/// Reads settings; defaults where there are none.
static VYXPropertyTree ReadSettings(const KORUnicodeString& iPath) {
  VYXPropertyTree settings;
  settings.SetInteger("width", 1280);
  settings.SetString("theme", "light");
  KORUnicodeString text;
  if (VYXInfSystemUtil::ReadFile(iPath, text) >= 0) {
    settings.Parse(text);  // replaces the defaults that the file names; an ill-formed file changes nothing
  }
  return settings;
}

/// Puts a file in front of the recently opened ones.
static long Remember(VYXPropertyTree& ioSettings, const KORUnicodeString& iFile) {
  VYXPropertyAccess history;
  VYXListAccess files;
  if (ioSettings.GetPropertyAccess("history", history, true) < 0 || history.GetListAccess("files", files, true) < 0) {
    return E_FAIL;
  }
  return files.AddString(iFile);
}

int main() {
  VYXInfSystemUtil::SaveToFile("settings.json", "{\"theme\": \"dark\"}", VYXInfSystemUtil::OVERWRITE);

  VYXPropertyTree settings = ReadSettings("settings.json");
  if (Remember(settings, "fjord.jpg") < 0 || Remember(settings, "harbour.jpg") < 0) {
    return 1;
  }

  KORUnicodeString theme;
  std::int64_t width = 0;
  settings.GetString("theme", theme);
  settings.GetInteger("width", width);
  std::cout << theme << ", " << width << "\n";

  const int replaceWhole = VYXInfSystemUtil::OVERWRITE | VYXInfSystemUtil::ATOMIC;
  const KORUnicodeString text = VYXPropertyTreeUtils::StringifyStrict(settings, 2);
  if (VYXInfSystemUtil::SaveToFile("settings.json", text, replaceWhole) < 0) {
    return 1;
  }
  std::cout << text << "\n"
            << (ReadSettings("settings.json") == settings ? "read back the same" : "read back differently") << "\n";
  return 0;
}
