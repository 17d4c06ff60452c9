// Texts in the user's language: constants that remember a message, and become text where they are shown.

#include <iostream>

#include "KORSysBase/KORMsgCatalog.h"
#include "VYXInfi18n.h"

static const VYXInfi18n::LocalizedString kNoSuchFolder("MediaCatalogue", "NoSuchFolder");

int main() {
  // With LANG=fr_FR.UTF-8 this is French.
  std::cout << kNoSuchFolder("/photos") << "\n";

  const KORUnicodeString unfinished = kNoSuchFolder;  // without parameters the places stay visible
  std::cout << unfinished << "\n";

  const KORUnicodeString unknown = VYXInfi18n::GetLocalizedString("MediaCatalogue", "NoSuchMessage");
  std::cout << (unknown.IsEmpty() ? "an unknown message is empty" : "found") << "\n";

  const KORUnicodeString name("fjord.jpg");
  long result = 0;
  std::cout << KORMsgCatalog::BuildMessage("MediaCatalogue", "NoSuchMessage", &name, 1, "There is no {0}", &result)
            << (result == S_FALSE ? " (the default message)" : "") << "\n";
  return 0;
}
