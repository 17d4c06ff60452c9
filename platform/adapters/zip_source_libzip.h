#pragma once

#include <zip.h>

#include <algorithm>
#include <cstdint>
#include <memory>

#include "platform/adapters/zip_archive.h"

/// Sources that let libzip read and write through the contract's interfaces; shared by its reader and its writer.
namespace VYX::Adapters::Libzip {

/// An error of the library, freed with its owner.
class Error {
 public:
  Error() noexcept { zip_error_init(&_error); }
  ~Error() { zip_error_fini(&_error); }
  Error(const Error&) = delete;
  Error& operator=(const Error&) = delete;

  zip_error_t* Get() noexcept { return &_error; }
  const char* Text() noexcept { return zip_error_strerror(&_error); }

 private:
  zip_error_t _error{};
};

/// Answers ZIP_SOURCE_ERROR, and leaves an error of the given kind.
inline zip_int64_t GiveError(void* oData, zip_uint64_t iLength, int iKind) noexcept {
  int kind[2] = {iKind, 0};
  const std::size_t length = std::min<std::size_t>(iLength, sizeof kind);
  std::copy_n(reinterpret_cast<const char*>(kind), length, static_cast<char*>(oData));
  return static_cast<zip_int64_t>(length);
}

}  // namespace VYX::Adapters::Libzip
