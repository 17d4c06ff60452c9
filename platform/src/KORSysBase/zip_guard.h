#pragma once

#include <new>
#include <string>
#include <string_view>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORResult.h"
#include "platform/os/status.h"
#include "zip_problem.h"

namespace VYX::Platform {

/// Leaves the pending error of a problem and answers its code: "Cannot <iVerb> '<entry>' <iPreposition> the archive
/// '<iArchive>': <cause>", without the entry where there is none.
inline long LeaveZipError(const ZipProblem& iProblem, std::string_view iVerb, std::string_view iPreposition,
                          const KORUnicodeString& iArchive) {
  KORUnicodeString message("Cannot ");
  message.Append(iVerb);
  if (!iProblem.entry.empty()) {
    message.Append(" '").Append(std::string_view(iProblem.entry)).Append("' ").Append(iPreposition);
  }
  message.Append(" the archive '").Append(iArchive).Append("': ").Append(std::string_view(iProblem.cause));
  return KORError::KORSetLastError(iProblem.code, std::move(message));
}

/// Runs work on an archive that answers a problem, and turns that into the pending error. A lack of memory is one.
template <typename Work>
long RunZipWork(std::string_view iVerb, std::string_view iPreposition, const KORUnicodeString& iArchive,
                Work&& iWork) noexcept {
  const long noMemory = Os::Failure::OutOfMemory().ToResultCode();
  try {
    ZipProblem problem;
    try {
      problem = iWork();
    } catch (const std::bad_alloc&) {
      problem = {noMemory, {}, "not enough memory"};
    }
    return problem.IsNone() ? S_OK : LeaveZipError(problem, iVerb, iPreposition, iArchive);
  } catch (const std::bad_alloc&) {
    return KORError::KORSetLastError(noMemory, KORUnicodeString());
  }
}

inline ZipProblem WrongArgument(std::string_view iCause) {
  return {E_INVALIDARG, {}, std::string(iCause)};
}

}  // namespace VYX::Platform
