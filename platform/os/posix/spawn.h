#pragma once

#include <sys/types.h>

#include <string>

#include "platform/os/status.h"

namespace VYX::Os::Posix {

/// Starts a program as told at StartProcess, without remembering it.
Status Spawn(const std::string& iProgram, char* const iArguments[], pid_t& oChild);

}  // namespace VYX::Os::Posix
