#include <string>
#include <string_view>

#include "KORSysBase/KOREnvironment.h"
#include "KORSysBase/KORPath.h"
#include "KORSysTS/KORThreads.h"
#include "VYXInfSystemUtil.h"
#include "path_text.h"

namespace {

using VYX::Internal::kPathSeparator;
using VYX::Internal::ToText;

constexpr std::string_view kIllegalChars = "\\/:*?\"<>|";

}  // namespace

bool VYXInfSystemUtil::DoesFileNameContainIllegalChars(const KORUnicodeString& iFileName) {
  return iFileName.ToStringView().find_first_of(kIllegalChars) != std::string_view::npos;
}

KORUnicodeString VYXInfSystemUtil::RemoveFileNameIllegalChars(const KORUnicodeString& iFileName) {
  return ReplaceFileNameIllegalCharsWith(iFileName, KORUnicodeString());
}

KORUnicodeString VYXInfSystemUtil::ReplaceFileNameIllegalChars(const KORUnicodeString& iFileName) {
  return ReplaceFileNameIllegalCharsWith(iFileName, "_");
}

KORUnicodeString VYXInfSystemUtil::ReplaceFileNameIllegalCharsWith(const KORUnicodeString& iFileName,
                                                                   const KORUnicodeString& iReplacement) {
  std::string name;
  std::string_view rest = iFileName.ToStringView();
  name.reserve(rest.size());
  for (std::size_t end = rest.find_first_of(kIllegalChars); end != std::string_view::npos;
       end = rest.find_first_of(kIllegalChars)) {
    name += rest.substr(0, end);
    name += iReplacement.ToStringView();
    rest.remove_prefix(end + 1);
  }
  name += rest;
  return ToText(name);
}

KORUnicodeString VYXInfSystemUtil::CreateUniquePath(KORUnicodeString iName, const KORUnicodeString& iParentFolder) {
  std::string path = iParentFolder.ConvertToChar();
  if (!path.empty() && path.back() != kPathSeparator) {
    path += kPathSeparator;
  }
  path += iName.ToStringView();
  path += '_';
  path += GetCurrentDateTimeString("%Y-%m-%d_%H-%M-%S").ToStringView();
  path += '_';
  path += std::to_string(GetPID());
  path += '_';
  path += std::to_string(KORThreads::GetCurrentThreadId());
  path += kPathSeparator;
  return ToText(path);
}

KORUnicodeString VYXInfSystemUtil::GetAbsoluteResourcePath(const KORUnicodeString& iRelativePath) {
  if (iRelativePath.ToStringView().find('\0') != std::string_view::npos) {
    return {};
  }
  return KORFindPath(iRelativePath, KORGetEnv("KORInstallPath"));
}
