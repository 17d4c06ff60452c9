#pragma once

#include <string>
#include <string_view>

#include "platform/os/status.h"

namespace VYX::Platform {

/// Leaves the pending error "<iAttempt> '<iObject>'<iPurpose>: <cause>" and answers its code:
/// LeaveError(status, "Cannot open", path, " for reading").
long LeaveError(const Os::Status& iStatus, std::string_view iAttempt, std::string_view iObject,
                std::string_view iPurpose = {});

/// The same with a cause of our own.
long LeaveError(const Os::Status& iStatus, std::string_view iAttempt, std::string_view iObject,
                std::string_view iPurpose, std::string_view iCause);

}  // namespace VYX::Platform
