#pragma once

#include <string>

#include "platform/os/status.h"

namespace VYX::Os::Windows {

/// The program file of a process that was opened with the rights to query it and to read its memory.
Status ModulePath(void* iProcess, std::string& oPath);

}  // namespace VYX::Os::Windows
