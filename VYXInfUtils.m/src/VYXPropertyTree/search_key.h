#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace json {

/// A key as it is searched: its text and the first eight bytes as a big-endian number, which orders as the bytes do.
struct SearchKey {
  explicit SearchKey(std::string_view iText) noexcept : text(iText), prefix(PrefixOf(iText)) {}

  /// The first eight bytes, with zeroes behind a shorter text.
  static std::uint64_t PrefixOf(std::string_view iText) noexcept {
    const char* const bytes = iText.data();
    const std::size_t size = iText.size();
    if (size >= 8) {
      return BigEndian<std::uint64_t>(bytes);
    }
    if (size >= 4) {
      const std::uint64_t first = BigEndian<std::uint32_t>(bytes);
      const std::uint64_t last = BigEndian<std::uint32_t>(bytes + size - 4);
      return first << 32 | last << (64 - 8 * size);
    }
    std::uint64_t prefix = 0;
    for (std::size_t index = 0; index < size; ++index) {
      prefix |= std::uint64_t{static_cast<unsigned char>(bytes[index])} << (56 - 8 * index);
    }
    return prefix;
  }

  std::string_view text;
  std::uint64_t prefix;

 private:
  template <class Number>
  static std::uint64_t BigEndian(const char* iBytes) noexcept {
    Number number = 0;
    std::memcpy(&number, iBytes, sizeof number);
    if constexpr (std::endian::native == std::endian::little) {
      Number swapped = 0;
      for (std::size_t byte = 0; byte < sizeof number; ++byte) {
        swapped = static_cast<Number>(swapped << 8 | ((number >> (8 * byte)) & 0xFF));
      }
      return swapped;
    }
    return number;
  }
};

}  // namespace json
