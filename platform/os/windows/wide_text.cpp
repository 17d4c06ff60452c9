#include "platform/os/windows/wide_text.h"

#include <utility>

#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os::Windows {
namespace {

// More than the host's functions can count is none of their texts.
bool IsCountable(std::size_t iSize) noexcept {
  return iSize <= 0x7FFFFFFF;
}

bool Convert(std::string_view iText, DWORD iFlags, std::wstring& oWide) {
  if (iText.empty() || !IsCountable(iText.size())) {
    oWide.clear();
    return iText.empty();
  }
  const int size = static_cast<int>(iText.size());
  const int length = ::MultiByteToWideChar(CP_UTF8, iFlags, iText.data(), size, nullptr, 0);
  if (length <= 0) {
    return false;
  }
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  ::MultiByteToWideChar(CP_UTF8, iFlags, iText.data(), size, wide.data(), length);
  oWide = std::move(wide);
  return true;
}

}  // namespace

bool ToWide(std::string_view iText, std::wstring& oWide) {
  return Convert(iText, MB_ERR_INVALID_CHARS, oWide);
}

std::wstring ToReadableWide(std::string_view iText) {
  std::wstring wide;
  Convert(iText, 0, wide);
  return wide;
}

std::string ToUtf8(std::wstring_view iWide) {
  if (iWide.empty() || !IsCountable(iWide.size())) {
    return {};
  }
  const int size = static_cast<int>(iWide.size());
  const int length = ::WideCharToMultiByte(CP_UTF8, 0, iWide.data(), size, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(length), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, iWide.data(), size, text.data(), length, nullptr, nullptr);
  return text;
}

}  // namespace VYX::Os::Windows
