#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

/// Base64 as RFC 4648 section 4 has it, with padding; strict on decoding. Pure functions for any thread.
namespace VYX::Platform {

/// Number of characters that iSize bytes make; nothing when no 64-bit number holds it.
constexpr std::optional<std::uint64_t> Base64EncodedSize(std::uint64_t iSize) noexcept {
  const std::uint64_t groups = iSize / 3 + (iSize % 3 != 0 ? 1 : 0);
  if (groups > UINT64_MAX / 4) {
    return std::nullopt;
  }
  return groups * 4;
}

/// Writes the Base64EncodedSize(iSize) characters of iSize bytes.
void EncodeBase64(const char* iData, std::size_t iSize, char* oText) noexcept;

/// Number of bytes that a well-formed text makes; other texts make no more.
constexpr std::size_t Base64DecodedSize(std::string_view iText) noexcept {
  const std::size_t padding = iText.ends_with("==") ? 2 : iText.ends_with('=') ? 1 : 0;
  return iText.size() / 4 * 3 - (iText.size() % 4 == 0 ? padding : 0);
}

/// What is wrong with a text: the position of the first offending character, and a phrase.
struct Base64Fault {
  std::size_t position;
  const char* reason;
};

/// Writes the Base64DecodedSize(iText) bytes of a text. Any departure from the form is refused: characters outside the
/// alphabet (white space too), padding that is missing, too much or not at the end, unused bits that are not zero. The
/// bytes written are then meaningless.
std::optional<Base64Fault> DecodeBase64(std::string_view iText, char* oData) noexcept;

}  // namespace VYX::Platform
