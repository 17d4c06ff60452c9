#include "platform/os/native_path.h"

#include <algorithm>

#include "platform/os/windows/path_text.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os {
namespace {

bool IsLetter(char iChar) noexcept {
  return (iChar >= 'a' && iChar <= 'z') || (iChar >= 'A' && iChar <= 'Z');
}

}  // namespace

Status ToNativePath(std::string_view iPath, std::string& oNative) {
  std::wstring wide;
  if (iPath.find('\0') != std::string_view::npos || !Windows::ToWideName(iPath, wide)) {
    return Failure::BadName();
  }
  oNative.assign(iPath);
  std::replace(oNative.begin(), oNative.end(), '/', '\\');
  return {};
}

char NativeSeparator() noexcept {
  return '\\';
}

bool IsColonListSeparator() noexcept {
  return false;
}

bool IsAbsolute(std::string_view iNative) noexcept {
  const bool hasDrive = iNative.size() >= 3 && IsLetter(iNative[0]) && iNative[1] == ':' && iNative[2] == '\\';
  return hasDrive || iNative.starts_with("\\\\");
}

}  // namespace VYX::Os
