#pragma once

#include <cstdint>

#include "KORSysBase/KORListValKORUnicodeString.h"
#include "VYXExport.h"

/**
 * @file
 * Starting programs. VYXInfSystemUtil::StartProcess is the form with lists and traces.
 */

/// The status of a platform function that starts something; 0 is success, anything else a failure.
enum KORLibStatus : std::int32_t {
  KORLibNotStarted = -1,  ///< nothing was started
  KORLibSuccess = 0,      ///< what was asked for is done
  KORLibEndUnknown = 1    ///< it was started and has ended, but how is not known
};

/**
 * Starts a program as a child process.
 *
 * The child gets the arguments byte for byte, the environment, the current folder and the standard streams, and no
 * other descriptor. What the calling program printed through the C library is written out before. No shell is involved.
 * On Windows the arguments reach a program that takes them from the C run-time as they are, whatever they hold; batch
 * files and texts that are no UTF-8 cannot be passed on faithfully and are refused.
 * A child that is not waited for is never left behind as a dead entry of the host's process list: later calls hear of
 * its end. Until one of them does its number stays its own. May be called from any thread.
 *
 * @param iExecutable the program's path in either spelling; a bare name is searched in the folders of PATH that are
 * absolute, never in the current folder.
 * @param iArguments the arguments with the program's name as the first and null behind the last.
 * @param iWait true to return after the child has ended.
 * @param oPid receives the child's process id; may be null.
 * @param oExitCode receives, when waiting, the exit code, or on POSIX hosts the signal that ended the child as a
 * negative number (-9); may be null.
 * @return KORLibSuccess; KORLibNotStarted for a program that cannot be run, with every output untouched;
 * KORLibEndUnknown, with oPid written, where the calling program ignores the end of its children or hears of it by
 * other means. Failures leave a pending error.
 */
VYX_EXPORT KORLibStatus KORStartProcess(const char* iExecutable, char** iArguments, bool iWait, int* oPid,
                                        int* oExitCode);

/**
 * The arguments of the running program as texts, its own name first.
 *
 * On Windows main gets them in a code page that cannot hold every character; there they are taken from the host, as
 * the program was started, and what main got is not looked at. Called from main, before its arguments are changed:
 *
 *     int main(int iCount, char** iArguments) {
 *       const KORListValKORUnicodeString arguments = KORGetProgramArguments(iCount, iArguments);
 *
 * @param iCount, iArguments what main got.
 */
VYX_EXPORT KORListValKORUnicodeString KORGetProgramArguments(int iCount, const char* const* iArguments);
