#pragma once

#include <string>
#include <string_view>

#include "platform/os/status.h"

namespace VYX::Platform {

/// Why work on an archive failed: a result code, the entry (empty where none is to blame) and the cause. None of it for
/// success.
struct [[nodiscard]] ZipProblem {
  long code = 0;
  std::string entry;
  std::string cause;

  bool IsNone() const noexcept { return code >= 0; }
};

/// The problem of a failed call to the host; none where it succeeded.
inline ZipProblem ToProblem(const Os::Status& iStatus, std::string_view iEntry = {}) {
  return iStatus.IsOk() ? ZipProblem() : ZipProblem{iStatus.ToResultCode(), std::string(iEntry), iStatus.Describe()};
}

}  // namespace VYX::Platform
