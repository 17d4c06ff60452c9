#pragma once

#include <cstddef>

/**
 * The contract for the vectorised part of Base64 (RFC 4648, section 4): whole blocks of input only. What is left over,
 * and everything that is irregular, is the caller's; answering 0 always is a correct implementation.
 *
 * No failures; any thread.
 */
namespace VYX::Adapters {

/// Encodes as many leading bytes of iData as fill whole blocks, a multiple of three, and answers their number. Writes
/// four characters to oText for each three bytes, and nothing behind them.
std::size_t EncodeBase64Blocks(const char* iData, std::size_t iSize, char* oText) noexcept;

/// Decodes as many leading characters of iText as fill whole blocks, a multiple of four, and answers their number;
/// stops before a block with a character outside the alphabet ('=' is outside). Writes three bytes to oData for each
/// four characters, and nothing behind them.
std::size_t DecodeBase64Blocks(const char* iText, std::size_t iSize, char* oData) noexcept;

}  // namespace VYX::Adapters
