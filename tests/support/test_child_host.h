#pragma once

/// What the test's child program does in each host's own way.
namespace VYX::Test {

/// Makes standard output take bytes as they are.
void MakeOutputBinary();

/// Waits until somebody ends the process.
[[noreturn]] void WaitForTheEnd();

/// Ends the process as a fault of that number would.
void RaiseFault(int iNumber);

/// Prints what the process has inherited besides the standard streams: on POSIX hosts the numbers of all descriptors
/// beyond them, on Windows the path of the file behind the handle of a number, if there is one.
int TellInherited(long long iHandle);

/// Prints whether SIGTERM is blocked, and whether SIGPIPE is ignored; nothing where there are no signals.
int TellSignals();

}  // namespace VYX::Test
