#include "VYXInfStringUtil.h"

#include <cstdint>
#include <string_view>
#include <utility>

#include "KORSysTS/KORSysCRC32.h"
#include "KORSysTS/QRMSysHash.h"
#include "internal/FailureTrace.h"

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::FailureReturn;
using VYX::Internal::LogPendingError;

namespace {

// As many bytes as the text has characters: the digests and checksums in use depend on that.
std::string_view LeadingBytes(const KORUnicodeString& iText) noexcept {
  return iText.ToStringView().substr(0, static_cast<std::size_t>(iText.GetLengthInChar()));
}

long Hash(std::string_view iBytes, std::uint32_t iAlgorithm, KORUnicodeString& oHash) {
  QRMSysHashContext context;
  long code = QRMSysHash_Init(iAlgorithm, context);
  if (code < 0) {
    LogPendingError(code);
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  code = QRMSysHash_Update(context, iBytes.data(), iBytes.size());
  if (code < 0) {
    LogPendingError(code);
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  char* digest = nullptr;
  std::uint64_t size = 0;
  code = QRMSysHash_Final(context, digest, size);
  if (code < 0) {
    LogPendingError(code);
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  KORUnicodeString hash;
  code = VYXInfStringUtil::EncodeToBase64(QB::Binary(digest, size, &QB::deallocateArrayChar), &hash);
  if (code < 0) {
    return FailureReturn(VYX_HERE, code);
  }
  oHash = std::move(hash);
  return S_OK;
}

}  // namespace

long VYXInfStringUtil::Base64Hash(const KORUnicodeString& iText, HashAlgo iAlgo, KORUnicodeString& oHash) {
  switch (iAlgo) {
    case HashAlgo::MD5:
    case HashAlgo::SHA1:
    case HashAlgo::SHA256:
    case HashAlgo::SHA512:
      return CatchAtBoundary(VYX_HERE, E_FAIL, [&iText, iAlgo, &oHash] {
        return Hash(LeadingBytes(iText), static_cast<std::uint32_t>(iAlgo), oHash);
      });
  }
  return E_INVALIDARG;
}

std::uint32_t VYXInfStringUtil::GetCRC32Value(const KORUnicodeString& iText) {
  const std::string_view bytes = LeadingBytes(iText);
  return KORSysCRC32(bytes.data(), bytes.size());
}
