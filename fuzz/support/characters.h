#pragma once

#include <string>
#include <string_view>

namespace VYX::Fuzz {

/// The plain model of a text: its characters in a row. A byte of ill-formed UTF-8 stands in it as kFirstByte plus its
/// value, behind the last code point.
inline constexpr char32_t kFirstByte = 0x110000;

/// Decodes bytes step by step: what encodes back to the same bytes is a character, anything else a byte of its own.
std::u32string Characters(std::string_view iBytes);

/// The bytes of characters.
std::string Encoded(std::u32string_view iCharacters);

/// True when no byte of ill-formed UTF-8 stands among the characters.
bool AreWellFormed(std::u32string_view iCharacters);

}  // namespace VYX::Fuzz
