#pragma once

#include <cstdint>
#include <set>
#include <string>

/// What tests ask of the host by other ways than the library's.
namespace VYX::Test {

/// The number of the running process.
int OwnProcess();

/// The file name of the running program.
std::string OwnProgram();

/// Sets an environment variable to a UTF-8 text; null takes it away.
void SetVariable(const std::string& iName, const char* iValue);

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
