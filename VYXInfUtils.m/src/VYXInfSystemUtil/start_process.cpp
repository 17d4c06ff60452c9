#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORProcess.h"
#include "VYXInfStringUtil.h"
#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::FailureReturn;
using VYX::Internal::IsFiltered;
using VYX::Internal::LogPendingError;
using VYX::Internal::LogUnlessFiltered;

namespace {

constexpr const char* kHelperName = "VYXInfParentProcessKiller.exe";

// Zero-terminated copies of the executable and the arguments, as a program's start takes them.
class ArgumentVector {
 public:
  ArgumentVector(const KORUnicodeString& iExecutable, const KORListValKORUnicodeString& iArguments) {
    _texts.reserve(static_cast<std::size_t>(iArguments.Size()) + 1);
    _texts.push_back(iExecutable.ConvertToChar());
    for (const KORUnicodeString& argument : iArguments) {
      _texts.push_back(argument.ConvertToChar());
    }
    _pointers.reserve(_texts.size() + 1);
    for (std::string& text : _texts) {
      _pointers.push_back(text.data());
    }
    _pointers.push_back(nullptr);
  }

  // A zero byte would cut what follows it.
  bool HasZeroByte() const {
    return std::any_of(_texts.begin(), _texts.end(),
                       [](const std::string& iText) { return iText.find('\0') != std::string::npos; });
  }

  char** Get() noexcept { return _pointers.data(); }

 private:
  std::vector<std::string> _texts;
  std::vector<char*> _pointers;
};

KORLibStatus Start(ArgumentVector& ioArguments, bool iWait, int* oPid, int* oExitCode) {
  if (ioArguments.HasZeroByte()) {
    KORError::KORSetLastError(
        E_INVALIDARG, KORUnicodeString("Cannot start '") + ioArguments.Get()[0] + "': a text holds a zero byte");
    return KORLibNotStarted;
  }
  return KORStartProcess(ioArguments.Get()[0], ioArguments.Get(), iWait, oPid, oExitCode);
}

const char* ToState(KORLibStatus iStatus, bool iWait) noexcept {
  if (iStatus != KORLibSuccess) {
    return "START FAILED";
  }
  return iWait ? "FINISHED" : "STARTED";
}

}  // namespace

KORLibStatus VYXInfSystemUtil::StartProcess(const KORUnicodeString& iExecutable,
                                            const KORListValKORUnicodeString& iArguments, bool iWait, int* oPid,
                                            int* oExitCode) {
  return CatchAtBoundary(VYX_HERE, KORLibNotStarted, [&]() -> KORLibStatus {
    ArgumentVector arguments(iExecutable, iArguments);
    if (!IsFiltered(DEBUG)) {
      LogUnlessFiltered(DEBUG, "STARTING ", iWait ? "and WAITING for " : "", "child process:     ", iExecutable, " ",
                        VYXInfStringUtil::Join(iArguments, " "));
    }
    const KORLibStatus status = Start(arguments, iWait, oPid, oExitCode);
    LogUnlessFiltered(DEBUG, "child process  [", ToState(status, iWait), "]  ", "(PID ", *oPid, ")   ", "(exit status ",
                      *oExitCode, ")   ");
    if (status != KORLibSuccess) {
      LogPendingError(E_FAIL);
      return FailureReturn(VYX_HERE, status);
    }
    return status;
  });
}

long VYXInfSystemUtil::KillProcessFromChild(int iPid) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    KORUnicodeString folder;
    if (const long code = GetExecutablePath(folder); code < 0) {
      return FailureReturn(VYX_HERE, LogPendingError(code));
    }
    KORListValKORUnicodeString arguments;
    arguments.Append("-wait");
    arguments.Append(KORUnicodeString(std::to_string(iPid)));
    int helperPid = 0;
    int exitCode = 0;
    const KORLibStatus status =
        StartProcess(ConcatenateAsPath({folder, kHelperName}), arguments, false, &helperPid, &exitCode);
    return status == KORLibNotStarted ? FailureReturn(VYX_HERE, E_FAIL) : S_OK;
  });
}
