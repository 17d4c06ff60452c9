#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/**
 * Escaping for a string literal of JavaScript or JSON, between double quotes: backslash, double quote, backspace, form
 * feed, line feed, carriage return and tab become a backslash and one character. All else stays as it is: the
 * apostrophe, the other control characters, and every byte outside ASCII.
 *
 * Pure functions of their arguments, for any thread.
 */
namespace VYX::Internal {

/// The position of the first character at or after iFrom that is escaped; the text's size when there is none.
std::size_t FindEscapedForJS(std::string_view iText, std::size_t iFrom = 0) noexcept;

/// Appends the escaped text.
void AppendEscapedForJS(std::string& ioOut, std::string_view iText);

}  // namespace VYX::Internal
