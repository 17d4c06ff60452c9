#pragma once

#include <string_view>

namespace VYX::Fuzz {

/// Ends the process with a report when a rule does not hold: that makes the input a find.
void Require(bool iIsMet, const char* iRule);

/// The same for two texts that have to be equal, which are shown.
void RequireEqual(std::string_view iActual, std::string_view iExpected, const char* iRule);

}  // namespace VYX::Fuzz
