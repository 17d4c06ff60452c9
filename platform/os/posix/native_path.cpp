#include "platform/os/native_path.h"

#include <algorithm>

#if !defined(__unix__)
#error "this source is for POSIX hosts"
#endif

namespace VYX::Os {
namespace {

bool IsLetter(char iChar) noexcept {
  return (iChar >= 'a' && iChar <= 'z') || (iChar >= 'A' && iChar <= 'Z');
}

bool HasDrivePrefix(std::string_view iPath) noexcept {
  return iPath.size() >= 2 && iPath[1] == ':' && IsLetter(iPath[0]);
}

}  // namespace

Status ToNativePath(std::string_view iPath, std::string& oNative) {
  if (iPath.find('\0') != std::string_view::npos) {
    return Failure::BadName();
  }
  if (HasDrivePrefix(iPath)) {
    return Failure::PathNotFound();
  }
  oNative.assign(iPath);
  std::replace(oNative.begin(), oNative.end(), '\\', '/');
  return {};
}

char NativeSeparator() noexcept {
  return '/';
}

bool IsColonListSeparator() noexcept {
  return true;
}

bool IsAbsolute(std::string_view iNative) noexcept {
  return iNative.starts_with('/');
}

}  // namespace VYX::Os
