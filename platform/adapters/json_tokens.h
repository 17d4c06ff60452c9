#pragma once

#include <cstddef>
#include <string_view>

/// The tokens of JSON that need more than a comparison: numbers and the pieces of strings.
namespace VYX::Adapters {

/// A number token: its end, and the reason where it is none (then the end is the offending place).
struct JsonNumberToken {
  std::size_t end = 0;
  bool isInteger = false;
  std::string_view reason;
};

/// Reads the number that starts at iBegin with a minus sign or a digit.
JsonNumberToken ScanJsonNumber(std::string_view iText, std::size_t iBegin) noexcept;

/// The nearest double of a well-formed number token; false when it is beyond the range. Too close to zero is zero.
bool ConvertJsonNumber(std::string_view iToken, double& oNumber) noexcept;

/// True for an integer token that fits a signed or an unsigned 64-bit integer.
bool FitsIn64Bits(std::string_view iToken) noexcept;

/// The length of the well-formed UTF-8 sequence at a place (Unicode, table 3-7), or 0.
std::size_t Utf8SequenceLength(std::string_view iText, std::size_t iBegin) noexcept;

/// The length of the escape at a place, which holds a backslash: 2, 6 or, for a surrogate pair, 12. 0 with a reason
/// when it is none.
std::size_t ScanJsonEscape(std::string_view iText, std::size_t iBegin, std::string_view& oReason) noexcept;

}  // namespace VYX::Adapters
