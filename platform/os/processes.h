#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/os/status.h"

/**
 * Other processes: starting, listing, ending. May be called from any thread.
 *
 * A child that nobody waits for is remembered until it has ended, and heard of at a later call of this contract, so
 * that none stays behind as a dead entry of the host's list. No thread and no signal handler is needed for that, and
 * children that the program started by other means are left alone.
 */
namespace VYX::Os {

/// The host's number of a process.
using ProcessId = std::int32_t;

/// A process of a listing.
struct ProcessEntry {
  ProcessId id = 0;
  std::string name;  ///< the program's file name without folder
};

/// The priority classes of a process, from the most urgent.
enum class ProcessClass : std::int32_t { High, AboveNormal, Normal, BelowNormal, Idle };

/// How a child came to its end: its exit code, or on POSIX hosts the signal that ended it as a negative number.
using ExitCode = std::int32_t;

/**
 * Starts a program as a child. It inherits the environment, the current folder and the three standard streams, but no
 * other descriptor and no blocked signal. What the calling program printed so far is written out before.
 *
 * @param iProgram the program's path; one without a separator is searched in the absolute folders of PATH, never in the
 * current folder.
 * @param iArguments null-terminated; handed over byte for byte, the first being the program's own name.
 * @param iIsWaitedFor true when WaitForProcess will be called for it.
 * @param oId the child's number, until the call that finds it ended.
 * @return the failure also where the program cannot be run: missing, not executable, of an unknown format, ... A host
 * whose programs take their arguments apart themselves gets them so that the C run-time's rules give back the same
 * texts; there a text that is no UTF-8 is a failure, and so is a batch file, whose interpreter keeps to no such rules.
 */
Status StartProcess(const std::string& iProgram, char* const iArguments[], bool iIsWaitedFor, ProcessId& oId);

/// Waits for the end of a child that was started for it. The failure ECHILD where the calling program has its children
/// heard of by other means, and so the code is lost.
Status WaitForProcess(ProcessId iChild, ExitCode& oExitCode);

/// The parent of a running process; 0 for one without. A process that is gone or has ended is a failure.
Status FindParent(ProcessId iProcess, ProcessId& oParent);

/// The running children of a process, in the order in which the host lists them, or of their numbers where it has none.
/// On failure oChildren is untouched.
Status ListChildren(ProcessId iParent, std::vector<ProcessEntry>& oChildren);

/// The program file of a running process, which takes the right to look into it.
Status ProgramPath(ProcessId iProcess, std::string& oPath);

/// Ends a process at once. A process that has ended already is a failure.
Status EndProcess(ProcessId iProcess);

/**
 * Ends a process at once and returns when it has ended; also right for one that had ended before.
 *
 * The number may have passed to another process since the caller learnt of it: only the parent of the calling process,
 * or a process that is no younger than the calling process, is ended. A younger one took over the number of one that is
 * gone, and is left alone, which is a success.
 */
Status EndOlderProcess(ProcessId iProcess);

/// Gives all threads of the running process a priority class. What the process is not allowed is a failure; some
/// threads may have theirs then.
Status SetProcessClass(ProcessClass iClass);

}  // namespace VYX::Os
