#pragma once

#include <cstddef>
#include <cstdint>

/// The contract for the library that computes checksums.
namespace VYX::Adapters {

/// Continues a CRC-32 (the reflected one of polynomial 0x04C11DB7 that zip and gzip use) over iSize bytes; 0 starts
/// one. No failure; any thread.
std::uint32_t Crc32(std::uint32_t iCrc, const char* iData, std::size_t iSize) noexcept;

}  // namespace VYX::Adapters
