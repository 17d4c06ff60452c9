#pragma once

#include <cstdint>
#include <string>

#include "platform/os/status.h"
#include "platform/os/windows/handle.h"

namespace VYX::Os::Windows {

/// Starts a program as told at StartProcess; answers the child's handle and number.
Status Spawn(const std::string& iProgram, char* const iArguments[], Handle& oChild, std::uint32_t& oId);

}  // namespace VYX::Os::Windows
