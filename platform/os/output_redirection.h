#pragma once

#include <string>

#include "platform/os/status.h"

/// The process's standard output and standard error, pointed at a file and back. The caller serialises the calls.
namespace VYX::Os {

/**
 * Points both outputs at a file, which is emptied first and written at its end. What stdio held for them goes to where
 * they pointed before. The file is opened as log files are (OpenMode::WriteLog). On failure both point where they
 * pointed before.
 */
Status RedirectOutputs(const std::string& iPath);

/// Points both outputs where they pointed when the process first redirected them; fine when nothing is redirected.
void RestoreOutputs() noexcept;

}  // namespace VYX::Os
