#pragma once

namespace VYX::Adapters {

// Unicode's simple case mappings, one code point to one; a code point without a mapping yields itself. Valid for every
// value, also for those that are no code points. Safe from any thread.

/// Simple_Lowercase_Mapping of UnicodeData.txt.
char32_t LowerCase(char32_t iCodePoint) noexcept;

/// Simple_Uppercase_Mapping of UnicodeData.txt.
char32_t UpperCase(char32_t iCodePoint) noexcept;

/// Simple case folding: the lines of status C and S of CaseFolding.txt.
char32_t FoldCase(char32_t iCodePoint) noexcept;

}  // namespace VYX::Adapters
