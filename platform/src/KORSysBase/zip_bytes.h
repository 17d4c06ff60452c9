#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace VYX::Platform {

/// Reads the little-endian numbers of an archive. Whoever asks has made sure that the bytes are there.
class ZipBytes {
 public:
  explicit ZipBytes(std::string_view iBytes) noexcept : _bytes(iBytes) {}

  std::uint16_t Get16(std::size_t iOffset) const noexcept { return static_cast<std::uint16_t>(Get(iOffset, 2)); }
  std::uint32_t Get32(std::size_t iOffset) const noexcept { return static_cast<std::uint32_t>(Get(iOffset, 4)); }
  std::uint64_t Get64(std::size_t iOffset) const noexcept { return Get(iOffset, 8); }

 private:
  std::uint64_t Get(std::size_t iOffset, std::size_t iCount) const noexcept {
    std::uint64_t value = 0;
    for (std::size_t byte = iCount; byte > 0; --byte) {
      value = value << 8U | static_cast<unsigned char>(_bytes[iOffset + byte - 1]);
    }
    return value;
  }

  std::string_view _bytes;
};

}  // namespace VYX::Platform
