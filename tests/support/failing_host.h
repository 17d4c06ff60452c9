#pragma once

#include <string>

namespace VYX::Test {

/// While the object lives, one service of the host fails. One object at a time.
class FailingHost {
 public:
  enum class Service { ProgramPath, MemoryUsage, RandomBytes };

  explicit FailingHost(Service iService);
  ~FailingHost();
  FailingHost(const FailingHost&) = delete;
  FailingHost& operator=(const FailingHost&) = delete;

  /// The cause that the host gives for a failing RandomBytes.
  static std::string CauseOfRandomBytes();
};

}  // namespace VYX::Test
