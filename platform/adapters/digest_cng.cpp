#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <new>
#include <utility>

#include "platform/adapters/digest.h"
#include "platform/os/windows/windows_api.h"

namespace VYX::Adapters {

namespace {

BCRYPT_ALG_HANDLE Open(const wchar_t* iName) noexcept {
  BCRYPT_ALG_HANDLE method = nullptr;
  return BCryptOpenAlgorithmProvider(&method, iName, nullptr, 0) == 0 ? method : nullptr;
}

// Opening an algorithm costs far more than a short digest does, so it is done once. The process keeps the answers: the
// library may be used until it is gone.
BCRYPT_ALG_HANDLE MethodOf(DigestAlgorithm iAlgorithm) noexcept {
  static const std::array<BCRYPT_ALG_HANDLE, 4> methods = {Open(BCRYPT_MD5_ALGORITHM), Open(BCRYPT_SHA1_ALGORITHM),
                                                           Open(BCRYPT_SHA256_ALGORITHM),
                                                           Open(BCRYPT_SHA512_ALGORITHM)};
  return methods[static_cast<std::size_t>(iAlgorithm)];
}

std::size_t SizeOf(DigestAlgorithm iAlgorithm) noexcept {
  constexpr std::array<std::size_t, 4> kSizes = {16, 20, 32, 64};
  return kSizes[static_cast<std::size_t>(iAlgorithm)];
}

// A computation belongs to one algorithm, so that each has its own.
struct Context {
  BCRYPT_HASH_HANDLE hash = nullptr;
  std::size_t size = 0;

  ~Context() { End(); }

  void End() noexcept {
    if (hash != nullptr) {
      BCryptDestroyHash(std::exchange(hash, nullptr));
    }
  }
};

Context* ContextOf(void* iContext) noexcept {
  return static_cast<Context*>(iContext);
}

}  // namespace

Digest::~Digest() {
  delete ContextOf(_context);
}

bool Digest::Start(DigestAlgorithm iAlgorithm) noexcept {
  const BCRYPT_ALG_HANDLE method = MethodOf(iAlgorithm);
  if (method == nullptr) {
    return false;
  }
  if (_context == nullptr) {
    _context = new (std::nothrow) Context;
  }
  Context* const context = ContextOf(_context);
  if (context == nullptr) {
    return false;
  }
  context->End();
  context->size = SizeOf(iAlgorithm);
  return BCryptCreateHash(method, &context->hash, nullptr, 0, nullptr, 0, 0) == 0;
}

bool Digest::Update(const char* iData, std::size_t iSize) noexcept {
  // The library counts in 32 bits, and takes what it only reads for something it might write.
  auto* next = reinterpret_cast<UCHAR*>(const_cast<char*>(iData));
  while (iSize > 0) {
    const ULONG count = static_cast<ULONG>(std::min<std::size_t>(iSize, std::numeric_limits<ULONG>::max()));
    if (BCryptHashData(ContextOf(_context)->hash, next, count, 0) != 0) {
      return false;
    }
    next += count;
    iSize -= count;
  }
  return true;
}

std::size_t Digest::Size() const noexcept {
  return ContextOf(_context)->size;
}

bool Digest::Finish(char* oDigest) noexcept {
  Context& context = *ContextOf(_context);
  const ULONG size = static_cast<ULONG>(context.size);
  const bool isFinished = BCryptFinishHash(context.hash, reinterpret_cast<UCHAR*>(oDigest), size, 0) == 0;
  context.End();
  return isFinished;
}

}  // namespace VYX::Adapters
