#include "KORSysBase/KORPath.h"

#include <string>
#include <string_view>

#include "Quillbase/Paths.h"
#include "pending_error.h"
#include "platform/os/files.h"
#include "platform/os/folders.h"
#include "platform/os/native_path.h"

namespace {

namespace Os = VYX::Os;
using VYX::Platform::LeaveError;

constexpr std::string_view kSeparators = "\\/";

bool IsSeparator(char iChar) noexcept {
  return kSeparators.find(iChar) != std::string_view::npos;
}

bool IsLetter(char iChar) noexcept {
  return (iChar >= 'a' && iChar <= 'z') || (iChar >= 'A' && iChar <= 'Z');
}

// The bytes at the start that no split takes apart: a drive, a root separator, server and share of a network path.
std::size_t RootLength(std::string_view iPath) noexcept {
  if (iPath.size() >= 2 && IsLetter(iPath[0]) && iPath[1] == ':') {
    return iPath.size() > 2 && IsSeparator(iPath[2]) ? 3 : 2;
  }
  if (iPath.empty() || !IsSeparator(iPath[0])) {
    return 0;
  }
  if (iPath.size() < 3 || iPath[0] != '\\' || iPath[1] != '\\' || IsSeparator(iPath[2])) {
    return 1;
  }
  const std::size_t serverEnd = iPath.find_first_of(kSeparators, 2);
  const std::size_t shareEnd =
      serverEnd == std::string_view::npos ? serverEnd : iPath.find_first_of(kSeparators, serverEnd + 1);
  return shareEnd == std::string_view::npos ? iPath.size() : shareEnd + 1;
}

std::string MakeAbsolute(const std::string& iNative) {
  std::string folder;
  if (Os::IsAbsolute(iNative) || !Os::CurrentFolder(folder).IsOk()) {
    return iNative;
  }
  return folder + Os::NativeSeparator() + iNative;
}

}  // namespace

long KORSplitPathEx(const KORUnicodeString* iPath, KORUnicodeString* oDirectory, KORUnicodeString* oFileName) {
  if (iPath == nullptr || iPath->IsEmpty()) {
    return LeaveError(Os::Failure::InvalidParameter(), "Cannot split the path", {}, {}, "it is empty");
  }
  const std::string_view path = iPath->ToStringView();
  if (path.find('\0') != std::string_view::npos) {
    return LeaveError(Os::Failure::BadName(), "Cannot split the path", path);
  }
  const std::size_t root = RootLength(path);
  const std::size_t separator = path.substr(root).find_last_of(kSeparators);
  const bool isSplit = separator != std::string_view::npos;
  const KORUnicodeString directory(path.substr(0, isSplit ? root + separator : root));
  const KORUnicodeString fileName(path.substr(isSplit ? root + separator + 1 : root));
  if (oDirectory != nullptr) {
    *oDirectory = directory;
  }
  if (oFileName != nullptr) {
    *oFileName = fileName;
  }
  return 0;
}

KORUnicodeString KORFindPath(const char* iRelativePath, const char* iSearchPaths) {
  std::string relative;
  if (iRelativePath == nullptr || *iRelativePath == '\0' || !Os::ToNativePath(iRelativePath, relative).IsOk()) {
    return {};
  }
  const char separator = Os::NativeSeparator();
  const QB::Paths folders{KORUnicodeString(iSearchPaths)};
  for (const QB::StringView folder : folders) {
    std::string path;
    if (!Os::ToNativePath(folder.ToStringView(), path).IsOk()) {
      continue;
    }
    if (path.back() != separator && relative.front() != separator) {
      path += separator;
    }
    path += relative;
    if (Os::TestExistence(path).IsOk()) {
      return KORUnicodeString(std::string_view(MakeAbsolute(path)));
    }
  }
  return {};
}

long KORNativePath(const KORUnicodeString& iPath, KORUnicodeString& oNativePath) {
  std::string native;
  const Os::Status status = Os::ToNativePath(iPath.ToStringView(), native);
  if (!status.IsOk()) {
    return LeaveError(status, "Cannot use the path", iPath.ToStringView());
  }
  oNativePath = KORUnicodeString(std::string_view(native));
  return 0;
}
