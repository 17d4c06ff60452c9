#include "platform/os/windows/process_calls.h"

#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os::Windows {
namespace {

void* TakeSnapshot() {
  const HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  return snapshot == INVALID_HANDLE_VALUE ? nullptr : snapshot;
}

bool Create(const wchar_t* iProgram, wchar_t* ioCommandLine, void* iStart, void* oProcess) {
  constexpr DWORD kFlags = EXTENDED_STARTUPINFO_PRESENT | CREATE_UNICODE_ENVIRONMENT;
  auto* const start = static_cast<STARTUPINFOEXW*>(iStart);
  const BOOL isInheriting = start->lpAttributeList != nullptr ? TRUE : FALSE;
  return ::CreateProcessW(iProgram, ioCommandLine, nullptr, nullptr, isInheriting, kFlags, nullptr, nullptr,
                          &start->StartupInfo, static_cast<PROCESS_INFORMATION*>(oProcess)) != 0;
}

std::int64_t ReadWallTime() {
  FILETIME now = {};
  ::GetSystemTimePreciseAsFileTime(&now);
  return static_cast<std::int64_t>(std::uint64_t{now.dwHighDateTime} << 32 | now.dwLowDateTime);
}

bool ReadCounter(BOOL(WINAPI* iQuery)(LARGE_INTEGER*), std::int64_t* oTicks) {
  LARGE_INTEGER ticks = {};
  const bool isRead = iQuery(&ticks) != 0;
  *oTicks = ticks.QuadPart;
  return isRead;
}

}  // namespace

ProcessCalls gProcessCalls = {
    TakeSnapshot,
    [](std::uint32_t iRights, std::uint32_t iProcess) -> void* { return ::OpenProcess(iRights, FALSE, iProcess); },
    [](void* iProcess, std::uint32_t iExitCode) { return ::TerminateProcess(iProcess, iExitCode) != 0; },
    Create,
    [](std::uint32_t iClass) { return ::SetPriorityClass(::GetCurrentProcess(), iClass) != 0; },
    [](void* iProcess, wchar_t* oPath, std::uint32_t iSize) -> std::uint32_t {
      return ::K32GetModuleFileNameExW(iProcess, nullptr, oPath, iSize);
    },
    [](void* oCounters) {
      auto* const counters = static_cast<PROCESS_MEMORY_COUNTERS*>(oCounters);
      return ::K32GetProcessMemoryInfo(::GetCurrentProcess(), counters, sizeof *counters) != 0;
    },
    [](void* oBuffer, std::uint32_t iSize) -> long {
      return ::BCryptGenRandom(nullptr, static_cast<PUCHAR>(oBuffer), iSize, BCRYPT_USE_SYSTEM_PREFERRED_RNG);
    },
    [](std::int64_t* oTicks) { return ReadCounter(::QueryPerformanceCounter, oTicks); },
    [](std::int64_t* oTicks) { return ReadCounter(::QueryPerformanceFrequency, oTicks); },
    ReadWallTime,
};

}  // namespace VYX::Os::Windows
