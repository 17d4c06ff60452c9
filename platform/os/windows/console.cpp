#include "platform/os/console.h"

#include <io.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <exception>

#include "platform/os/windows/wide_text.h"
#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os {
namespace {

// The stream's own lock keeps lines whole and in order, whichever thread and whichever way they come.
class StreamLock {
 public:
  explicit StreamLock(std::FILE* ioStream) noexcept : _stream(ioStream) { ::_lock_file(_stream); }
  ~StreamLock() { ::_unlock_file(_stream); }
  StreamLock(const StreamLock&) = delete;
  StreamLock& operator=(const StreamLock&) = delete;

 private:
  std::FILE* _stream;
};

bool IsHighSurrogate(wchar_t iUnit) noexcept {
  return (iUnit & 0xFC00) == 0xD800;
}

// A console shows UTF-16 whatever its code page is. Some versions refuse long texts, so they go out in parts, which cut
// no character.
void ShowWide(HANDLE iConsole, std::wstring_view iText) noexcept {
  constexpr std::size_t kLongest = 8000;
  while (!iText.empty()) {
    std::size_t count = std::min(iText.size(), kLongest);
    count -= count < iText.size() && IsHighSurrogate(iText[count - 1]) ? 1 : 0;
    DWORD written = 0;
    if (::WriteConsoleW(iConsole, iText.data(), static_cast<DWORD>(count), &written, nullptr) == 0 || written == 0) {
      return;
    }
    iText.remove_prefix(written);
  }
}

void Show(HANDLE iConsole, std::string_view iText) noexcept {
  try {
    ShowWide(iConsole, Windows::ToReadableWide(iText));
  } catch (const std::exception&) {
    // No memory is left: the text is lost.
  }
}

// Files and pipes get the bytes as they are.
void WriteBytes(HANDLE iFile, std::string_view iText) noexcept {
  constexpr std::size_t kLongest = 0x40000000;
  while (!iText.empty()) {
    const auto count = static_cast<DWORD>(std::min(iText.size(), kLongest));
    DWORD written = 0;
    if (::WriteFile(iFile, iText.data(), count, &written, nullptr) == 0 || written == 0) {
      return;
    }
    iText.remove_prefix(written);
  }
}

// The handle behind a stream; a program without a console may have none.
HANDLE HandleOf(std::FILE* iStream) noexcept {
  const int file = ::_fileno(iStream);
  return file < 0 ? INVALID_HANDLE_VALUE : reinterpret_cast<HANDLE>(::_get_osfhandle(file));
}

void WriteBehind(std::FILE* ioStream, std::string_view iText) noexcept {
  const DWORD formerError = ::GetLastError();
  {
    const StreamLock lock(ioStream);
    std::fflush(ioStream);
    const HANDLE file = HandleOf(ioStream);
    DWORD mode = 0;
    if (::GetConsoleMode(file, &mode) != 0) {
      Show(file, iText);
    } else if (file != INVALID_HANDLE_VALUE) {
      WriteBytes(file, iText);
    }
  }
  ::SetLastError(formerError);
}

}  // namespace

void WriteConsole(std::string_view iText) noexcept {
  WriteBehind(stdout, iText);
}

void WriteErrorConsole(std::string_view iText) noexcept {
  WriteBehind(stderr, iText);
}

}  // namespace VYX::Os
