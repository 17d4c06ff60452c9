// Failures: codes to act on, errors to collect and show, and the platform's reason.

#include <iostream>

#include "KORSysBase/KORDirectory.h"
#include "KORSysBase/KORError.h"
#include "KORSysBase/KORFile.h"
#include "KORSysBase/KORResult.h"
#include "VYXInfError.h"
#include "VYXInfSystemUtil.h"

static constexpr long kFileNotFound = VYX::ResultCode(0x80070002U);

/// Deletes files and collects what went wrong; files that are gone already are no error.
static KORListValVYXInfError DeleteAll(const KORListValKORUnicodeString& iPaths) {
  KORListValVYXInfError errors;
  for (const KORUnicodeString& path : iPaths) {
    const long code = _KORDeleteFile(path);
    if (code < 0 && code != kFileNotFound) {
      errors.Append(VYXInfError(code));  // takes the platform's message along
    }
  }
  KORError::KORCleanLastError();
  return errors;
}

int main() {
  VYXInfSystemUtil::SaveToFile("old.txt", "old", 0);
  KORCreateDirectory("a folder");
  KORListValKORUnicodeString paths;
  paths.Append("old.txt");
  paths.Append("gone already.txt");
  paths.Append("a folder");

  const KORListValVYXInfError errors = DeleteAll(paths);
  std::cout << errors.Size() << " of " << paths.Size() << " could not be deleted\n";
  if (VYXInfError::ErrorListToString(errors).SearchSubString("'a folder'") >= 0) {
    std::cout << "the message names it\n";
  }

  // A function of the library writes its own trace; the caller tests the sign.
  KORUnicodeString name("unchanged");
  KORUnicodeString extension;
  KORUnicodeString folder;
  if (VYXInfSystemUtil::SplitFilePath("", folder, name, extension) < 0) {
    std::cout << "nothing was split, and the output is " << name << "\n";
  }
  return 0;
}
