// What tests of processes start: does what its first argument says.

#include <dirent.h>
#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "VYXInfSystemUtil.h"

namespace {

[[noreturn]] void WaitForTheEnd() {
  for (;;) {
    ::pause();
  }
}

// Each argument with the zero behind it.
int Echo(int iCount, char** iArguments) {
  for (int index = 0; index < iCount; ++index) {
    std::fwrite(iArguments[index], 1, std::string_view(iArguments[index]).size() + 1, stdout);
  }
  return 0;
}

// The numbers of the open descriptors beyond the standard streams and the listing's own.
int ListDescriptors() {
  DIR* const folder = ::opendir("/proc/self/fd");
  while (const dirent* const entry = ::readdir(folder)) {
    const int number = std::atoi(entry->d_name);
    if (number > STDERR_FILENO && number != ::dirfd(folder)) {
      std::printf("%d\n", number);
    }
  }
  return ::closedir(folder);
}

// Whether SIGTERM is blocked, and whether SIGPIPE is ignored.
int TellSignals() {
  sigset_t blocked;
  struct sigaction action = {};
  ::sigprocmask(SIG_BLOCK, nullptr, &blocked);
  ::sigaction(SIGPIPE, nullptr, &action);
  std::printf("%d %d\n", ::sigismember(&blocked, SIGTERM), action.sa_handler == SIG_IGN ? 1 : 0);
  return 0;
}

int TellFolder() {
  KORUnicodeString folder;
  const long code = VYXInfSystemUtil::GetExecutablePath(folder);
  std::fputs(folder.CastToCharPtr(), stdout);
  return code < 0 ? 1 : 0;
}

int RunMode(std::string_view iMode, int iNumber) {
  if (iMode == "exit") {
    return iNumber;
  }
  if (iMode == "signal") {
    ::raise(iNumber);
  }
  if (iMode == "pause") {
    WaitForTheEnd();
  }
  if (iMode == "descriptors") {
    return ListDescriptors();
  }
  if (iMode == "signals") {
    return TellSignals();
  }
  if (iMode == "folder") {
    return TellFolder();
  }
  if (iMode == "die") {
    const bool isStarted = VYXInfSystemUtil::KillProcessFromChild(::getpid()) >= 0;
    isStarted ? WaitForTheEnd() : std::_Exit(3);
  }
  return 2;
}

}  // namespace

int main(int iCount, char** iArguments) {
  const std::string_view mode = iCount > 1 ? iArguments[1] : "";
  return mode == "echo" ? Echo(iCount, iArguments) : RunMode(mode, iCount > 2 ? std::atoi(iArguments[2]) : 0);
}
