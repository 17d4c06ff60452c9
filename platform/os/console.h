#pragma once

#include <string_view>

namespace VYX::Os {

/// Writes the whole text to the process's standard output, unbuffered: what stdio still holds for standard output goes
/// first, so that lines of both kinds keep their order. Short and interrupted writes are completed. A closed or broken
/// output loses the text silently and never ends the process. May be called from any thread.
void WriteConsole(std::string_view iText) noexcept;

/// The same for the process's standard error.
void WriteErrorConsole(std::string_view iText) noexcept;

}  // namespace VYX::Os
