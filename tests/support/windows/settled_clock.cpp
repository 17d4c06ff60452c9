#include "support/settled_clock.h"

#include "platform/os/windows/process_calls.h"

namespace VYX::Test {

namespace {

using Os::Windows::gProcessCalls;
using Os::Windows::ProcessCalls;

constexpr std::int64_t kUnitsPerSecond = 10'000'000;
constexpr std::int64_t kSecondsFrom1601To1970 = 11'644'473'600;

std::int64_t gUnits;
ProcessCalls gRealCalls;

}  // namespace

SettledClock::SettledClock(std::timespec iTime) {
  Set(iTime);
  gRealCalls = gProcessCalls;
  gProcessCalls.PerformanceCounter = [](std::int64_t* oTicks) {
    *oTicks = gUnits;
    return true;
  };
  gProcessCalls.PerformanceFrequency = [](std::int64_t* oTicksPerSecond) {
    *oTicksPerSecond = kUnitsPerSecond;
    return true;
  };
  gProcessCalls.WallTime = [] { return gUnits + kSecondsFrom1601To1970 * kUnitsPerSecond; };
}

SettledClock::~SettledClock() {
  gProcessCalls.PerformanceCounter = gRealCalls.PerformanceCounter;
  gProcessCalls.PerformanceFrequency = gRealCalls.PerformanceFrequency;
  gProcessCalls.WallTime = gRealCalls.WallTime;
}

void SettledClock::Set(std::timespec iTime) {
  gUnits = iTime.tv_sec * kUnitsPerSecond + iTime.tv_nsec / 100;
}

}  // namespace VYX::Test
