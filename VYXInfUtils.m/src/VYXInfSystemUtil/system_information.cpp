#include "platform/os/system_information.h"

#include <algorithm>
#include <thread>

#include "KORSysBase/KORUuid.h"
#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"
#include "platform/os/clock.h"

using VYX::Internal::FailureReturn;
using VYX::Internal::LogPendingError;
using VYX::Os::MemoryUsage;

namespace {

MemoryUsage MemoryOrNone() {
  MemoryUsage usage;
  return VYX::Os::QueryMemoryUsage(usage).IsOk() ? usage : MemoryUsage();
}

}  // namespace

std::int64_t VYXInfSystemUtil::GetCurrentMemoryUsage() {
  return static_cast<std::int64_t>(MemoryOrNone().current);
}

std::int64_t VYXInfSystemUtil::GetPeakMemoryUsage() {
  return static_cast<std::int64_t>(MemoryOrNone().peak);
}

std::uint64_t VYXInfSystemUtil::GetPhysicalMemory() {
  return VYX::Os::PhysicalMemory();
}

std::uint64_t VYXInfSystemUtil::GetCPUCount() {
  return std::max(std::thread::hardware_concurrency(), 1U);
}

std::uint64_t VYXInfSystemUtil::GetCpuSpeed() {
  return static_cast<std::uint64_t>(VYX::Os::MonotonicFrequency());
}

KORUnicodeString VYXInfSystemUtil::GetUUIDString() {
  const KORUuid uuid;
  if (uuid.IsNil()) {
    LogPendingError(E_FAIL);
    return FailureReturn(VYX_HERE, KORUnicodeString());
  }
  char text[KORUuid::kTextLength + 1] = {};
  uuid.UUID_to_chaine(text, 0);
  return text;
}

KORUnicodeString VYXInfSystemUtil::GetPlatform() {
  return "Windows";
}
