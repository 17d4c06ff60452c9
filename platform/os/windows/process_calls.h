#pragma once

#include <cstdint>

namespace VYX::Os::Windows {

/// The calls about processes, the machine and the clock that can fail, as one table, in types that need no header of
/// the host's. A test replaces entries to make a chosen call fail or to settle the clock; a failing entry leaves its
/// cause behind with SetLastError, as the host does.
struct ProcessCalls {
  /// CreateToolhelp32Snapshot of all processes; null on failure.
  void* (*TakeSnapshot)();
  /// OpenProcess; null on failure.
  void* (*OpenProcess)(std::uint32_t iRights, std::uint32_t iProcess);
  /// TerminateProcess.
  bool (*EndProcess)(void* iProcess, std::uint32_t iExitCode);
  /// CreateProcessW: program file, command line, and a STARTUPINFOEXW; answers a PROCESS_INFORMATION. Without a list
  /// of handles nothing is inherited.
  bool (*CreateProcess)(const wchar_t* iProgram, wchar_t* ioCommandLine, void* iStart, void* oProcess);
  /// SetPriorityClass of the running process.
  bool (*SetPriority)(std::uint32_t iClass);
  /// K32GetModuleFileNameExW of a process's main module; the length, 0 on failure.
  std::uint32_t (*ModulePath)(void* iProcess, wchar_t* oPath, std::uint32_t iSize);
  /// K32GetProcessMemoryInfo of the running process, into a PROCESS_MEMORY_COUNTERS.
  bool (*MemoryCounters)(void* oCounters);
  /// BCryptGenRandom; an NTSTATUS, 0 for success.
  long (*Random)(void* oBuffer, std::uint32_t iSize);
  /// QueryPerformanceCounter.
  bool (*PerformanceCounter)(std::int64_t* oTicks);
  /// QueryPerformanceFrequency.
  bool (*PerformanceFrequency)(std::int64_t* oTicksPerSecond);
  /// GetSystemTimePreciseAsFileTime: units of 100 ns since 1601.
  std::int64_t (*WallTime)();
};

extern ProcessCalls gProcessCalls;

}  // namespace VYX::Os::Windows
