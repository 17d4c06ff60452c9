#include "support/settled_clock.h"

#include "platform/os/posix/system_calls.h"

namespace VYX::Test {

namespace {

std::timespec gTime;
decltype(Os::Posix::SystemCalls::ClockGetTime) gRealClock;

}  // namespace

SettledClock::SettledClock(std::timespec iTime) {
  Set(iTime);
  gRealClock = Os::Posix::Calls().ClockGetTime;
  Os::Posix::Calls().ClockGetTime = [](clockid_t, timespec* oTime) {
    *oTime = gTime;
    return 0;
  };
}

SettledClock::~SettledClock() {
  Os::Posix::Calls().ClockGetTime = gRealClock;
}

void SettledClock::Set(std::timespec iTime) {
  gTime = iTime;
}

}  // namespace VYX::Test
