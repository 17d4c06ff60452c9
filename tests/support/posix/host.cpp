#include "support/host.h"

#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace VYX::Test {

namespace {

// The figure of a line such as "VmRSS:   2096 kB", in bytes.
std::int64_t FigureOf(const char* iFile, const std::string& iLine) {
  std::ifstream file(iFile);
  for (std::string word; file >> word;) {
    std::int64_t kibibytes = 0;
    if (word == iLine && file >> kibibytes) {
      return kibibytes * 1024;
    }
  }
  return 0;
}

}  // namespace

int OwnProcess() {
  return ::getpid();
}

std::string OwnProgram() {
  return std::filesystem::path(OwnProgramPath()).filename().string();
}

std::string OwnProgramPath() {
  return std::filesystem::read_symlink("/proc/self/exe").string();
}

void SetVariable(const std::string& iName, const char* iValue) {
  if (iValue == nullptr) {
    ::unsetenv(iName.c_str());
  } else {
    ::setenv(iName.c_str(), iValue, 1);
  }
}

std::vector<std::string> HostVariables() {
  std::vector<std::string> entries;
  for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
    entries.emplace_back(*entry);
  }
  return entries;
}

void ClearEnvironment() {
  ::clearenv();
}

std::int64_t HostMemoryUsage() {
  return FigureOf("/proc/self/status", "VmRSS:");
}

std::uint64_t HostMemory() {
  return static_cast<std::uint64_t>(FigureOf("/proc/meminfo", "MemTotal:"));
}

std::uint64_t HostClockFrequency() {
  return 10'000'000;  // the library counts in units of 100 ns here
}

void CloseStandardOutput() {
  ::close(STDOUT_FILENO);
}

void BreakStandardOutput() {
  int pipe[2];
  if (::pipe(pipe) != 0) {
    std::_Exit(1);
  }
  ::dup2(pipe[1], STDOUT_FILENO);
  ::close(pipe[0]);
  ::close(pipe[1]);
}

void Become(const char* iProgram) {
  ::execl(iProgram, iProgram, nullptr);
  std::_Exit(1);
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
