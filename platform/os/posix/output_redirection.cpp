#include "platform/os/output_redirection.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

#include "platform/os/files.h"
#include "platform/os/posix/system_calls.h"

#if !defined(__unix__)
#error "this source is for POSIX hosts"
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

int Copy(int iDescriptor) {
  return ::fcntl(iDescriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
}

bool KeepInitialOutputs() {
  InitialOutputs& initial = Initial();
  if (initial.output < 0) {
    initial.output = Copy(STDOUT_FILENO);
  }
  if (initial.error < 0) {
    initial.error = Copy(STDERR_FILENO);
  }
  return initial.output >= 0 && initial.error >= 0;
}

bool Point(std::FILE* ioStream, int iDescriptor, int iAt) noexcept {
  ::flockfile(ioStream);
  std::fflush(ioStream);
  const bool isPointed = Posix::Uninterrupted([=] { return ::dup2(iAt, iDescriptor); }) >= 0;
  ::funlockfile(ioStream);
  return isPointed;
}

void PointAtInitial() noexcept {
  Point(stdout, STDOUT_FILENO, Initial().output);
  Point(stderr, STDERR_FILENO, Initial().error);
}

}  // namespace

Status RedirectOutputs(const std::string& iPath) {
  if (!KeepInitialOutputs()) {
    return Status::OfLastCall();
  }
  RestoreOutputs();
  FileDescriptor opened = 0;
  if (const Status status = OpenFile(iPath, OpenMode::WriteLog, opened); !status.IsOk()) {
    return status;
  }
  const int file = static_cast<int>(opened);
  Status status;
  if (Point(stdout, STDOUT_FILENO, file) && Point(stderr, STDERR_FILENO, file)) {
    Initial().isRedirected = true;
  } else {
    status = Status::OfLastCall();
    PointAtInitial();
  }
  static_cast<void>(CloseFile(opened));
  return status;
}

void RestoreOutputs() noexcept {
  if (Initial().isRedirected) {
    PointAtInitial();
    Initial().isRedirected = false;
  }
}

}  // namespace VYX::Os
