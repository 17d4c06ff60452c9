#include "platform/os/posix/spawn.h"

#include <signal.h>
#include <spawn.h>
#include <stdio.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <utility>

#include "platform/os/environment.h"
#include "platform/os/posix/system_calls.h"
#include "platform/os/processes.h"

#if !defined(__unix__)
#error "this source is for POSIX hosts"
#endif

namespace VYX::Os {
namespace Posix {
namespace {

// What a started program gets: no blocked signal, and the usual effect of the signals that libraries like to ignore.
class Attributes {
 public:
  Attributes() noexcept : _error(posix_spawnattr_init(&_attributes)) {
    if (_error == 0) {
      sigset_t none;
      sigemptyset(&none);
      sigset_t usual;
      sigemptyset(&usual);
      sigaddset(&usual, SIGPIPE);
      sigaddset(&usual, SIGCHLD);
      posix_spawnattr_setsigmask(&_attributes, &none);
      posix_spawnattr_setsigdefault(&_attributes, &usual);
      posix_spawnattr_setflags(&_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
  }
  ~Attributes() {
    if (_error == 0) {
      posix_spawnattr_destroy(&_attributes);
    }
  }
  Attributes(const Attributes&) = delete;
  Attributes& operator=(const Attributes&) = delete;

  Status GetStatus() const noexcept { return Status(_error); }
  const posix_spawnattr_t* Get() const noexcept { return &_attributes; }

 private:
  posix_spawnattr_t _attributes;
  int _error;
};

// What is done in the child before the program runs: all descriptors but the standard streams are closed, also those
// that other code of the program opened as inheritable.
class Actions {
 public:
  Actions() noexcept : _error(posix_spawn_file_actions_init(&_actions)) {
    if (_error == 0) {
      const int error = posix_spawn_file_actions_addclosefrom_np(&_actions, STDERR_FILENO + 1);
      if (error != 0) {
        posix_spawn_file_actions_destroy(&_actions);
        _error = error;
      }
    }
  }
  ~Actions() {
    if (_error == 0) {
      posix_spawn_file_actions_destroy(&_actions);
    }
  }
  Actions(const Actions&) = delete;
  Actions& operator=(const Actions&) = delete;

  Status GetStatus() const noexcept { return Status(_error); }
  const posix_spawn_file_actions_t* Get() const noexcept { return &_actions; }

 private:
  posix_spawn_file_actions_t _actions;
  int _error;
};

Status TestProgram(const std::string& iPath) {
  struct stat info = {};
  if (Calls().StatPath(iPath.c_str(), &info) != 0) {
    return Status::OfLastCall();
  }
  if (!S_ISREG(info.st_mode)) {
    return Status(EACCES);
  }
  return Calls().Access(iPath.c_str(), X_OK) == 0 ? Status() : Status::OfLastCall();
}

// Searches the absolute folders of PATH. A program that may not be run is reported only where no other one is found.
Status FindInPath(const std::string& iName, std::string& oPath) {
  const char* const value = EnvironmentValue("PATH");
  std::string_view folders = value == nullptr ? "/usr/bin:/bin" : value;
  Status failure(ENOENT);
  while (!folders.empty()) {
    const std::string_view folder = folders.substr(0, folders.find(':'));
    folders.remove_prefix(std::min(folder.size() + 1, folders.size()));
    if (!folder.starts_with('/')) {
      continue;
    }
    std::string path = std::string(folder).append("/").append(iName);
    const Status status = TestProgram(path);
    if (status.IsOk()) {
      oPath = std::move(path);
      return {};
    }
    failure = status.GetNative() == EACCES ? status : failure;
  }
  return failure;
}

}  // namespace

Status Spawn(const std::string& iProgram, char* const iArguments[], pid_t& oChild) {
  std::string path = iProgram;
  if (path.find('/') == std::string::npos) {
    if (const Status status = FindInPath(iProgram, path); !status.IsOk()) {
      return status;
    }
  }
  const Attributes attributes;
  const Actions actions;
  if (!attributes.GetStatus().IsOk() || !actions.GetStatus().IsOk()) {
    return attributes.GetStatus().IsOk() ? actions.GetStatus() : attributes.GetStatus();
  }
  // What was printed before stands before what the child prints.
  fflush(stdout);
  const int result = Calls().Spawn(&oChild, path.c_str(), actions.Get(), attributes.Get(), iArguments, environ);
  return result == 0 ? Status() : Status::OfLastCall();
}

}  // namespace Posix

Status WaitForProcess(ProcessId iChild, ExitCode& oExitCode) {
  siginfo_t info = {};
  const int result =
      Posix::Uninterrupted([&] { return Posix::Calls().WaitId(P_PID, static_cast<id_t>(iChild), &info, WEXITED); });
  if (result != 0) {
    return Status::OfLastCall();
  }
  oExitCode = info.si_code == CLD_EXITED ? info.si_status : -info.si_status;
  return {};
}

}  // namespace VYX::Os
