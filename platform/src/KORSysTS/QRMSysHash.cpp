#include "KORSysTS/QRMSysHash.h"

#include <cstddef>
#include <new>
#include <string_view>

#include "KORSysBase/KORResult.h"
#include "pending_error.h"
#include "platform/adapters/digest.h"

using VYX::Adapters::DigestAlgorithm;
using VYX::Platform::Decimal;
using VYX::Platform::FailWith;

namespace {

struct Algorithm {
  DigestAlgorithm algorithm;
  std::string_view name;
};
constexpr Algorithm kAlgorithms[] = {{DigestAlgorithm::Md5, "MD5"},
                                     {DigestAlgorithm::Sha1, "SHA-1"},
                                     {DigestAlgorithm::Sha256, "SHA-256"},
                                     {DigestAlgorithm::Sha512, "SHA-512"}};

constexpr long kOutOfMemory = VYX::ResultCode(0x8007000EU);

}  // namespace

struct QRMSysHashContext::State {
  VYX::Adapters::Digest digest;
  bool begun = false;
};

QRMSysHashContext::QRMSysHashContext() noexcept = default;
QRMSysHashContext::QRMSysHashContext(QRMSysHashContext&&) noexcept = default;
QRMSysHashContext& QRMSysHashContext::operator=(QRMSysHashContext&&) noexcept = default;
QRMSysHashContext::~QRMSysHashContext() = default;

long QRMSysHash_Init(std::uint32_t iAlgorithm, QRMSysHashContext& ioContext) noexcept {
  if (iAlgorithm >= std::size(kAlgorithms)) {
    return FailWith(E_INVALIDARG, {"Cannot begin a digest: there is no algorithm ", Decimal(iAlgorithm)});
  }
  if (ioContext._state == nullptr) {
    ioContext._state.reset(new (std::nothrow) QRMSysHashContext::State);
    if (ioContext._state == nullptr) {
      return FailWith(kOutOfMemory, {"Cannot begin a digest: not enough memory"});
    }
  }
  const Algorithm& wanted = kAlgorithms[iAlgorithm];
  ioContext._state->begun = ioContext._state->digest.Start(wanted.algorithm);
  if (!ioContext._state->begun) {
    return FailWith(E_FAIL, {"Cannot begin a digest: the cryptographic library does not offer ", wanted.name});
  }
  return S_OK;
}

long QRMSysHash_Update(QRMSysHashContext& ioContext, const char* iData, std::uint64_t iCount) noexcept {
  if (ioContext._state == nullptr || !ioContext._state->begun) {
    return FailWith(E_FAIL, {"Cannot continue a digest: none was begun"});
  }
  if (iCount == 0) {
    return S_OK;
  }
  if (iData == nullptr) {
    return FailWith(E_INVALIDARG, {"Cannot continue a digest: no data for a count of ", Decimal(iCount), " bytes"});
  }
  if (!ioContext._state->digest.Update(iData, static_cast<std::size_t>(iCount))) {
    return FailWith(E_FAIL, {"Cannot continue a digest: the cryptographic library fails"});
  }
  return S_OK;
}

long QRMSysHash_Final(QRMSysHashContext& ioContext, char*& oDigest, std::uint64_t& oSize) noexcept {
  if (ioContext._state == nullptr || !ioContext._state->begun) {
    return FailWith(E_FAIL, {"Cannot end a digest: none was begun"});
  }
  const std::size_t size = ioContext._state->digest.Size();
  std::unique_ptr<char[]> digest(new (std::nothrow) char[size]);
  if (digest == nullptr) {
    return FailWith(kOutOfMemory, {"Cannot end a digest: not enough memory"});
  }
  ioContext._state->begun = false;
  if (!ioContext._state->digest.Finish(digest.get())) {
    return FailWith(E_FAIL, {"Cannot end a digest: the cryptographic library fails"});
  }
  oDigest = digest.release();
  oSize = size;
  return S_OK;
}
