#pragma once

#include <cstdint>
#include <memory>

#include "VYXExport.h"

/**
 * @file
 * Digests: MD5, SHA-1, SHA-256, SHA-512.
 */

/**
 * The state of a digest computation, for QRMSysHash_Init, QRMSysHash_Update and QRMSysHash_Final:
 *
 * ```cpp
 * QRMSysHashContext context;
 * char* digest = nullptr;
 * std::uint64_t size = 0;
 * if (QRMSysHash_Init(2, context) >= 0 && QRMSysHash_Update(context, "abc", 3) >= 0 &&
 *     QRMSysHash_Final(context, digest, size) >= 0) {
 *   const QB::Binary owner(digest, size, &QB::deallocateArrayChar);
 *   owner.GetSize();  // 32
 * }
 * ```
 *
 * A context may compute one digest after another, which saves making it anew. One context belongs to one thread at a
 * time; distinct ones are independent.
 */
class VYX_EXPORT QRMSysHashContext {
 public:
  /// A context without a computation.
  QRMSysHashContext() noexcept;
  /// @{
  /// Takes a computation over; the other context has none afterwards.
  QRMSysHashContext(QRMSysHashContext&& ioOther) noexcept;
  QRMSysHashContext& operator=(QRMSysHashContext&& ioOther) noexcept;
  /// @}
  ~QRMSysHashContext();

 private:
  struct State;
  friend VYX_EXPORT long QRMSysHash_Init(std::uint32_t iAlgorithm, QRMSysHashContext& ioContext) noexcept;
  friend VYX_EXPORT long QRMSysHash_Update(QRMSysHashContext& ioContext, const char* iData,
                                           std::uint64_t iCount) noexcept;
  friend VYX_EXPORT long QRMSysHash_Final(QRMSysHashContext& ioContext, char*& oDigest, std::uint64_t& oSize) noexcept;

  std::unique_ptr<State> _state;
};

/**
 * Begins a digest; an unfinished one of this context is given up.
 *
 * @param iAlgorithm 0 MD5 (RFC 1321, 16 bytes), 1 SHA-1 (FIPS 180-4, 20 bytes), 2 SHA-256 (FIPS 180-4, 32 bytes), 3
 * SHA-512 (FIPS 180-4, 64 bytes). The numbering never changes. MD5 and SHA-1 no longer withstand attacks: take them for
 * identification only.
 * @param ioContext computes the digest.
 * @return S_OK; E_INVALIDARG for any other number, and the context stays as it is; E_FAIL when the cryptographic
 * library does not offer the algorithm. A failure leaves a pending error.
 */
VYX_EXPORT long QRMSysHash_Init(std::uint32_t iAlgorithm, QRMSysHashContext& ioContext) noexcept;

/**
 * Takes bytes in, as often as wanted; how they are divided makes no difference.
 *
 * @param ioContext a context with a digest that was begun.
 * @param iData the bytes; may be null when there are none.
 * @param iCount number of bytes.
 * @return S_OK; E_INVALIDARG for null iData with a count; E_FAIL when no digest was begun, or the cryptographic library
 * fails. A failure leaves a pending error.
 */
VYX_EXPORT long QRMSysHash_Update(QRMSysHashContext& ioContext, const char* iData, std::uint64_t iCount) noexcept;

/**
 * Ends the digest; QRMSysHash_Init begins the next.
 *
 * @param ioContext a context with a digest that was begun.
 * @param oDigest receives a new array, to be freed with QB::deallocateArrayChar; untouched on failure.
 * @param oSize receives the number of its bytes; untouched on failure.
 * @return S_OK; E_FAIL when no digest was begun, or the cryptographic library fails; 0x8007000E when there is no
 * memory. A failure leaves a pending error.
 */
VYX_EXPORT long QRMSysHash_Final(QRMSysHashContext& ioContext, char*& oDigest, std::uint64_t& oSize) noexcept;
