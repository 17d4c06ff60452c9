#pragma once

#include <string>
#include <string_view>

namespace VYX::Logging {

/// Appends a text in which nothing ends or disturbs a line: control characters other than the tab, U+2028, U+2029 and
/// bytes of ill-formed UTF-8 become escapes (\n, \r, \x1B, \u2028); all else stays as it is.
void AppendEscapedLine(std::string_view iText, std::string& ioLine);

}  // namespace VYX::Logging
