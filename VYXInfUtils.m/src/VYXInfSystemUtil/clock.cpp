#include <atomic>
#include <cstdint>

#include "KORSysBase/KORTime.h"
#include "KORSysTS/KORThreads.h"
#include "VYXInfSystemUtil.h"
#include "platform/os/clock.h"
#include "platform/os/process_identity.h"

namespace {

constexpr std::int64_t kMicrosecondsPerSecond = 1'000'000;

}  // namespace

std::uint64_t VYXInfSystemUtil::GetTimeInMicroseconds() {
  // counter x 1,000,000 / frequency, taken apart so that no product overflows however long the host has been up.
  const std::int64_t counter = VYX::Os::MonotonicCounter();
  const std::int64_t frequency = VYX::Os::MonotonicFrequency();
  const std::int64_t seconds = counter / frequency;
  const std::int64_t rest = counter % frequency;
  return static_cast<std::uint64_t>(seconds * kMicrosecondsPerSecond + rest * kMicrosecondsPerSecond / frequency);
}

double VYXInfSystemUtil::GetElapsedSeconds(double iOffset) {
  const std::uint64_t now = GetTimeInMicroseconds();
  // The first call sets the reference, without a lock that a forked child could find taken.
  static constinit std::atomic<std::uint64_t> sReference{0};
  std::uint64_t reference = 0;
  if (sReference.compare_exchange_strong(reference, now)) {
    reference = now;
  }
  // Signed, because the thread that set the reference may have read the counter after this one did.
  const auto elapsed = static_cast<std::int64_t>(now - reference);
  return static_cast<double>(elapsed) / static_cast<double>(kMicrosecondsPerSecond) - iOffset;
}

KORUnicodeString VYXInfSystemUtil::GetCurrentDateTimeString(const KORUnicodeString& iFormat) {
  return KORTime::GetCurrentLocalTime().ConvertToString(iFormat, KORTz::Local);
}

KORUnicodeString VYXInfSystemUtil::GetStartDateTimeString(const KORUnicodeString& iFormat) {
  static const KORTime start = KORTime::GetCurrentLocalTime();
  return start.ConvertToString(iFormat, KORTz::Local);
}

int VYXInfSystemUtil::GetPID() {
  return VYX::Os::CurrentProcessId();
}

unsigned int VYXInfSystemUtil::GetCurrentThreadId() {
  return KORThreads::GetCurrentThreadId();
}
