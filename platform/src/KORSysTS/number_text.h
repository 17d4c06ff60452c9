#pragma once

#include <string>

namespace VYX::Platform {

/// Writes a number as printf does in the "C" locale, with a format that holds exactly one conversion of e, f, g or a.
/// False for any other format.
bool FormatNumber(double iNumber, const char* iFormat, std::string& oText);

}  // namespace VYX::Platform
