#pragma once

#include <cstdint>

#include "KORSysTS/KORUnicodeString.h"
#include "KORSysTS/QRMSysHash.h"

namespace MediaCatalogue {

/// The SHA-256 of bytes that come in pieces.
class Sha256 {
 public:
  Sha256();

  /// Takes the next bytes in.
  void Add(const char* iData, std::uint64_t iSize);

  /// Ends the digest: 64 hexadecimal digits. False where the platform could not compute it, and left a pending error.
  bool Finish(KORUnicodeString& oDigits);

 private:
  QRMSysHashContext _context;
  bool _isGood;
};

/// The SHA-256 of bytes, as Sha256::Finish answers it.
bool Sha256Of(const char* iData, std::uint64_t iSize, KORUnicodeString& oDigits);

/// A CRC-32 as eight hexadecimal digits.
KORUnicodeString Crc32Digits(std::uint32_t iCrc);

}  // namespace MediaCatalogue
