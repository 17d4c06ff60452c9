#include "platform/os/status.h"

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#if !defined(__unix__)
#error "this source is for POSIX hosts"
#endif

namespace VYX::Os {
namespace {

constexpr int kGeneralFailure = 31;  // "a device attached to the system is not functioning"

constexpr auto kErrorNumbers = std::to_array<std::pair<int, int>>({
    {ENOENT, 2},          // file not found
    {ENXIO, 2},           // nobody at the other end of a pipe
    {ENODEV, 3},          // path not found: no such drive
    {EMFILE, 4},          // too many open files
    {ENFILE, 4},          // the same, of the whole host
    {EACCES, 5},          // access denied
    {EPERM, 5},           // access denied
    {EISDIR, 5},          // a folder where a file is wanted
    {EBADF, 6},           // invalid handle
    {ENOMEM, 8},          // not enough memory
    {ENOEXEC, 193},       // bad executable format
    {EXDEV, 17},          // not the same device
    {EROFS, 19},          // write-protected
    {EBUSY, 32},          // in use
    {ETXTBSY, 32},        // a program that runs
    {ENOLCK, 33},         // locked
    {EDEADLK, 1131},      // possible deadlock
    {ENOTSUP, 50},        // not supported
    {ENOSYS, 50},         // not supported
    {EINVAL, 87},         // invalid parameter
    {EPIPE, 109},         // broken pipe
    {ENOSPC, 112},        // disk full
    {EDQUOT, 1295},       // quota exceeded
    {EILSEQ, 123},        // bad name
    {ECHILD, 128},        // no child to wait for
    {ENOTEMPTY, 145},     // folder not empty
    {ESRCH, 87},          // no such process: its number is an invalid parameter
    {EAGAIN, 170},        // resource in use for now
    {EEXIST, 183},        // already exists
    {ENAMETOOLONG, 206},  // name too long
    {E2BIG, 206},         // too many arguments
    {EFBIG, 223},         // file too large
    {EOVERFLOW, 534},     // a number that does not fit
    {ENOTDIR, 267},       // not a folder
    {EINTR, 995},         // interrupted
    {EFAULT, 998},        // invalid access to memory
    {EIO, 1117},          // input or output error
    {EMLINK, 1142},       // too many links
    {ETIMEDOUT, 1460},    // timed out
    {ELOOP, 1921},        // a path whose links cannot be resolved
    {ECANCELED, 1223},    // cancelled
});

}  // namespace

Status Status::OfLastCall() noexcept {
  return Status(errno);
}

bool Status::IsNotThere() const noexcept {
  return _native == ENOENT;
}

bool Status::IsAlreadyThere() const noexcept {
  return _native == EEXIST;
}

int Status::ToErrorNumber() const noexcept {
  if (IsOk()) {
    return 0;
  }
  for (const auto& [native, number] : kErrorNumbers) {
    if (native == _native) {
      return number;
    }
  }
  return kGeneralFailure;
}

long Status::ToResultCode() const noexcept {
  constexpr long kFromOsError = -0x7FF90000L;  // 0x80070000 as a signed 32-bit number
  return IsOk() ? 0 : kFromOsError + ToErrorNumber();
}

// The standard library's own text is the host's, and safe where several threads ask.
std::string Status::Describe() const {
  return std::generic_category().message(_native);
}

namespace Failure {
Status BadName() noexcept {
  return Status(EILSEQ);
}
Status PathNotFound() noexcept {
  return Status(ENODEV);
}
Status AccessDenied() noexcept {
  return Status(EACCES);
}
Status NotAFolder() noexcept {
  return Status(ENOTDIR);
}
Status InvalidParameter() noexcept {
  return Status(EINVAL);
}
Status InvalidHandle() noexcept {
  return Status(EBADF);
}
Status FileTooLarge() noexcept {
  return Status(EFBIG);
}
Status DeviceFull() noexcept {
  return Status(ENOSPC);
}
Status OutOfMemory() noexcept {
  return Status(ENOMEM);
}
}  // namespace Failure

}  // namespace VYX::Os
