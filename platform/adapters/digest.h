#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

/// The contract for the cryptographic library's digests.
namespace VYX::Adapters {

enum class DigestAlgorithm : std::uint8_t { Md5, Sha1, Sha256, Sha512 };

/// One computation at a time, again and again; the library's context is made once and reused. One object belongs to one
/// thread at a time.
class Digest {
 public:
  Digest() noexcept = default;
  Digest(Digest&& ioOther) noexcept : _context(std::exchange(ioOther._context, nullptr)) {}
  Digest& operator=(Digest&& ioOther) noexcept {
    std::swap(_context, ioOther._context);
    return *this;
  }
  ~Digest();

  /// Begins a computation, and forgets an unfinished one. False when the library does not offer the algorithm or has no
  /// memory.
  bool Start(DigestAlgorithm iAlgorithm) noexcept;

  /// Takes bytes in. False when the library fails. A computation must be under way.
  bool Update(const char* iData, std::size_t iSize) noexcept;

  /// Number of bytes of the digest. A computation must be under way.
  std::size_t Size() const noexcept;

  /// Writes the Size() bytes of the digest and ends the computation. False when the library fails. A computation must
  /// be under way.
  bool Finish(char* oDigest) noexcept;

 private:
  void* _context = nullptr;
};

}  // namespace VYX::Adapters
