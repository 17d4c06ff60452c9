#include "faults/host_faults.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <type_traits>

namespace VYX::Test {
namespace {

using Os::Posix::Calls;
using Os::Posix::SystemCalls;

// Calls whose failing is told apart.
constexpr unsigned int kRemoval = 64;
constexpr unsigned int kTreeWork = 128;

struct {
  SystemCalls real;
  HostFault fault;
  int first;
  bool isOnce;
  int seen;
  int failed;
  bool wasInterrupted;
  unsigned int roles;
} gHost;

// True for a call that has to fail now.
bool IsHit(unsigned int iNeeds) {
  if ((iNeeds & gHost.fault.missing) == 0) {
    return false;
  }
  if (gHost.fault.missing == kPatience && gHost.wasInterrupted) {
    gHost.wasInterrupted = false;
    return false;
  }
  ++gHost.seen;
  const bool isHit = gHost.isOnce ? gHost.seen == gHost.first : gHost.seen >= gHost.first;
  if (isHit) {
    ++gHost.failed;
    gHost.roles |= iNeeds;
    gHost.wasInterrupted = true;
  }
  return isHit;
}

template <auto kEntry, unsigned int kNeeds>
struct Faulty;

template <typename Result, typename... Arguments, Result (*SystemCalls::*kEntry)(Arguments...), unsigned int kNeeds>
struct Faulty<kEntry, kNeeds> {
  static Result Fail() {
    errno = gHost.fault.error;
    if constexpr (std::is_pointer_v<Result>) {
      return nullptr;
    } else {
      return -1;
    }
  }

  static Result Call(Arguments... iArguments) { return IsHit(kNeeds) ? Fail() : (gHost.real.*kEntry)(iArguments...); }

  static Result CallAnyway(Arguments... iArguments) {
    const Result result = (gHost.real.*kEntry)(iArguments...);
    return IsHit(kNeeds) ? Fail() : result;
  }
};

// Reads and writes, by descriptor, buffer, size and perhaps position.
template <auto kEntry, unsigned int kNeeds>
struct FaultyTransfer;

template <typename Buffer, typename... Rest, ssize_t (*SystemCalls::*kEntry)(int, Buffer, std::size_t, Rest...),
          unsigned int kNeeds>
struct FaultyTransfer<kEntry, kNeeds> {
  static ssize_t Call(int iFile, Buffer ioBuffer, std::size_t iSize, Rest... iRest) {
    if (iFile <= STDERR_FILENO || !IsHit(kNeeds)) {
      return (gHost.real.*kEntry)(iFile, ioBuffer, iSize, iRest...);
    }
    if (gHost.fault.missing == kWholeTransfer) {
      return (gHost.real.*kEntry)(iFile, ioBuffer, std::max<std::size_t>(iSize / 2, 1), iRest...);
    }
    errno = gHost.fault.error;
    return -1;
  }
};

// Only what creates a file takes room; a folder that is opened is opened to be read, synchronised or emptied.
int OpenUnlessHit(const char* iPath, int iFlags, mode_t iMode) {
  const unsigned int needs = kPermission | kDescriptor | kDevice | kPatience;
  const unsigned int own = (iFlags & O_CREAT) != 0 ? kRoom : (iFlags & O_DIRECTORY) != 0 ? kTreeWork : 0U;
  if (!IsHit(needs | own)) {
    return gHost.real.Open(iPath, iFlags, iMode);
  }
  errno = gHost.fault.error;
  return -1;
}

template <auto kEntry, unsigned int kNeeds>
void Replace() {
  Calls().*kEntry = &Faulty<kEntry, kNeeds>::Call;
}

template <auto kEntry, unsigned int kNeeds>
void ReplaceClosing() {
  Calls().*kEntry = &Faulty<kEntry, kNeeds>::CallAnyway;
}

template <auto kEntry, unsigned int kNeeds>
void ReplaceTransfer() {
  Calls().*kEntry = &FaultyTransfer<kEntry, kNeeds>::Call;
}

void ReplaceOpening() {
  using C = SystemCalls;
  constexpr unsigned int kOpening = kRoom | kPermission | kDescriptor | kDevice | kPatience;
  constexpr unsigned int kLooking = kPermission | kDescriptor | kDevice | kTreeWork;
  Calls().Open = &OpenUnlessHit;
  Replace<&C::OpenAt, kLooking | kPatience>();
  Replace<&C::CreateAt, kOpening>();
  Replace<&C::OpenFolder, kLooking | kPatience>();
  Replace<&C::AdoptFolder, kDevice | kTreeWork>();
  Replace<&C::MoveDescriptor, kDescriptor | kTreeWork>();
  Replace<&C::MakeBlocking, kDevice>();
  Replace<&C::Random, kPatience>();
}

void ReplaceFiles() {
  using C = SystemCalls;
  ReplaceTransfer<&C::Read, kDevice | kPatience | kWholeTransfer>();
  ReplaceTransfer<&C::ReadAt, kDevice | kPatience | kWholeTransfer>();
  ReplaceTransfer<&C::Write, kRoom | kDevice | kPatience | kWholeTransfer>();
  ReplaceTransfer<&C::WriteAt, kRoom | kDevice | kPatience | kWholeTransfer>();
  ReplaceClosing<&C::Close, kRoom | kDevice | kPatience>();
  ReplaceClosing<&C::CloseFolder, kDevice | kPatience>();
  Replace<&C::Sync, kRoom | kDevice | kPatience>();
  Replace<&C::StatFile, kDevice | kTreeWork>();
  Replace<&C::ChangeMode, kPermission | kDevice | kPatience>();
  Replace<&C::ChangeOwner, kPermission | kDevice>();
  Replace<&C::ReadFolder, kDevice | kTreeWork>();
}

void ReplaceNames() {
  using C = SystemCalls;
  constexpr unsigned int kNaming = kRoom | kPermission | kDevice;
  Replace<&C::StatPath, kPermission | kDevice>();
  Replace<&C::StatAt, kPermission | kDevice | kTreeWork>();
  Replace<&C::Access, kPermission | kDevice>();
  Replace<&C::Rename, kNaming>();
  Replace<&C::RenameNew, kNaming>();
  Replace<&C::RenameAt, kNaming>();
  Replace<&C::UnlinkAt, kPermission | kDevice | kRemoval | kTreeWork>();
  Replace<&C::MakeFolder, kNaming>();
  Replace<&C::MakeFolderAt, kNaming>();
  Replace<&C::RealPath, kPermission | kDevice>();
  Replace<&C::CurrentFolder, kPermission>();
  Replace<&C::ReadLink, kPermission | kDevice>();
}

void ReplaceProcesses() {
  using C = SystemCalls;
  Replace<&C::Spawn, kPermission | kDevice | kDescriptor>();
  Replace<&C::WaitId, kPatience>();
  Replace<&C::OpenProcess, kDescriptor>();
  Replace<&C::SignalProcess, kPermission>();
  Replace<&C::Poll, kPatience>();
}

}  // namespace

FaultyHost::FaultyHost(const HostFault& iFault, int iFirst, bool iIsOnce) {
  gHost = {_saved.Real(), iFault, iFirst, iIsOnce, 0, 0, false, 0};
  ReplaceOpening();
  ReplaceFiles();
  ReplaceNames();
  ReplaceProcesses();
}

FaultyHost::~FaultyHost() = default;

int FaultyHost::CountFailed() const {
  return gHost.failed;
}

bool FaultyHost::HasRemovalFailed() const {
  return (gHost.roles & kRemoval) != 0;
}

bool FaultyHost::HasTreeWorkFailed() const {
  return (gHost.roles & kTreeWork) != 0;
}

}  // namespace VYX::Test
