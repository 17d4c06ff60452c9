#pragma once

#include <string>
#include <string_view>

#include "platform/os/status.h"

namespace VYX::Os::Windows {

/// Batch files are run by a command interpreter whose reading of arguments no quoting survives, so they are never
/// started. Blanks and dots at the end of a name do not count, as for the host.
bool IsBatchFile(std::wstring_view iPath) noexcept;

/**
 * Finds the file of a program: a path with a separator is taken as it is, a bare name is searched in the absolute
 * folders of PATH, never in the current folder. The extension ".exe" may be left out.
 *
 * @return a failure for a program that is not there, is a folder or is a batch file.
 */
Status FindProgram(const std::string& iProgram, std::wstring& oPath);

}  // namespace VYX::Os::Windows
