#pragma once

#include <cstdint>

/**
 * @file
 * Result codes: signed 32-bit values in the HRESULT convention, carried in a `long`.
 *
 * A code is a success when it is zero or positive and a failure when it is negative; test the sign, never equality.
 * Where `long` has 64 bits the codes are sign-extended. The header may stand before or after one that defines the same
 * names as macros.
 *
 * The platform answers failures of the host as 0x8007xxxx with the Windows error number in the lower half, on every
 * host: file not found 2, path not found 3, access denied 5, out of memory 14, disk full 112, already exists 183. Zip
 * archives have codes of their own (KORSysZipFile).
 *
 * ```cpp
 * _KORDeleteFile("no such file") == VYX::ResultCode(0x80070002U);  // true
 * VYX::ResultCode(0x80004005U) == E_FAIL;                          // true
 * ```
 */
namespace VYX {

/// The result code of its unsigned 32-bit spelling.
constexpr long ResultCode(std::uint32_t iCode) noexcept {
  return static_cast<long>(static_cast<std::int32_t>(iCode));
}

}  // namespace VYX

#ifndef S_OK
inline constexpr long S_OK = 0;  ///< success
#endif
#ifndef S_FALSE
inline constexpr long S_FALSE = 1;  ///< success with a negative answer
#endif
#ifndef E_FAIL
inline constexpr long E_FAIL = VYX::ResultCode(0x80004005U);  ///< the general failure
#endif
#ifndef E_INVALIDARG
inline constexpr long E_INVALIDARG = VYX::ResultCode(0x80070057U);  ///< a bad argument, found before any work
#endif
#ifndef E_UNEXPECTED
inline constexpr long E_UNEXPECTED = VYX::ResultCode(0x8000FFFFU);  ///< an opened file whose descriptor is unusable
#endif
