#include "support/failing_host.h"

#include <cerrno>
#include <system_error>

#include "platform/os/posix/system_calls.h"

namespace VYX::Test {

namespace {

Os::Posix::SystemCalls gReal;

int Fail(int iError) {
  errno = iError;
  return -1;
}

}  // namespace

FailingHost::FailingHost(Service iService) {
  Os::Posix::SystemCalls& calls = Os::Posix::Calls();
  gReal = calls;
  switch (iService) {
    case Service::ProgramPath:
      calls.ReadLink = [](const char*, char*, std::size_t) -> ssize_t { return Fail(ENAMETOOLONG); };
      return;
    case Service::MemoryUsage:
      calls.Open = [](const char*, int, mode_t) { return Fail(EMFILE); };
      return;
    case Service::RandomBytes:
      calls.Random = [](void*, std::size_t) -> ssize_t { return Fail(ENOSYS); };
      return;
  }
}

FailingHost::~FailingHost() {
  Os::Posix::Calls() = gReal;
}

std::string FailingHost::CauseOfRandomBytes() {
  return std::generic_category().message(ENOSYS);
}

}  // namespace VYX::Test
