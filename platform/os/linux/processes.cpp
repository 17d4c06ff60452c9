#include "platform/os/processes.h"

#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <exception>
#include <string_view>
#include <utility>

#include "platform/os/folders.h"
#include "platform/os/linux/proc_files.h"
#include "platform/os/posix/child_registry.h"
#include "platform/os/posix/spawn.h"
#include "platform/os/posix/system_calls.h"

#if !defined(__linux__)
#error "this source is for Linux"
#endif

namespace VYX::Os {
namespace {

using Linux::ProcessFacts;
using Linux::ReadProcessFacts;
using Posix::Calls;
using Posix::Uninterrupted;

std::string ProcPath(ProcessId iProcess, std::string_view iFile) {
  return ("/proc/" + std::to_string(iProcess)).append(iFile);
}

// The number that a name below /proc is; 0 for any other name.
ProcessId ToProcessId(std::string_view iName) noexcept {
  ProcessId id = 0;
  const auto [end, error] = std::from_chars(iName.data(), iName.data() + iName.size(), id);
  return error == std::errc() && end == iName.data() + iName.size() && id > 0 ? id : 0;
}

std::string_view BaseName(std::string_view iPath) noexcept {
  return iPath.substr(iPath.rfind('/') + 1);
}

// What everybody may read stands in for the program file where that is not shown.
std::string NameOf(ProcessId iProcess, const ProcessFacts& iFacts) {
  std::string text;
  if (ProgramPath(iProcess, text).IsOk()) {
    return std::string(BaseName(text));
  }
  if (Linux::ReadProcFile(ProcPath(iProcess, "/cmdline"), text).IsOk()) {
    const std::string_view program = BaseName(std::string_view(text).substr(0, text.find('\0')));
    if (!program.empty()) {
      return std::string(program);
    }
  }
  return iFacts.name;
}

Status ReadFactsOfRunning(ProcessId iProcess, ProcessFacts& oFacts) {
  if (iProcess <= 0) {
    return Status(ESRCH);
  }
  const Status status = ReadProcessFacts(iProcess, oFacts);
  return status.IsOk() && oFacts.hasEnded ? Status(ESRCH) : status;
}

// A process that ended meanwhile, or that is hidden from the calling user.
bool IsNoneOfOurs(const Status& iStatus) noexcept {
  return iStatus.GetNative() == ESRCH || iStatus.GetNative() == EACCES || iStatus.GetNative() == EPERM;
}

std::uint64_t StartTimeOf(pid_t iProcess) noexcept {
  try {
    ProcessFacts facts;
    return ReadProcessFacts(iProcess, facts).IsOk() ? facts.startTime : 0;
  } catch (const std::exception&) {
    return 0;
  }
}

// A process held by its descriptor, so that its number cannot pass to another one unnoticed.
class HeldProcess {
 public:
  HeldProcess() = default;
  ~HeldProcess() {
    if (_file >= 0) {
      static_cast<void>(Calls().Close(_file));
    }
  }
  HeldProcess(const HeldProcess&) = delete;
  HeldProcess& operator=(const HeldProcess&) = delete;

  Status Open(ProcessId iProcess) noexcept {
    _file = Calls().OpenProcess(iProcess);
    return _file < 0 ? Status::OfLastCall() : Status();
  }

  bool HasEnded() noexcept { return Poll(0) > 0; }

  Status End() noexcept { return Calls().SignalProcess(_file, SIGKILL) == 0 ? Status() : Status::OfLastCall(); }

  Status Wait() noexcept { return Poll(-1) > 0 ? Status() : Status::OfLastCall(); }

 private:
  int Poll(int iTimeout) noexcept {
    pollfd request = {_file, POLLIN, 0};
    return Uninterrupted([&] { return Calls().Poll(&request, 1, iTimeout); });
  }

  int _file = -1;
};

// Holds for the parent, whose number cannot pass to another process while it is the parent, and for what is no younger
// than the calling process.
Status IsOlder(ProcessId iProcess, bool& oIsOlder) {
  oIsOlder = getppid() == iProcess;
  if (oIsOlder) {
    return {};
  }
  ProcessFacts own;
  ProcessFacts other;
  Status status = ReadProcessFacts(getpid(), own);
  if (status.IsOk()) {
    status = ReadProcessFacts(iProcess, other);
  }
  oIsOlder = status.IsOk() && other.startTime <= own.startTime;
  return status;
}

}  // namespace

Status StartProcess(const std::string& iProgram, char* const iArguments[], bool iIsWaitedFor, ProcessId& oId) {
  Posix::HearOfEndedChildren(StartTimeOf);
  pid_t child = 0;
  if (const Status status = Posix::Spawn(iProgram, iArguments, child); !status.IsOk()) {
    return status;
  }
  if (!iIsWaitedFor) {
    Posix::RememberChild(child, StartTimeOf(child));
  }
  oId = child;
  return {};
}

Status FindParent(ProcessId iProcess, ProcessId& oParent) {
  Posix::HearOfEndedChildren(StartTimeOf);
  ProcessFacts facts;
  const Status status = ReadFactsOfRunning(iProcess, facts);
  if (status.IsOk()) {
    oParent = facts.parent;
  }
  return status;
}

Status ListChildren(ProcessId iParent, std::vector<ProcessEntry>& oChildren) {
  Posix::HearOfEndedChildren(StartTimeOf);
  FolderReader reader;
  Status status = reader.Open("/proc");
  std::vector<ProcessEntry> children;
  FolderEntry entry;
  bool isAtEnd = false;
  while (status.IsOk() && (status = reader.Read(entry, isAtEnd)).IsOk() && !isAtEnd) {
    const ProcessId id = ToProcessId(entry.name);
    ProcessFacts facts;
    if (id == 0) {
      continue;
    }
    const Status known = ReadFactsOfRunning(id, facts);
    if (known.IsOk() && facts.parent == iParent) {
      children.push_back({id, NameOf(id, facts)});
    }
    status = IsNoneOfOurs(known) ? Status() : known;
  }
  if (status.IsOk()) {
    std::sort(children.begin(), children.end(),
              [](const ProcessEntry& iLeft, const ProcessEntry& iRight) { return iLeft.id < iRight.id; });
    oChildren = std::move(children);
  }
  return status;
}

Status ProgramPath(ProcessId iProcess, std::string& oPath) {
  return Linux::ReadProcLink(ProcPath(iProcess, "/exe"), oPath);
}

Status EndProcess(ProcessId iProcess) {
  Posix::HearOfEndedChildren(StartTimeOf);
  HeldProcess process;
  if (const Status status = process.Open(iProcess); !status.IsOk()) {
    return status;
  }
  return process.HasEnded() ? Status(ESRCH) : process.End();
}

Status EndOlderProcess(ProcessId iProcess) {
  HeldProcess process;
  if (const Status status = process.Open(iProcess); !status.IsOk()) {
    return status.GetNative() == ESRCH ? Status() : status;
  }
  bool isOlder = false;
  const Status status = IsOlder(iProcess, isOlder);
  // What was read belongs to the process held only if that one is still there.
  if (process.HasEnded()) {
    return {};
  }
  if (!status.IsOk() || !isOlder) {
    return status;
  }
  if (const Status ended = process.End(); !ended.IsOk()) {
    return ended.GetNative() == ESRCH ? Status() : ended;
  }
  return process.Wait();
}

}  // namespace VYX::Os
