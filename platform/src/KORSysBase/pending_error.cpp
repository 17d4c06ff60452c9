#include "pending_error.h"

#include "KORSysBase/KORError.h"

namespace VYX::Platform {

long LeaveError(const Os::Status& iStatus, std::string_view iAttempt, std::string_view iObject,
                std::string_view iPurpose) {
  return LeaveError(iStatus, iAttempt, iObject, iPurpose, iStatus.Describe());
}

long LeaveError(const Os::Status& iStatus, std::string_view iAttempt, std::string_view iObject,
                std::string_view iPurpose, std::string_view iCause) {
  KORUnicodeString message;
  message.Reserve(iAttempt.size() + iObject.size() + iPurpose.size() + iCause.size() + 6);
  message.Append(iAttempt).Append(" '").Append(iObject).Append("'").Append(iPurpose).Append(": ").Append(iCause);
  return KORError::KORSetLastError(iStatus.ToResultCode(), std::move(message));
}

}  // namespace VYX::Platform
