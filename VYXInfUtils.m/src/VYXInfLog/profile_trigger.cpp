#include <exception>
#include <utility>

#include "VYXInfProfile.h"
#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"

namespace {

constexpr std::uint64_t kMicrosecondsPerSecond = 1'000'000;

// The number in fixed notation with six decimals, exactly and in every locale.
std::string ToSeconds(std::uint64_t iMicroseconds) {
  std::string decimals = std::to_string(iMicroseconds % kMicrosecondsPerSecond);
  decimals.insert(0, 6 - decimals.size(), '0');
  return std::to_string(iMicroseconds / kMicrosecondsPerSecond) + "." + decimals;
}

}  // namespace

VYXInfScopedMeasurement::VYXInfScopedMeasurement(std::uint64_t& oTarget)
    : _target(oTarget), _start(VYXInfSystemUtil::GetTimeInMicroseconds()) {}

VYXInfScopedMeasurement::~VYXInfScopedMeasurement() {
  _target = VYXInfSystemUtil::GetTimeInMicroseconds() - _start;
}

VYXInfProfileTrigger::VYXInfProfileTrigger(const char* iName, bool iLogOnEnd, const VYXInfLogLevel& iLevel)
    : _name(iName == nullptr ? "" : iName), _logOnEnd(iLogOnEnd), _level(iLevel) {
  _measurement.emplace(_elapsed);
}

VYXInfProfileTrigger::VYXInfProfileTrigger(VYXInfProfileTrigger&& ioOther) noexcept
    : _name(std::exchange(ioOther._name, {})),
      _logOnEnd(ioOther._logOnEnd),
      _level(ioOther._level),
      _elapsed(ioOther._elapsed) {}

VYXInfProfileTrigger::~VYXInfProfileTrigger() {
  _measurement.reset();
  if (!_logOnEnd) {
    return;
  }
  try {
    if (!VYX::Internal::IsFiltered(_level)) {
      VYX::Internal::LogComposed(VYXInfLog::GetDefaultLogger(), _level, "[PROFILE] ", " PROFILE:  @", _name,
                                 ":\t\ttook ", ToSeconds(_elapsed), "s ");
    }
  } catch (const std::exception&) {
    // Without memory for the line there is none; a destructor must not throw.
  }
}
