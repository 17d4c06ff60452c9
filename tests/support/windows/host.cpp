#include "support/host.h"

#include <fcntl.h>
#include <io.h>
#include <stdlib.h>

#include <cstdio>
#include <cstdlib>
#include <cwchar>

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
  const std::string program = OwnProgramPath();
  return program.substr(program.find_last_of("\\/") + 1);
}

std::string OwnProgramPath() {
  wchar_t path[MAX_PATH * 4] = {};
  ::GetModuleFileNameW(nullptr, path, MAX_PATH * 4);
  return ToUtf8(path);
}

void SetVariable(const std::string& iName, const char* iValue) {
  // Both the run-time's copy and the process's own.
  const std::string entry = iName + "=" + (iValue == nullptr ? "" : iValue);
  ::_wputenv(ToReadableWide(entry).c_str());
}

std::vector<std::string> HostVariables() {
  std::vector<std::string> entries;
  wchar_t* const block = ::GetEnvironmentStringsW();
  for (const wchar_t* entry = block; *entry != L'\0'; entry += std::wcslen(entry) + 1) {
    // The host keeps the current folders of drives there, under names that begin with "=".
    if (*entry != L'=') {
      entries.push_back(ToUtf8(entry));
    }
  }
  ::FreeEnvironmentStringsW(block);
  return entries;
}

void ClearEnvironment() {
  for (const std::string& entry : HostVariables()) {
    SetVariable(entry.substr(0, entry.find('=')), nullptr);
  }
}

std::int64_t HostMemoryUsage() {
  PROCESS_MEMORY_COUNTERS counters = {};
  ::K32GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters);
  return static_cast<std::int64_t>(counters.WorkingSetSize);
}

std::uint64_t HostMemory() {
  MEMORYSTATUSEX memory = {};
  memory.dwLength = sizeof memory;
  ::GlobalMemoryStatusEx(&memory);
  return memory.ullTotalPhys;
}

std::uint64_t HostClockFrequency() {
  LARGE_INTEGER frequency = {};
  ::QueryPerformanceFrequency(&frequency);
  return static_cast<std::uint64_t>(frequency.QuadPart);
}

void CloseStandardOutput() {
  ::_close(1);
}

void BreakStandardOutput() {
  int pipe[2];
  if (::_pipe(pipe, 4096, _O_BINARY) != 0) {
    std::_Exit(1);
  }
  ::_dup2(pipe[1], 1);
  ::_close(pipe[0]);
  ::_close(pipe[1]);
}

void Become(const char* iProgram) {
  std::fflush(stdout);
  std::wstring line = L"\"" + ToReadableWide(iProgram) + L"\"";
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  PROCESS_INFORMATION process = {};
  if (::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process) == 0) {
    std::_Exit(1);
  }
  DWORD code = 1;
  ::WaitForSingleObject(process.hProcess, INFINITE);
  ::GetExitCodeProcess(process.hProcess, &code);
  std::_Exit(static_cast<int>(code));
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
