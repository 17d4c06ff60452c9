#include "platform/os/output_redirection.h"

#include <fcntl.h>
#include <io.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>

#include "platform/os/windows/handle.h"
#include "platform/os/windows/wide_text.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os {

namespace {

// Copies of what the outputs were at first; -1 while there are none.
struct InitialOutputs {
  int output = -1;
  int error = -1;
  bool isRedirected = false;
};

InitialOutputs& Initial() {
  static InitialOutputs initial;
  return initial;
}

// A copy that started programs do not inherit.
int Copy(int iDescriptor) noexcept {
  const int copy = ::_dup(iDescriptor);
  if (copy >= 0) {
    ::SetHandleInformation(reinterpret_cast<HANDLE>(::_get_osfhandle(copy)), HANDLE_FLAG_INHERIT, 0);
  }
  return copy;
}

// A program without a console has streams that lead nowhere and have no descriptor.
bool HasDescriptor(std::FILE* ioStream) noexcept {
  return ::_fileno(ioStream) >= 0 || std::freopen("NUL", "w", ioStream) != nullptr;
}

bool KeepInitialOutputs() noexcept {
  if (!HasDescriptor(stdout) || !HasDescriptor(stderr)) {
    return false;
  }
  InitialOutputs& initial = Initial();
  if (initial.output < 0) {
    initial.output = Copy(::_fileno(stdout));
  }
  if (initial.error < 0) {
    initial.error = Copy(::_fileno(stderr));
  }
  return initial.output >= 0 && initial.error >= 0;
}

bool Point(std::FILE* ioStream, int iAt) noexcept {
  ::_lock_file(ioStream);
  std::fflush(ioStream);
  const bool isPointed = ::_dup2(iAt, ::_fileno(ioStream)) == 0;
  ::_unlock_file(ioStream);
  return isPointed;
}

void PointAtInitial() noexcept {
  Point(stdout, Initial().output);
  Point(stderr, Initial().error);
}

// Others may read, rename and remove the file meanwhile; every write goes to its end.
Status OpenEmptied(const std::string& iPath, Windows::Handle& oFile) {
  std::wstring path;
  if (!Windows::ToWide(iPath, path)) {
    return Failure::BadName();
  }
  constexpr DWORD kSharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE file = ::CreateFileW(path.c_str(), FILE_APPEND_DATA | SYNCHRONIZE, kSharing, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return Status::OfLastCall();
  }
  oFile.Reset(file);
  return {};
}

// The run-time's own numbers for its failures here: no descriptor left, or none that is open.
Status OfRunTime() noexcept {
  return errno == EMFILE ? Status(ERROR_TOO_MANY_OPEN_FILES) : Failure::InvalidHandle();
}

}  // namespace

Status RedirectOutputs(const std::string& iPath) {
  if (!KeepInitialOutputs()) {
    return OfRunTime();
  }
  RestoreOutputs();
  Windows::Handle handle;
  if (const Status status = OpenEmptied(iPath, handle); !status.IsOk()) {
    return status;
  }
  // Bytes as they are, so that all lines of the file end the same way, whoever prints them.
  const int file = ::_open_osfhandle(reinterpret_cast<std::intptr_t>(handle.Get()), _O_APPEND | _O_BINARY);
  if (file < 0) {
    return OfRunTime();
  }
  static_cast<void>(handle.Release());
  Status status;
  if (Point(stdout, file) && Point(stderr, file)) {
    Initial().isRedirected = true;
  } else {
    status = OfRunTime();
    PointAtInitial();
  }
  ::_close(file);
  return status;
}

void RestoreOutputs() noexcept {
  if (Initial().isRedirected) {
    PointAtInitial();
    Initial().isRedirected = false;
  }
}

}  // namespace VYX::Os
