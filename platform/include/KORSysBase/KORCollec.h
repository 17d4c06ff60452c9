#pragma once

#include <cstddef>
#include <cstdint>

#include "VYXExport.h"

/**
 * @file
 * What the lists have in common.
 */

/// What the platform's collections have in common.
class KORCollec {
 public:
  /// Says what RemoveAll does with the storage of the elements that it removes.
  enum class MemoryHandling : std::int32_t {
    KeepMemory = 0,    ///< the storage stays, for elements to come
    ReleaseMemory = 1  ///< the storage is given back
  };
};

namespace VYX::Platform {

/**
 * Stops the program when a 1-based position is outside a collection: reading stray memory instead would go unnoticed.
 * The message on standard error names collection, position and size.
 */
[[noreturn]] VYX_EXPORT void StopAtBadPosition(const char* iCollection, int iPosition, int iSize) noexcept;

/// The 0-based index of a checked 1-based position; a position outside 1 to iSize stops the program.
inline std::size_t CheckedIndex(const char* iCollection, int iPosition, int iSize) noexcept {
  if (iPosition < 1 || iPosition > iSize) {
    StopAtBadPosition(iCollection, iPosition, iSize);
  }
  return static_cast<std::size_t>(iPosition) - 1;
}

}  // namespace VYX::Platform
