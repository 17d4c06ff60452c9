#include "support/captured_stdout.h"

#include <fcntl.h>
#include <io.h>

#include <cstdint>
#include <cstdio>
#include <stdexcept>

#include "platform/os/windows/handle.h"

namespace VYX::Test {

namespace {

using Os::Windows::Handle;

constexpr DWORD kSharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

HANDLE HandleOf(int iFile) {
  return reinterpret_cast<HANDLE>(::_get_osfhandle(iFile));
}

// A file that goes when it is closed. Every write goes to its end, so that reading it moves nothing.
int OpenPassingFile() {
  wchar_t folder[MAX_PATH + 1] = {};
  wchar_t name[MAX_PATH + 1] = {};
  if (::GetTempPathW(MAX_PATH, folder) == 0 || ::GetTempFileNameW(folder, L"cap", 0, name) == 0) {
    throw std::runtime_error("no name for a file to capture standard output");
  }
  const HANDLE file =
      ::CreateFileW(name, FILE_APPEND_DATA | FILE_READ_DATA | FILE_READ_ATTRIBUTES | DELETE | SYNCHRONIZE, kSharing,
                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    throw std::runtime_error("no file to capture standard output");
  }
  return ::_open_osfhandle(reinterpret_cast<std::intptr_t>(file), _O_APPEND | _O_BINARY);
}

}  // namespace

CapturedStdout::CapturedStdout() {
  std::fflush(stdout);
  _file = OpenPassingFile();
  _saved = ::_dup(1);
  ::_dup2(_file, 1);
}

CapturedStdout::~CapturedStdout() {
  std::fflush(stdout);
  ::_dup2(_saved, 1);
  ::_close(_saved);
  ::_close(_file);
}

std::string CapturedStdout::Text() {
  std::fflush(stdout);
  LARGE_INTEGER size = {};
  ::GetFileSizeEx(HandleOf(_file), &size);
  std::string text(static_cast<std::size_t>(size.QuadPart), '\0');
  DWORD count = 0;
  OVERLAPPED start = {};
  ::ReadFile(HandleOf(_file), text.data(), static_cast<DWORD>(text.size()), &count, &start);
  text.resize(count);
  return text;
}

}  // namespace VYX::Test
