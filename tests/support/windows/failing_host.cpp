#include "support/failing_host.h"

#include "platform/os/status.h"
#include "support/windows/process_faults.h"

namespace VYX::Test {

namespace {

Os::Windows::ProcessCalls gReal;

}  // namespace

FailingHost::FailingHost(Service iService) {
  Os::Windows::ProcessCalls& calls = Os::Windows::gProcessCalls;
  gReal = calls;
  switch (iService) {
    case Service::ProgramPath:
      calls.ModulePath = [](void*, wchar_t*, std::uint32_t) { return FailWith(kAccessDenied), 0U; };
      return;
    case Service::MemoryUsage:
      calls.MemoryCounters = [](void*) { return FailWith(kAccessDenied), false; };
      return;
    case Service::RandomBytes:
      calls.Random = [](void*, std::uint32_t) { return -1L; };
      return;
  }
}

FailingHost::~FailingHost() {
  Os::Windows::gProcessCalls = gReal;
}

std::string FailingHost::CauseOfRandomBytes() {
  constexpr int kGeneralFailure = 31;
  return Os::Status(kGeneralFailure).Describe();
}

}  // namespace VYX::Test
