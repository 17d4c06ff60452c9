#include "support/host.h"

#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace VYX::Test {

int OwnProcess() {
  return ::getpid();
}

std::string OwnProgram() {
  return std::filesystem::read_symlink("/proc/self/exe").filename().string();
}

void SetVariable(const std::string& iName, const char* iValue) {
  if (iValue == nullptr) {
    ::unsetenv(iName.c_str());
  } else {
    ::setenv(iName.c_str(), iValue, 1);
  }
}

std::set<int> HostChildrenOf(int iParent) {
  std::set<int> children;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    const std::string name = entry.path().filename().string();
    if (name.find_first_not_of("0123456789") != std::string::npos) {
      continue;
    }
    // A process that ends meanwhile has no line.
    std::ifstream file(entry.path() / "stat");
    std::string text;
    std::getline(file, text);
    const std::size_t end = text.rfind(')');
    if (end == std::string::npos) {
      continue;
    }
    std::istringstream rest(text.substr(end + 1));
    char state = 0;
    int parent = 0;
    if (rest >> state >> parent && parent == iParent) {
      children.insert(std::stoi(name));
    }
  }
  return children;
}

const int kCodeOfEnded = -SIGKILL;

int WaitForEnd(int iProcess) {
  siginfo_t info = {};
  while (::waitid(P_PID, static_cast<id_t>(iProcess), &info, WEXITED | WNOWAIT) == -1 && errno == EINTR) {
  }
  return info.si_code == CLD_EXITED ? info.si_status : -info.si_status;
}

bool HasEnded(int iProcess) {
  siginfo_t info = {};
  return ::waitid(P_PID, static_cast<id_t>(iProcess), &info, WEXITED | WNOWAIT | WNOHANG) == 0 &&
         info.si_pid == iProcess;
}

void EndProcess(int iProcess) {
  ::kill(iProcess, SIGKILL);
}

}  // namespace VYX::Test
