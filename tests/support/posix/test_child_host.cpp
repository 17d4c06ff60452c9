#include "support/test_child_host.h"

#include <dirent.h>
#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace VYX::Test {

void MakeOutputBinary() {}

void WaitForTheEnd() {
  for (;;) {
    ::pause();
  }
}

void RaiseFault(int iNumber) {
  ::raise(iNumber);
}

int TellInherited(long long) {
  DIR* const folder = ::opendir("/proc/self/fd");
  while (const dirent* const entry = ::readdir(folder)) {
    const int number = std::atoi(entry->d_name);
    if (number > STDERR_FILENO && number != ::dirfd(folder)) {
      std::printf("%d\n", number);
    }
  }
  return ::closedir(folder);
}

int TellSignals() {
  sigset_t blocked;
  struct sigaction action = {};
  ::sigprocmask(SIG_BLOCK, nullptr, &blocked);
  ::sigaction(SIGPIPE, nullptr, &action);
  std::printf("%d %d\n", ::sigismember(&blocked, SIGTERM), action.sa_handler == SIG_IGN ? 1 : 0);
  return 0;
}

}  // namespace VYX::Test
