#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace VYX::Test {

/// What a child process came to.
struct ChildResult {
  bool hasExited = false;  // false when a signal ended it
  int code = -1;           // exit code, or the signal
  std::string output;      // what it wrote to standard output
  std::string error;       // and to standard error

  /// It ran to its end and exited with 0.
  bool IsGood() const { return hasExited && code == 0; }
};

/// Runs a body in a forked child with environment variables of its own (a null value unsets) and its outputs caught;
/// the child exits as a program does, with its at-exit functions. For what a process can do once only. An exception
/// ends it with 99.
ChildResult RunInChild(const std::function<void()>& iBody,
                       const std::vector<std::pair<std::string, const char*>>& iEnvironment = {});

}  // namespace VYX::Test
