#include <openssl/evp.h>

#include <array>

#include "platform/adapters/digest.h"

namespace VYX::Adapters {

namespace {

// Looking an algorithm up costs several times what a short digest does, so it is done once. The process keeps the
// answers: the library may be used until it is gone.
const EVP_MD* MethodOf(DigestAlgorithm iAlgorithm) noexcept {
  static const std::array<const EVP_MD*, 4> methods = {
      EVP_MD_fetch(nullptr, "MD5", nullptr), EVP_MD_fetch(nullptr, "SHA1", nullptr),
      EVP_MD_fetch(nullptr, "SHA256", nullptr), EVP_MD_fetch(nullptr, "SHA512", nullptr)};
  return methods[static_cast<std::size_t>(iAlgorithm)];
}

EVP_MD_CTX* ContextOf(void* iContext) noexcept {
  return static_cast<EVP_MD_CTX*>(iContext);
}

}  // namespace

Digest::~Digest() {
  EVP_MD_CTX_free(ContextOf(_context));
}

bool Digest::Start(DigestAlgorithm iAlgorithm) noexcept {
  const EVP_MD* const method = MethodOf(iAlgorithm);
  if (method == nullptr) {
    return false;
  }
  if (_context == nullptr) {
    _context = EVP_MD_CTX_new();
  }
  return _context != nullptr && EVP_DigestInit_ex2(ContextOf(_context), method, nullptr) == 1;
}

bool Digest::Update(const char* iData, std::size_t iSize) noexcept {
  return EVP_DigestUpdate(ContextOf(_context), iData, iSize) == 1;
}

std::size_t Digest::Size() const noexcept {
  return static_cast<std::size_t>(EVP_MD_get_size(EVP_MD_CTX_get0_md(ContextOf(_context))));
}

bool Digest::Finish(char* oDigest) noexcept {
  return EVP_DigestFinal_ex(ContextOf(_context), reinterpret_cast<unsigned char*>(oDigest), nullptr) == 1;
}

}  // namespace VYX::Adapters
