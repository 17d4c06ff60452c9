#include "support/host.h"

#include <stdlib.h>

#include "platform/os/windows/handle.h"
#include "platform/os/windows/wide_text.h"

namespace VYX::Test {

namespace {

using Os::Windows::Handle;
using Os::Windows::ToReadableWide;
using Os::Windows::ToUtf8;

}  // namespace

int OwnProcess() {
  return static_cast<int>(::GetCurrentProcessId());
}

std::string OwnProgram() {
  wchar_t path[MAX_PATH * 4] = {};
  ::GetModuleFileNameW(nullptr, path, MAX_PATH * 4);
  const std::string program = ToUtf8(path);
  return program.substr(program.find_last_of("\\/") + 1);
}

void SetVariable(const std::string& iName, const char* iValue) {
  // Both the run-time's copy and the process's own.
  const std::string entry = iName + "=" + (iValue == nullptr ? "" : iValue);
  ::_wputenv(ToReadableWide(entry).c_str());
}

std::set<int> HostChildrenOf(int iParent) {
  std::set<int> children;
  const Handle snapshot(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  PROCESSENTRY32W entry = {};
  entry.dwSize = sizeof entry;
  for (BOOL isThere = ::Process32FirstW(snapshot.Get(), &entry); isThere != 0;
       isThere = ::Process32NextW(snapshot.Get(), &entry)) {
    if (entry.th32ParentProcessID == static_cast<DWORD>(iParent)) {
      children.insert(static_cast<int>(entry.th32ProcessID));
    }
  }
  return children;
}

const int kCodeOfEnded = 1;

int WaitForEnd(int iProcess) {
  const Handle process(
      ::OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, static_cast<DWORD>(iProcess)));
  DWORD code = static_cast<DWORD>(-1);
  if (process.IsOpen()) {
    ::WaitForSingleObject(process.Get(), INFINITE);
    ::GetExitCodeProcess(process.Get(), &code);
  }
  return static_cast<int>(code);
}

bool HasEnded(int iProcess) {
  const Handle process(::OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(iProcess)));
  return !process.IsOpen() || ::WaitForSingleObject(process.Get(), 0) == WAIT_OBJECT_0;
}

void EndProcess(int iProcess) {
  const Handle process(::OpenProcess(PROCESS_TERMINATE, FALSE, static_cast<DWORD>(iProcess)));
  if (process.IsOpen()) {
    ::TerminateProcess(process.Get(), 1);
  }
}

}  // namespace VYX::Test
