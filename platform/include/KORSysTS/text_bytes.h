#pragma once

#include <cstddef>
#include <string_view>

#include "VYXExport.h"

/**
 * For work on the bytes of a text (KORUnicodeString::ToStringView) instead of its characters one by one: offsets count
 * bytes, and nothing here cuts a character in two.
 *
 * A character is a well-formed UTF-8 sequence (Unicode Standard, chapter 3, table 3-7) or one byte that belongs to
 * none.
 *
 * ```cpp
 * VYX::Text::Find("key=value", "=");          // 3
 * VYX::Text::CharacterLength("\xC3\xA9t", 0);  // 2
 * ```
 *
 * Nothing fails; all of it may be called from any thread.
 */
namespace VYX::Text {

/// Number of bytes of the character at an offset below the size of the text, 1 to 4.
VYX_EXPORT std::size_t CharacterLength(std::string_view iText, std::size_t iOffset) noexcept;

/// True when a character begins at the offset; the end of the text counts as one.
VYX_EXPORT bool IsCharacterBoundary(std::string_view iText, std::size_t iOffset) noexcept;

/// True when the text is UTF-8 throughout, without a byte that belongs to no sequence.
VYX_EXPORT bool IsWellFormed(std::string_view iText) noexcept;

/// Offset of the first occurrence of iWhat at or after iFrom that covers whole characters, in linear time; npos when
/// there is none, when iWhat is empty, and when iFrom is beyond the end.
VYX_EXPORT std::size_t Find(std::string_view iText, std::string_view iWhat, std::size_t iFrom = 0) noexcept;

}  // namespace VYX::Text
