#pragma once

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

namespace VYX::Test {

/// The children of a process as /proc tells, those that have ended but were not heard of among them.
inline std::set<int> HostChildrenOf(int iParent) {
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

/// Waits until a process has ended, without hearing of it: its number stays taken.
inline void WaitForEnd(int iChild) {
  siginfo_t info = {};
  while (::waitid(P_PID, static_cast<id_t>(iChild), &info, WEXITED | WNOWAIT) == -1 && errno == EINTR) {
  }
}

}  // namespace VYX::Test
