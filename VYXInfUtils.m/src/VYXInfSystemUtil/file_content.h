#pragma once

#include <cstdint>

#include "Quillbase/Binary.h"

namespace VYX::Internal {

/// The bytes that a save writes.
struct FileContent {
  const char* data = nullptr;
  std::uint64_t size = 0;

  /// What a save writes of a buffer: of text all but a zero byte at its end.
  static FileContent Of(const QB::Binary& iBinary, bool iIsText) noexcept {
    FileContent content{iBinary.GetData(), iBinary.GetSize()};
    if (iIsText && content.data != nullptr && content.size != 0 && content.data[content.size - 1] == '\0') {
      --content.size;
    }
    return content;
  }

  bool IsEmpty() const noexcept { return size == 0 || data == nullptr; }
};

/// What stands in the file of an empty text.
inline constexpr FileContent kEmptyText{"", 1};

}  // namespace VYX::Internal
