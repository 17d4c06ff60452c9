#include "platform/os/status.h"

#include <array>
#include <string_view>

#include "platform/os/windows/wide_text.h"
#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os {
namespace {

constexpr DWORD kQuotaExceeded = 1295;  // ERROR_DISK_QUOTA_EXCEEDED, which the compiler's headers lack

struct Cause {
  DWORD number;
  std::string_view text;
};

// The words that other hosts have for the same: a message reads alike everywhere, and in one language. What is not
// listed is described by the host.
constexpr auto kCauses = std::to_array<Cause>({
    {ERROR_FILE_NOT_FOUND, "No such file or directory"},
    {ERROR_PATH_NOT_FOUND, "No such file or directory"},
    {ERROR_TOO_MANY_OPEN_FILES, "Too many open files"},
    {ERROR_ACCESS_DENIED, "Permission denied"},
    {ERROR_INVALID_HANDLE, "Bad file descriptor"},
    {ERROR_NOT_ENOUGH_MEMORY, "Cannot allocate memory"},
    {ERROR_OUTOFMEMORY, "Cannot allocate memory"},
    {ERROR_NOT_SAME_DEVICE, "Invalid cross-device link"},
    {ERROR_WRITE_PROTECT, "Read-only file system"},
    {ERROR_SHARING_VIOLATION, "Device or resource busy"},
    {ERROR_LOCK_VIOLATION, "No locks available"},
    {ERROR_NOT_SUPPORTED, "Operation not supported"},
    {ERROR_INVALID_PARAMETER, "Invalid argument"},
    {ERROR_BROKEN_PIPE, "Broken pipe"},
    {ERROR_DISK_FULL, "No space left on device"},
    {ERROR_INVALID_NAME, "Invalid or incomplete multibyte or wide character"},
    {ERROR_DIR_NOT_EMPTY, "Directory not empty"},
    {ERROR_ALREADY_EXISTS, "File exists"},
    {ERROR_BAD_EXE_FORMAT, "Exec format error"},
    {ERROR_FILENAME_EXCED_RANGE, "File name too long"},
    {ERROR_FILE_TOO_LARGE, "File too large"},
    {ERROR_DIRECTORY, "Not a directory"},
    {ERROR_IO_DEVICE, "Input/output error"},
    {kQuotaExceeded, "Disk quota exceeded"},
    {ERROR_CANT_RESOLVE_FILENAME, "Too many levels of symbolic links"},
});

std::string AskHost(DWORD iNumber) {
  std::array<wchar_t, 512> text;
  const DWORD flags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
  const DWORD length =
      FormatMessageW(flags, nullptr, iNumber, 0, text.data(), static_cast<DWORD>(text.size()), nullptr);
  std::wstring_view message(text.data(), length);
  message = message.substr(0, message.find_last_not_of(L" .\r\n") + 1);
  return message.empty() ? "Windows error " + std::to_string(iNumber) : Windows::ToUtf8(message);
}

}  // namespace

Status Status::OfLastCall() noexcept {
  const DWORD number = GetLastError();
  // The host has two numbers for a name that is taken.
  return Status(static_cast<int>(number == ERROR_FILE_EXISTS ? ERROR_ALREADY_EXISTS : number));
}

bool Status::IsNotThere() const noexcept {
  return _native == ERROR_FILE_NOT_FOUND || _native == ERROR_PATH_NOT_FOUND;
}

bool Status::IsAlreadyThere() const noexcept {
  return _native == ERROR_ALREADY_EXISTS;
}

int Status::ToErrorNumber() const noexcept {
  return _native;
}

long Status::ToResultCode() const noexcept {
  constexpr long kFromOsError = -0x7FF90000L;  // 0x80070000 as a signed 32-bit number
  return IsOk() ? 0 : kFromOsError + (_native & 0xFFFF);
}

std::string Status::Describe() const {
  const auto number = static_cast<DWORD>(_native);
  for (const Cause& cause : kCauses) {
    if (cause.number == number) {
      return std::string(cause.text);
    }
  }
  return AskHost(number);
}

namespace Failure {
Status BadName() noexcept {
  return Status(ERROR_INVALID_NAME);
}
Status PathNotFound() noexcept {
  return Status(ERROR_PATH_NOT_FOUND);
}
Status AccessDenied() noexcept {
  return Status(ERROR_ACCESS_DENIED);
}
Status NotAFolder() noexcept {
  return Status(ERROR_DIRECTORY);
}
Status InvalidParameter() noexcept {
  return Status(ERROR_INVALID_PARAMETER);
}
Status InvalidHandle() noexcept {
  return Status(ERROR_INVALID_HANDLE);
}
Status FileTooLarge() noexcept {
  return Status(ERROR_FILE_TOO_LARGE);
}
Status DeviceFull() noexcept {
  return Status(ERROR_DISK_FULL);
}
Status OutOfMemory() noexcept {
  return Status(ERROR_NOT_ENOUGH_MEMORY);
}
}  // namespace Failure

}  // namespace VYX::Os
