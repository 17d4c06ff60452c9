#include <string_view>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORPath.h"
#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"
#include "path_text.h"

using VYX::Internal::FailureReturn;
using VYX::Internal::LogPendingError;
using VYX::Internal::LogUnlessFiltered;
using VYX::Internal::ToText;
using VYX::Internal::WithBackslashes;

long VYXInfSystemUtil::SplitFilePath(const KORUnicodeString& iPath, KORUnicodeString& oDirectory,
                                     KORUnicodeString& oName, KORUnicodeString& oExtension) {
  KORUnicodeString directory;
  KORUnicodeString fileName;
  const long code = SplitFilePath(iPath, &directory, &fileName);
  if (code < 0) {
    return FailureReturn(VYX_HERE, LogPendingError(code));
  }
  oDirectory = std::move(directory);
  return SplitFileNameExt(fileName, oName, oExtension);
}

long VYXInfSystemUtil::SplitFilePath(const KORUnicodeString& iPath, KORUnicodeString* oDirectory,
                                     KORUnicodeString* oFileName) {
  const KORUnicodeString path = ToText(WithBackslashes(iPath));
  return KORSplitPathEx(&path, oDirectory, oFileName);
}

long VYXInfSystemUtil::SplitFileNameExt(const KORUnicodeString& iFileName, KORUnicodeString& oName,
                                        KORUnicodeString& oExtension) {
  // Both parts are taken before either output changes: an output may be the input.
  const std::string_view fileName = iFileName.ToStringView();
  const std::size_t dot = fileName.rfind('.');
  const bool hasDot = dot != std::string_view::npos;
  KORUnicodeString name = ToText(fileName.substr(0, dot));
  KORUnicodeString extension = hasDot ? ToText(fileName.substr(dot + 1)) : KORUnicodeString();
  oName = std::move(name);
  oExtension = std::move(extension);
  return S_OK;
}

KORUnicodeString VYXInfSystemUtil::GetFileNameFromPath(const KORUnicodeString& iPath) {
  KORUnicodeString fileName;
  if (SplitFilePath(iPath, nullptr, &fileName) < 0) {
    // The empty answer is all that is told of the failure.
    KORError::KORCleanLastError();
  }
  return fileName;
}

KORUnicodeString VYXInfSystemUtil::GetLastNameFromPath(const KORUnicodeString& iPath) {
  LogUnlessFiltered(TRACE, "analyzing full path : '", iPath, "' ");
  constexpr std::string_view kSeparators = "\\/";
  std::string_view path = iPath.ToStringView();
  path = path.substr(0, path.find_last_not_of(kSeparators) + 1);
  KORUnicodeString name = ToText(path.substr(path.find_last_of(kSeparators) + 1));
  LogUnlessFiltered(TRACE, "=> got last name '", name, "'. ");
  return name;
}
