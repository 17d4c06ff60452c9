#include "VYXInfStringUtil.h"

#include <cstdint>

KORUnicodeString VYXInfStringUtil::Crop(const KORUnicodeString& iText, std::uint64_t iMaxLength) {
  const int length = iText.GetLengthInChar();
  return static_cast<std::uint64_t>(length) <= iMaxLength ? iText : iText.SubString(0, static_cast<int>(iMaxLength));
}

KORUnicodeString VYXInfStringUtil::SubString(const KORUnicodeString& iText, std::int32_t iStart, std::int32_t iCount) {
  const int length = iText.GetLengthInChar();
  if (iStart < 0 || length <= iStart || iCount == 0) {
    return {};
  }
  return iText.SubString(iStart, iCount < 0 ? length - iStart : iCount);
}
