#include <libdeflate.h>

#include <new>

#include "platform/adapters/deflate.h"

namespace VYX::Adapters {
namespace {

// About the size that zlib reaches at its default level, in half the time.
constexpr int kLevel = 6;

template <typename Coder>
Coder* Checked(Coder* iCoder) {
  if (iCoder == nullptr) {
    throw std::bad_alloc();
  }
  return iCoder;
}

}  // namespace

struct Deflater::State {
  libdeflate_compressor* coder = Checked(libdeflate_alloc_compressor(kLevel));
  ~State() { libdeflate_free_compressor(coder); }
};

Deflater::Deflater() : _state(std::make_unique<State>()) {}
Deflater::~Deflater() = default;

ByteArray Deflater::Deflate(const char* iData, std::size_t iSize) {
  const std::size_t bound = libdeflate_deflate_compress_bound(_state->coder, iSize);
  ByteArray packed{std::make_unique_for_overwrite<char[]>(bound), 0};
  packed.size = libdeflate_deflate_compress(_state->coder, iData, iSize, packed.data.get(), bound);
  return packed;
}

struct Inflater::State {
  libdeflate_decompressor* coder = Checked(libdeflate_alloc_decompressor());
  ~State() { libdeflate_free_decompressor(coder); }
};

Inflater::Inflater() : _state(std::make_unique<State>()) {}
Inflater::~Inflater() = default;

bool Inflater::Inflate(const char* iData, std::size_t iSize, char* oRaw, std::size_t iRawSize) noexcept {
  std::size_t consumed = 0;
  std::size_t produced = 0;
  const libdeflate_result result =
      libdeflate_deflate_decompress_ex(_state->coder, iData, iSize, oRaw, iRawSize, &consumed, &produced);
  return result == LIBDEFLATE_SUCCESS && consumed == iSize && produced == iRawSize;
}

}  // namespace VYX::Adapters
