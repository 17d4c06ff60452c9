#include "support/unprivileged.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

namespace VYX::Test {

bool HoldsForOrdinaryUser(const std::function<bool()>& iCheck) {
  constexpr uid_t kNobody = 65534;
  const pid_t child = ::fork();
  if (child == 0) {
    const bool isOrdinary = ::geteuid() != 0 || (::setgid(kNobody) == 0 && ::setuid(kNobody) == 0);
    ::_exit(isOrdinary && iCheck() ? 0 : 1);
  }
  int status = 0;
  while (::waitpid(child, &status, 0) == -1 && errno == EINTR) {
  }
  return child != -1 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace VYX::Test
