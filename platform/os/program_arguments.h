#pragma once

#include <string>
#include <vector>

namespace VYX::Os {

/// The arguments that the running program was started with, the program's own name first: those of main, or, where the
/// host keeps them as wide text and main gets them in a code page, the wide ones as UTF-8.
std::vector<std::string> ProgramArguments(int iCount, const char* const* iArguments);

}  // namespace VYX::Os
