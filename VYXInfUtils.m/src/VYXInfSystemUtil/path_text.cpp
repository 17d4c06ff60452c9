#include "path_text.h"

#include <algorithm>

#include "VYXInfSystemUtil.h"

using VYX::Internal::kPathSeparator;
using VYX::Internal::ToText;
using VYX::Internal::WithBackslashes;

std::string VYX::Internal::WithBackslashes(const KORUnicodeString& iPath) {
  std::string path = iPath.ConvertToChar();
  std::replace(path.begin(), path.end(), '/', kPathSeparator);
  return path;
}

KORUnicodeString VYXInfSystemUtil::FixFilePath(const KORUnicodeString& iPath) {
  return ToText(WithBackslashes(iPath));
}

KORUnicodeString VYXInfSystemUtil::ResolvePath(const KORUnicodeString& iPath, bool iWithTrailingSeparator) {
  if (iPath.IsEmpty()) {
    return {};
  }
  std::string path = WithBackslashes(iPath);
  const auto isRepeated = [](char iFirst, char iSecond) {
    return iFirst == kPathSeparator && iSecond == kPathSeparator;
  };
  path.erase(std::unique(path.begin(), path.end(), isRepeated), path.end());
  const bool hasTrailingSeparator = path.back() == kPathSeparator;
  if (iWithTrailingSeparator && !hasTrailingSeparator) {
    path += kPathSeparator;
  } else if (!iWithTrailingSeparator && hasTrailingSeparator) {
    path.pop_back();
  }
  return ToText(path);
}

KORUnicodeString VYXInfSystemUtil::GetParentDir(const KORUnicodeString& iPath) {
  const std::string path = WithBackslashes(iPath);
  const std::size_t separator = path.rfind(kPathSeparator);
  return separator == std::string::npos ? KORUnicodeString() : ToText(std::string_view(path).substr(0, separator));
}

KORUnicodeString VYXInfSystemUtil::ConcatenateAsPath(const std::vector<KORUnicodeString>& iParts) {
  std::string path;
  for (std::size_t i = 0; i < iParts.size(); ++i) {
    if (i != 0) {
      path += kPathSeparator;
    }
    path += iParts[i].ToStringView();
  }
  return ToText(path);
}

const char* VYXInfSystemUtil::GetPathSeparator() {
  return "\\";
}

KORUnicodeString VYXInfSystemUtil::GetExecutableSuffix() {
  return ".exe";
}
