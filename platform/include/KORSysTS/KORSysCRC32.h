#pragma once

#include <cstddef>
#include <cstdint>

#include "VYXExport.h"

/**
 * @file
 * The checksum of zip archives.
 */

/**
 * The CRC-32 of a range of bytes: the one of zip, gzip and PNG (RFC 1952, section 8: polynomial 0x04C11DB7, reflected,
 * initial and final value all ones). The nine bytes "123456789" give 0xCBF43926; no bytes give 0.
 *
 * ```cpp
 * KORSysCRC32("123456789", 9) == 0xCBF43926;  // true
 * ```
 *
 * It detects accidents, not attacks. Never fails; may be called from any thread.
 *
 * @param iData the bytes; may be null when there are none.
 * @param iSize number of bytes.
 */
VYX_EXPORT std::uint32_t KORSysCRC32(const char* iData, std::size_t iSize) noexcept;
