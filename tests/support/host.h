#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

/// What tests ask of the host by other ways than the library's.
namespace VYX::Test {

/// The number of the running process.
int OwnProcess();

/// The file name of the running program, and its path in the host's own spelling.
std::string OwnProgram();
std::string OwnProgramPath();

/// Sets an environment variable to a UTF-8 text; null takes it away.
void SetVariable(const std::string& iName, const char* iValue);

/// Every entry of the environment as a whole, in the host's order; and how all are taken away.
std::vector<std::string> HostVariables();
void ClearEnvironment();

/// The memory of the running process that is in use, and that of the host, in bytes.
std::int64_t HostMemoryUsage();
std::uint64_t HostMemory();

/// What the host counts in one second by its monotonic clock.
std::uint64_t HostClockFrequency();

/// Closes standard output; makes it a pipe that nobody reads.
void CloseStandardOutput();
void BreakStandardOutput();

/// Runs another program in the place of this one, with its standard streams.
[[noreturn]] void Become(const char* iProgram);

/// The children of a process as the host lists them; on POSIX hosts those among them that have ended and were not heard
/// of.
std::set<int> HostChildrenOf(int iParent);

/// Waits until a process has ended, without hearing of it: its number stays taken where the host does that. Answers its
/// exit code, or on POSIX hosts the signal that ended it as a negative number.
int WaitForEnd(int iProcess);

/// What WaitForEnd answers for a process that the library has ended.
extern const int kCodeOfEnded;

/// Whether a child, or another process, has ended; it is not heard of by that.
bool HasEnded(int iProcess);

/// Ends a process at once.
void EndProcess(int iProcess);

}  // namespace VYX::Test
