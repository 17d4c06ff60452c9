#pragma once

#include <string>

#include "KORSysBase/KORError.h"

namespace VYX::Test {

/// The message of the calling thread's pending error of a code, which is then cleared; "(none)" when there is none.
inline std::string TakePendingError(long iCode) {
  KORError* const pending = KORError::KORGetLastError(iCode, nullptr);
  if (pending == nullptr) {
    return "(none)";
  }
  const std::string message(pending->GetMessageText().ToStringView());
  pending->Release();
  KORError::KORCleanLastError();
  return message;
}

}  // namespace VYX::Test
