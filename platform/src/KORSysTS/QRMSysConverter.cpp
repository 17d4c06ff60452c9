#include "KORSysTS/QRMSysConverter.h"

#include <cstddef>
#include <cstdlib>
#include <new>
#include <optional>

#include "KORSysBase/KORResult.h"
#include "base64.h"
#include "pending_error.h"

using VYX::Platform::Decimal;
using VYX::Platform::FailWith;

namespace {

constexpr long kOutOfMemory = VYX::ResultCode(0x8007000EU);

// Room for the characters and the zero behind them; null when there is none.
char* AllocateText(std::uint64_t iSize) noexcept {
  const std::optional<std::uint64_t> size = VYX::Platform::Base64EncodedSize(iSize);
  if (!size || *size >= static_cast<std::uint64_t>(PTRDIFF_MAX)) {
    return nullptr;
  }
  return static_cast<char*>(std::malloc(static_cast<std::size_t>(*size) + 1));
}

}  // namespace

long QRMSysConverter::ConvertToBase64(const char* iData, std::uint64_t iSize, char** oText) noexcept {
  if (oText == nullptr) {
    return FailWith(E_INVALIDARG, {"Cannot encode as Base64: no place for the text"});
  }
  if (iData == nullptr && iSize != 0) {
    return FailWith(E_INVALIDARG, {"Cannot encode as Base64: no data for a size of ", Decimal(iSize), " bytes"});
  }
  char* const text = AllocateText(iSize);
  if (text == nullptr) {
    return FailWith(kOutOfMemory, {"Cannot encode ", Decimal(iSize), " bytes as Base64: not enough memory"});
  }
  const auto size = static_cast<std::size_t>(iSize);
  VYX::Platform::EncodeBase64(iData, size, text);
  text[*VYX::Platform::Base64EncodedSize(size)] = '\0';
  *oText = text;
  return S_OK;
}

long QRMSysConverter::ConvertFromBase64(const char* iText, char** oBuffer, std::uint64_t* oSize) noexcept {
  if (iText == nullptr) {
    return FailWith(E_INVALIDARG, {"Cannot decode Base64: no text"});
  }
  return ConvertFromBase64(std::string_view(iText), oBuffer, oSize);
}

long QRMSysConverter::ConvertFromBase64(std::string_view iText, char** oBuffer, std::uint64_t* oSize) noexcept {
  if (oBuffer == nullptr || oSize == nullptr) {
    return FailWith(E_INVALIDARG, {"Cannot decode Base64: no place for the bytes or their number"});
  }
  const std::size_t size = VYX::Platform::Base64DecodedSize(iText);
  char* const buffer = new (std::nothrow) char[size];
  if (buffer == nullptr) {
    return FailWith(kOutOfMemory, {"Cannot decode Base64 to ", Decimal(size), " bytes: not enough memory"});
  }
  if (const auto fault = VYX::Platform::DecodeBase64(iText, buffer)) {
    delete[] buffer;
    return FailWith(E_FAIL, {"Cannot decode Base64 text: ", fault->reason, " at position ", Decimal(fault->position)});
  }
  *oBuffer = buffer;
  *oSize = size;
  return S_OK;
}
