#pragma once

#include <cstddef>
#include <string_view>

namespace VYX::Platform {

// Searches for bytes in time proportional to the text, whatever text and needle are, without allocating.

/// Offset of the first occurrence of a needle that is not empty at or after iFrom; npos when there is none.
std::size_t FindFirst(std::string_view iText, std::string_view iNeedle, std::size_t iFrom) noexcept;

/// Offset of the last occurrence of a needle that is not empty; npos when there is none.
std::size_t FindLast(std::string_view iText, std::string_view iNeedle) noexcept;

}  // namespace VYX::Platform
