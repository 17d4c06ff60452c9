#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace VYX::Test {

/// What a child process came to.
struct ChildResult {
  bool hasExited = false;  // false when a signal or a fault ended it
  int code = -1;           // exit code, or the signal or the number of the fault
  std::string output;      // what it wrote to standard output
  std::string error;       // and to standard error

  /// It ran to its end and exited with 0.
  bool IsGood() const { return hasExited && code == 0; }
};

/**
 * Runs a body in a child with environment variables of its own (a null value unsets) and its outputs caught; the child
 * exits as a program does, with its at-exit functions. For what a process can do once only. An exception ends it with
 * 99.
 *
 * The child is a fork; without one it is the test program started anew, which runs the same test up to this call (see
 * replay.h). What the test does before must therefore come to the same when it is done again.
 */
ChildResult RunInChild(const std::function<void()>& iBody,
                       const std::vector<std::pair<std::string, const char*>>& iEnvironment = {});

}  // namespace VYX::Test
