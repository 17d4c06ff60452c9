#pragma once

#include <ctime>

namespace VYX::Test {

/// While the object lives, both clocks of the host show what was last set, to the host's own resolution of 100 ns at
/// worst; the monotonic one counts ten million ticks a second. One object at a time.
class SettledClock {
 public:
  explicit SettledClock(std::timespec iTime);
  ~SettledClock();
  SettledClock(const SettledClock&) = delete;
  SettledClock& operator=(const SettledClock&) = delete;

  void Set(std::timespec iTime);
};

}  // namespace VYX::Test
