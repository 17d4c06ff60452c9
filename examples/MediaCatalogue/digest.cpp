#include "digest.h"

#include <string>
#include <string_view>

#include "Quillbase/Binary.h"

namespace MediaCatalogue {

namespace {

constexpr std::uint32_t kSha256 = 2;

std::string HexOf(std::string_view iBytes) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  text.reserve(iBytes.size() * 2);
  for (const char byte : iBytes) {
    const auto value = static_cast<unsigned char>(byte);
    text += kDigits[value >> 4];
    text += kDigits[value & 15];
  }
  return text;
}

}  // namespace

Sha256::Sha256() : _isGood(QRMSysHash_Init(kSha256, _context) >= 0) {}

void Sha256::Add(const char* iData, std::uint64_t iSize) {
  _isGood = _isGood && QRMSysHash_Update(_context, iData, iSize) >= 0;
}

bool Sha256::Finish(KORUnicodeString& oDigits) {
  char* bytes = nullptr;
  std::uint64_t size = 0;
  if (!_isGood || QRMSysHash_Final(_context, bytes, size) < 0) {
    return false;
  }
  const QB::Binary owner(bytes, size, &QB::deallocateArrayChar);
  oDigits = HexOf({bytes, size});
  return true;
}

bool Sha256Of(const char* iData, std::uint64_t iSize, KORUnicodeString& oDigits) {
  Sha256 digest;
  digest.Add(iData, iSize);
  return digest.Finish(oDigits);
}

KORUnicodeString Crc32Digits(std::uint32_t iCrc) {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) {
    bytes += static_cast<char>(iCrc >> shift & 0xFF);
  }
  return KORUnicodeString(HexOf(bytes));
}

}  // namespace MediaCatalogue
