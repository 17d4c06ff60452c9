#include "VYXInfStringUtil.h"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <utility>

#include "KORSysTS/QRMSysConverter.h"
#include "internal/FailureTrace.h"

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::FailureReturn;
using VYX::Internal::LogPendingError;
using VYX::Internal::LogUnlessFiltered;

namespace {

bool LacksItsData(const QB::Binary& iBinary) noexcept {
  return iBinary.GetData() == nullptr && !iBinary.IsEmpty();
}

long EncodeBytes(const QB::Binary& iData, KORUnicodeString& oText) {
  oText.Reset();
  if (iData.IsEmpty()) {
    LogUnlessFiltered(DEBUG, "The content to encode is ZERO Bytes => NOTHING to encode. ");
    return S_OK;
  }
  // Content of 4 GiB and more is encoded in part only: the size is a 32-bit one by rule.
  const auto size = static_cast<std::uint32_t>(iData.GetSize());
  char* encoded = nullptr;
  const long code = QRMSysConverter::ConvertToBase64(QB::BinarySlice(iData).GetData(), size, &encoded);
  const std::unique_ptr<char, void (*)(void*)> owner(encoded, &std::free);
  if (encoded == nullptr || code == E_FAIL) {
    LogUnlessFiltered(ERROR, "The Base64 encoding failed. (input was ", iData.GetSize(), " BYTEs) ");
    return E_FAIL;
  }
  oText = encoded;
  LogUnlessFiltered(TRACE, "Encoded ", iData.GetSize(), " BYTEs --to-- ", oText.GetLengthInChar(), " Base64 chars.");
  return S_OK;
}

long DecodeBytes(const KORUnicodeString& iText, QB::Binary& oData) {
  oData = QB::Binary();
  if (iText.IsEmpty()) {
    LogUnlessFiltered(DEBUG, "The content to decode is ZERO chars => NOTHING to decode. ");
    return S_OK;
  }
  char* buffer = nullptr;
  std::uint64_t size = 0;
  const long code = QRMSysConverter::ConvertFromBase64(iText.ToStringView(), &buffer, &size);
  QB::Binary decoded(buffer, size, &QB::deallocateArrayChar);
  if (buffer == nullptr || size == 0 || code == E_FAIL) {
    LogUnlessFiltered(ERROR, "The Base64 decoding failed. (Base64 input was ", iText.GetLengthInChar(), " chars / ");
    return E_FAIL;
  }
  oData = std::move(decoded);
  LogUnlessFiltered(TRACE, "Decoded from ", iText.GetLengthInChar(), " Base64 chars --to-- ", size, " BYTEs.");
  return S_OK;
}

}  // namespace

long VYXInfStringUtil::EncodeToBase64(const QB::Binary& iData, KORUnicodeString* oText) {
  if (oText == nullptr) {
    return FailureReturn(VYX_HERE, E_INVALIDARG);
  }
  if (LacksItsData(iData)) {
    oText->Reset();
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&iData, oText] { return EncodeBytes(iData, *oText); });
}

long VYXInfStringUtil::EncodeToBase64(const KORUnicodeString& iText, KORUnicodeString& oText) {
  QB::Binary bytes;
  if (!ConvertToUTF8(iText, &bytes)) {
    oText.Reset();
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  const long code = EncodeToBase64(bytes, &oText);
  if (code < 0) {
    return FailureReturn(VYX_HERE, LogPendingError(code));
  }
  return S_OK;
}

long VYXInfStringUtil::DecodeFromBase64(const KORUnicodeString& iText, QB::Binary* oData) {
  if (oData == nullptr) {
    return E_INVALIDARG;
  }
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&iText, oData] { return DecodeBytes(iText, *oData); });
}

long VYXInfStringUtil::DecodeFromBase64(const KORUnicodeString& iText, KORUnicodeString& oText) {
  QB::Binary bytes;
  const long code = DecodeFromBase64(iText, &bytes);
  oText.Reset();
  if (code < 0) {
    return FailureReturn(VYX_HERE, LogPendingError(code));
  }
  if (LacksItsData(bytes)) {
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&bytes, &oText] {
    if (oText.BuildFromUTF8(bytes.GetData(), static_cast<std::size_t>(bytes.GetSize())) != 0) {
      return FailureReturn(VYX_HERE, E_FAIL);
    }
    return S_OK;
  });
}
