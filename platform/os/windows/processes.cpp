#include "platform/os/processes.h"

#include <utility>

#include "platform/os/windows/children.h"
#include "platform/os/windows/module_path.h"
#include "platform/os/windows/process_calls.h"
#include "platform/os/windows/spawn.h"
#include "platform/os/windows/wide_text.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os {
namespace {

using Windows::gProcessCalls;
using Windows::Handle;

// Goes through all processes of a snapshot until the visitor has seen enough.
template <class Visitor>
Status VisitProcesses(Visitor iVisitor) {
  const Handle snapshot(gProcessCalls.TakeSnapshot());
  if (!snapshot.IsOpen()) {
    return Status::OfLastCall();
  }
  PROCESSENTRY32W entry = {};
  entry.dwSize = sizeof entry;
  BOOL isThere = ::Process32FirstW(snapshot.Get(), &entry);
  while (isThere != 0 && iVisitor(entry)) {
    isThere = ::Process32NextW(snapshot.Get(), &entry);
  }
  return {};
}

Status OpenProcess(ProcessId iProcess, DWORD iRights, Handle& oProcess) {
  oProcess.Reset(gProcessCalls.OpenProcess(iRights, static_cast<std::uint32_t>(iProcess)));
  return oProcess.IsOpen() ? Status() : Status::OfLastCall();
}

bool HasEnded(const Handle& iProcess) noexcept {
  return ::WaitForSingleObject(iProcess.Get(), 0) == WAIT_OBJECT_0;
}

Status StartTimeOf(HANDLE iProcess, std::uint64_t& oTime) noexcept {
  FILETIME start = {};
  FILETIME end = {};
  FILETIME kernel = {};
  FILETIME user = {};
  if (::GetProcessTimes(iProcess, &start, &end, &kernel, &user) == 0) {
    return Status::OfLastCall();
  }
  oTime = std::uint64_t{start.dwHighDateTime} << 32 | start.dwLowDateTime;
  return {};
}

Status IsOlder(const Handle& iProcess, bool& oIsOlder) noexcept {
  std::uint64_t own = 0;
  std::uint64_t other = 0;
  Status status = StartTimeOf(::GetCurrentProcess(), own);
  if (status.IsOk()) {
    status = StartTimeOf(iProcess.Get(), other);
  }
  oIsOlder = status.IsOk() && other <= own;
  return status;
}

// A number that no process has.
bool IsOfNobody(const Status& iStatus) noexcept {
  return iStatus.GetNative() == ERROR_INVALID_PARAMETER;
}

constexpr std::uint32_t kExitCodeOfEnded = 1;

}  // namespace

Status StartProcess(const std::string& iProgram, char* const iArguments[], bool iIsWaitedFor, ProcessId& oId) {
  Windows::HearOfEndedChildren();
  Handle child;
  std::uint32_t id = 0;
  if (const Status status = Windows::Spawn(iProgram, iArguments, child, id); !status.IsOk()) {
    return status;
  }
  Windows::KeepChild(id, std::move(child), iIsWaitedFor);
  oId = static_cast<ProcessId>(id);
  return {};
}

Status WaitForProcess(ProcessId iChild, ExitCode& oExitCode) {
  const Handle child = Windows::TakeChild(static_cast<std::uint32_t>(iChild));
  DWORD exitCode = 0;
  if (!child.IsOpen()) {
    return Status(ERROR_WAIT_NO_CHILDREN);
  }
  if (::WaitForSingleObject(child.Get(), INFINITE) != WAIT_OBJECT_0 ||
      ::GetExitCodeProcess(child.Get(), &exitCode) == 0) {
    return Status::OfLastCall();
  }
  oExitCode = static_cast<ExitCode>(exitCode);
  return {};
}

Status FindParent(ProcessId iProcess, ProcessId& oParent) {
  Windows::HearOfEndedChildren();
  bool isFound = false;
  ProcessId parent = 0;
  const Status status = VisitProcesses([&](const PROCESSENTRY32W& iEntry) {
    isFound = iEntry.th32ProcessID == static_cast<DWORD>(iProcess);
    parent = static_cast<ProcessId>(iEntry.th32ParentProcessID);
    return !isFound;
  });
  if (!status.IsOk() || !isFound) {
    return status.IsOk() ? Failure::InvalidParameter() : status;
  }
  oParent = parent;
  return {};
}

Status ListChildren(ProcessId iParent, std::vector<ProcessEntry>& oChildren) {
  Windows::HearOfEndedChildren();
  std::vector<ProcessEntry> children;
  const Status status = VisitProcesses([&](const PROCESSENTRY32W& iEntry) {
    if (iEntry.th32ParentProcessID == static_cast<DWORD>(iParent)) {
      children.push_back({static_cast<ProcessId>(iEntry.th32ProcessID), Windows::ToUtf8(iEntry.szExeFile)});
    }
    return true;
  });
  if (status.IsOk()) {
    oChildren = std::move(children);
  }
  return status;
}

Status ProgramPath(ProcessId iProcess, std::string& oPath) {
  Handle process;
  const Status status = OpenProcess(iProcess, PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, process);
  return status.IsOk() ? Windows::ModulePath(process.Get(), oPath) : status;
}

Status EndProcess(ProcessId iProcess) {
  Windows::HearOfEndedChildren();
  Handle process;
  if (const Status status = OpenProcess(iProcess, PROCESS_TERMINATE, process); !status.IsOk()) {
    return status;
  }
  return gProcessCalls.EndProcess(process.Get(), kExitCodeOfEnded) ? Status() : Status::OfLastCall();
}

Status EndOlderProcess(ProcessId iProcess) {
  constexpr DWORD kRights = PROCESS_TERMINATE | SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION;
  Handle process;
  if (const Status status = OpenProcess(iProcess, kRights, process); !status.IsOk()) {
    return IsOfNobody(status) ? Status() : status;
  }
  bool isOlder = false;
  const Status status = IsOlder(process, isOlder);
  if (HasEnded(process)) {
    return {};
  }
  if (!status.IsOk() || !isOlder) {
    return status;
  }
  if (!gProcessCalls.EndProcess(process.Get(), kExitCodeOfEnded)) {
    const Status ended = Status::OfLastCall();
    return HasEnded(process) ? Status() : ended;
  }
  return ::WaitForSingleObject(process.Get(), INFINITE) == WAIT_OBJECT_0 ? Status() : Status::OfLastCall();
}

}  // namespace VYX::Os
