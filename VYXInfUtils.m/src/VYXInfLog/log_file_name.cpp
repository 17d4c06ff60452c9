#include <string>

#include "VYXInfLog.h"
#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"

using VYX::Internal::FailureReturn;

bool VYXInfLog::BuildLogFileName(KORUnicodeString& oName, const KORUnicodeString& iAppName,
                                 const KORUnicodeString& iDirectory) {
  const KORUnicodeString directory = iDirectory.IsEmpty() ? VYXInfSystemUtil::GetTempFolderPath() : iDirectory;
  if (directory.IsEmpty()) {
    return FailureReturn(VYX_HERE, false);
  }
  if (!VYXInfSystemUtil::DoesFileExist(directory)) {
    return FailureReturn(VYX_HERE, false, "Directory does not exist");
  }
  KORUnicodeString name = directory + VYXInfSystemUtil::GetPathSeparator();
  if (!iAppName.IsEmpty()) {
    name += VYXInfSystemUtil::ReplaceFileNameIllegalChars(iAppName);
    name += "_";
  }
  name += VYXInfSystemUtil::GetStartDateTimeString("%Y-%m-%d_%H-%M-%S");
  name += "_";
  name += std::to_string(VYXInfSystemUtil::GetPID()).c_str();
  name += ".log";
  oName = std::move(name);
  return true;
}
