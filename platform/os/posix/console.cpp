#include "platform/os/console.h"

#include <signal.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "platform/os/posix/system_calls.h"

#if !defined(__unix__)
#error "this source is for POSIX hosts"
#endif

namespace VYX::Os {
namespace {

// Keeps a write to a broken pipe from ending the process: the signal is held back for this thread and, where the write
// raised it, taken off again. One that the process had pending before is left alone.
class BrokenPipeGuard {
 public:
  BrokenPipeGuard() noexcept {
    sigemptyset(&_brokenPipe);
    sigaddset(&_brokenPipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &_brokenPipe, &_former);
    if (sigismember(&_former, SIGPIPE) == 1) {
      sigset_t pending;
      sigpending(&pending);
      _wasPending = sigismember(&pending, SIGPIPE) == 1;
    }
  }

  ~BrokenPipeGuard() {
    if (_isBroken && !_wasPending) {
      const timespec noWait{};
      while (sigtimedwait(&_brokenPipe, nullptr, &noWait) == -1 && errno == EINTR) {
      }
    }
    pthread_sigmask(SIG_SETMASK, &_former, nullptr);
  }

  BrokenPipeGuard(const BrokenPipeGuard&) = delete;
  BrokenPipeGuard& operator=(const BrokenPipeGuard&) = delete;

  void NoteBroken() noexcept { _isBroken = true; }

 private:
  sigset_t _brokenPipe;
  sigset_t _former;
  bool _wasPending = false;
  bool _isBroken = false;
};

// The stream's own lock keeps lines whole and in order, whichever thread and whichever way they come.
class StreamLock {
 public:
  explicit StreamLock(std::FILE* ioStream) noexcept : _stream(ioStream) { ::flockfile(_stream); }
  ~StreamLock() { ::funlockfile(_stream); }
  StreamLock(const StreamLock&) = delete;
  StreamLock& operator=(const StreamLock&) = delete;

 private:
  std::FILE* _stream;
};

void WriteBehind(std::FILE* ioStream, int iDescriptor, std::string_view iText) noexcept {
  const int formerError = errno;
  {
    const StreamLock lock(ioStream);
    BrokenPipeGuard guard;
    if (std::fflush(ioStream) != 0 && errno == EPIPE) {
      guard.NoteBroken();
    }
    while (!iText.empty()) {
      const ssize_t written =
          Posix::Uninterrupted([&] { return Posix::Calls().Write(iDescriptor, iText.data(), iText.size()); });
      if (written <= 0) {
        if (written < 0 && errno == EPIPE) {
          guard.NoteBroken();
        }
        break;
      }
      iText.remove_prefix(static_cast<std::size_t>(written));
    }
  }
  errno = formerError;
}

}  // namespace

void WriteConsole(std::string_view iText) noexcept {
  WriteBehind(stdout, STDOUT_FILENO, iText);
}

void WriteErrorConsole(std::string_view iText) noexcept {
  WriteBehind(stderr, STDERR_FILENO, iText);
}

}  // namespace VYX::Os
