#pragma once

#include <cstddef>

namespace json {

/// Room for the text of any number.
inline constexpr std::size_t kNumberTextSize = 32;

/**
 * Writes a number as the "%.17g" format of the C locale does, on every host: 1 gives "1", 0.1 "0.10000000000000001",
 * 1e17 "1e+17". A not-a-number gives "nan" or "-nan", an infinity "inf" or "-inf".
 *
 * @param oText room for kNumberTextSize characters.
 * @return the end of the text; no zero character is written.
 */
char* WriteNumber(char* oText, double iNumber) noexcept;

}  // namespace json
