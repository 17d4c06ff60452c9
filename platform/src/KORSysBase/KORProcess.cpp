#include "KORSysBase/KORProcess.h"

#include <string>
#include <string_view>

#include "pending_error.h"
#include "platform/os/native_path.h"
#include "platform/os/processes.h"
#include "platform/os/program_arguments.h"

namespace {

namespace Os = VYX::Os;
using VYX::Platform::LeaveError;

Os::Status Start(const char* iExecutable, char** iArguments, bool iWait, Os::ProcessId& oChild) {
  if (*iExecutable == '\0' || iArguments == nullptr || *iArguments == nullptr) {
    return Os::Failure::InvalidParameter();
  }
  std::string program;
  const Os::Status status = Os::ToNativePath(iExecutable, program);
  return status.IsOk() ? Os::StartProcess(program, iArguments, iWait, oChild) : status;
}

}  // namespace

KORLibStatus KORStartProcess(const char* iExecutable, char** iArguments, bool iWait, int* oPid, int* oExitCode) {
  const char* const executable = iExecutable == nullptr ? "" : iExecutable;
  Os::ProcessId child = 0;
  if (const Os::Status status = Start(executable, iArguments, iWait, child); !status.IsOk()) {
    LeaveError(status, "Cannot start", executable);
    return KORLibNotStarted;
  }
  if (oPid != nullptr) {
    *oPid = child;
  }
  if (!iWait) {
    return KORLibSuccess;
  }
  Os::ExitCode exitCode = 0;
  if (const Os::Status status = Os::WaitForProcess(child, exitCode); !status.IsOk()) {
    LeaveError(status, "Cannot learn how", executable, " ended");
    return KORLibEndUnknown;
  }
  if (oExitCode != nullptr) {
    *oExitCode = exitCode;
  }
  return KORLibSuccess;
}

KORListValKORUnicodeString KORGetProgramArguments(int iCount, const char* const* iArguments) {
  KORListValKORUnicodeString arguments;
  for (const std::string& text : Os::ProgramArguments(iCount, iArguments)) {
    arguments.Append(KORUnicodeString(std::string_view(text)));
  }
  return arguments;
}
