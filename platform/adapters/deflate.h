#pragma once

#include <cstddef>
#include <memory>

/// The contract for the library that codes whole buffers in deflate (RFC 1951). One coder belongs to one thread at a
/// time.
namespace VYX::Adapters {

/// A byte array that owns its memory; the bytes behind size are spare.
struct ByteArray {
  std::unique_ptr<char[]> data;
  std::size_t size = 0;
};

/// Compresses buffers.
class Deflater {
 public:
  /// A compressor that balances speed and size.
  Deflater();
  ~Deflater();
  Deflater(const Deflater&) = delete;
  Deflater& operator=(const Deflater&) = delete;

  /// Compresses a buffer. Throws std::bad_alloc where memory is short.
  ByteArray Deflate(const char* iData, std::size_t iSize);

 private:
  struct State;
  std::unique_ptr<State> _state;
};

/// Decompresses buffers.
class Inflater {
 public:
  Inflater();
  ~Inflater();
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;

  /// Decompresses a buffer. True when it is well-formed and holds exactly iRawSize bytes; no byte beyond is written.
  bool Inflate(const char* iData, std::size_t iSize, char* oRaw, std::size_t iRawSize) noexcept;

 private:
  struct State;
  std::unique_ptr<State> _state;
};

}  // namespace VYX::Adapters
