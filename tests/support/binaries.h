#pragma once

#include <cstring>
#include <string>
#include <string_view>

#include "Quillbase/Binary.h"

namespace VYX::Test {

/// A buffer with a copy of the bytes, which it owns.
inline QB::Binary OwnedBinary(std::string_view iBytes) {
  char* const data = QB::allocateArrayChar(iBytes.size());
  std::memcpy(data, iBytes.data(), iBytes.size());
  return QB::Binary(data, iBytes.size(), &QB::deallocateArrayChar);
}

/// What a buffer holds.
inline std::string BytesOf(const QB::Binary& iBinary) {
  return iBinary.IsEmpty() ? std::string() : std::string(iBinary.GetData(), static_cast<size_t>(iBinary.GetSize()));
}

}  // namespace VYX::Test
