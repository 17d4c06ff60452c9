#include "VYXInfStringUtil.h"

#include <cstddef>
#include <cstdint>

#include "internal/FailureTrace.h"

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::LogUnlessFiltered;

bool VYXInfStringUtil::ConvertToUTF8(const KORUnicodeString& iText, char** oBuffer, std::uint64_t* oSize) {
  std::size_t size = 0;
  iText.ConvertToUTF8(nullptr, &size);
  if (oBuffer == nullptr || oSize == nullptr) {
    LogUnlessFiltered(DEBUG, "invalid output params");
    return false;
  }
  return CatchAtBoundary(VYX_HERE, false, [&iText, oBuffer, oSize, size] {
    char* const buffer = QB::allocateArrayChar(size + 1);
    iText.ConvertToUTF8(buffer, nullptr);
    buffer[size] = '\0';
    *oBuffer = buffer;
    *oSize = size;
    const std::uint64_t limit = 4 * *oSize + 1;
    if (*oSize == 0) {
      LogUnlessFiltered(WARN, "ConvertToUTF8 returned ZERO bytes. Original string is: \n", iText);
    } else if (*oSize >= limit) {
      LogUnlessFiltered(ERROR, "ConvertToUTF8 returned ", *oSize, "B, OVER THE allocated limit of ", limit,
                        "B.   Original string is: \n", iText);
    }
    return true;
  });
}

bool VYXInfStringUtil::ConvertToUTF8(const KORUnicodeString& iText, QB::Binary* oBinary) {
  if (oBinary == nullptr) {
    return false;
  }
  return CatchAtBoundary(VYX_HERE, false, [&iText, oBinary] {
    char* buffer = nullptr;
    std::uint64_t size = 0;
    const bool isConverted = ConvertToUTF8(iText, &buffer, &size);
    *oBinary = QB::Binary(buffer, size, &QB::deallocateArrayChar);
    const std::uint64_t copied = oBinary->GetSize();
    if (copied != size) {
      LogUnlessFiltered(WARN, "ConvertToUTF8 copied ", copied, "B, out of the requested ", size, "B.  ",
                        "(original Unicode chars ", iText.GetLengthInByte(), ") ");
    }
    return copied == size && isConverted;
  });
}

KORUnicodeString VYXInfStringUtil::From(const KORString& iText) {
  return KORUnicodeString(iText.ToStringView());
}
