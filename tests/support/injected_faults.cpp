#include "support/injected_faults.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace VYX::Test {
namespace {

using Os::Posix::Calls;
using Os::Posix::SystemCalls;

struct {
  SystemCalls real;
  int first;
  int error;
  bool isOnce;
  int count;
} gFaults;

bool IsFailing() {
  const int number = ++gFaults.count;
  return gFaults.first != 0 && (gFaults.isOnce ? number == gFaults.first : number >= gFaults.first);
}

template <auto kEntry>
struct Failing;

template <typename Result, typename... Arguments, Result (*SystemCalls::*kEntry)(Arguments...)>
struct Failing<kEntry> {
  static Result Call(Arguments... iArguments) {
    if (!IsFailing()) {
      return (gFaults.real.*kEntry)(iArguments...);
    }
    errno = gFaults.error;
    if constexpr (std::is_pointer_v<Result>) {
      return nullptr;
    } else {
      return -1;
    }
  }

  static Result CallAnyway(Arguments... iArguments) {
    const Result result = (gFaults.real.*kEntry)(iArguments...);
    if (IsFailing()) {
      errno = gFaults.error;
      return -1;
    }
    return result;
  }
};

template <auto... kEntries>
void ReplaceAll() {
  ((Calls().*kEntries = &Failing<kEntries>::Call), ...);
}

template <auto... kEntries>
void ReplaceClosing() {
  ((Calls().*kEntries = &Failing<kEntries>::CallAnyway), ...);
}

ssize_t WriteUnlessConsole(int iFile, const void* iData, std::size_t iSize) {
  return iFile <= STDERR_FILENO ? gFaults.real.Write(iFile, iData, iSize)
                                : Failing<&SystemCalls::Write>::Call(iFile, iData, iSize);
}

struct {
  SystemCalls real;
  std::size_t most;
  bool isInterrupted;
} gShort;

bool IsInterrupted() {
  gShort.isInterrupted = !gShort.isInterrupted;
  if (gShort.isInterrupted) {
    errno = EINTR;
  }
  return gShort.isInterrupted;
}

}  // namespace

InjectedFaults::InjectedFaults(int iFirst, int iError, bool iIsOnce) {
  gFaults = {_saved.Real(), iFirst, iError, iIsOnce, 0};
  using C = SystemCalls;
  ReplaceAll<&C::Open, &C::OpenAt, &C::Read, &C::MoveDescriptor, &C::MakeBlocking, &C::StatFile, &C::StatPath,
             &C::StatAt, &C::Access, &C::Sync, &C::ChangeMode, &C::ChangeOwner, &C::Rename, &C::RenameNew, &C::UnlinkAt,
             &C::MakeFolder, &C::RealPath, &C::CurrentFolder, &C::OpenFolder, &C::AdoptFolder, &C::ReadFolder,
             &C::ReadLink, &C::Random, &C::Spawn, &C::WaitId, &C::OpenProcess, &C::SignalProcess, &C::Poll,
             &C::GetNiceness, &C::SetNiceness>();
  ReplaceClosing<&C::Close, &C::CloseFolder>();
  Calls().Write = &WriteUnlessConsole;
}

InjectedFaults::~InjectedFaults() = default;

int InjectedFaults::Count() const {
  return gFaults.count;
}

ShortTransfers::ShortTransfers(std::size_t iMost) {
  gShort = {_saved.Real(), iMost, false};
  Calls().Read = [](int iFile, void* oBuffer, std::size_t iSize) -> ssize_t {
    return IsInterrupted() ? -1 : gShort.real.Read(iFile, oBuffer, std::min(iSize, gShort.most));
  };
  Calls().Write = [](int iFile, const void* iData, std::size_t iSize) -> ssize_t {
    return IsInterrupted() ? -1 : gShort.real.Write(iFile, iData, std::min(iSize, gShort.most));
  };
}

}  // namespace VYX::Test
