#include <sys/types.h>

#include <cerrno>
#include <charconv>
#include <string_view>

#include "platform/os/folders.h"
#include "platform/os/posix/system_calls.h"
#include "platform/os/processes.h"

#if !defined(__linux__)
#error "this source is for Linux"
#endif

namespace VYX::Os {
namespace {

using Posix::Calls;

// The niceness of a class, which goes from -20, the most urgent, to 19.
int ToNiceness(ProcessClass iClass) noexcept {
  switch (iClass) {
    case ProcessClass::High:
      return -10;
    case ProcessClass::AboveNormal:
      return -5;
    case ProcessClass::Normal:
      return 0;
    case ProcessClass::BelowNormal:
      return 10;
    case ProcessClass::Idle:
      return 19;
  }
  return 0;
}

// Answers whether the niceness had to be changed. A thread that ends meanwhile needs no change.
Status SetThread(id_t iThread, int iNiceness, bool& oHasChanged) noexcept {
  errno = 0;
  const int niceness = Calls().GetNiceness(iThread);
  if (niceness == iNiceness && errno == 0) {
    return {};
  }
  if (Calls().SetNiceness(iThread, iNiceness) == 0) {
    oHasChanged = true;
    return {};
  }
  return errno == ESRCH ? Status() : Status::OfLastCall();
}

Status SetAllThreads(int iNiceness, bool& oHasChanged) {
  FolderReader reader;
  Status status = reader.Open("/proc/self/task");
  FolderEntry entry;
  bool isAtEnd = false;
  while (status.IsOk() && (status = reader.Read(entry, isAtEnd)).IsOk() && !isAtEnd) {
    id_t thread = 0;
    const char* const end = entry.name.data() + entry.name.size();
    if (std::from_chars(entry.name.data(), end, thread).ec == std::errc()) {
      status = SetThread(thread, iNiceness, oHasChanged);
    }
  }
  return status;
}

}  // namespace

Status SetProcessClass(ProcessClass iClass) {
  // The host keeps a niceness per thread, and a thread starts with that of its maker: what was started while the others
  // were set is set in another turn.
  Status status;
  bool hasChanged = true;
  while (status.IsOk() && hasChanged) {
    hasChanged = false;
    status = SetAllThreads(ToNiceness(iClass), hasChanged);
  }
  return status;
}

}  // namespace VYX::Os
