#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

#include "VYXPropertyTree/arena.h"

namespace json {

/**
 * What the heap parts of arrays and objects have in common. The memory of a body is its own or in an arena. A body with
 * an arena keeps it alive, also one with memory of its own: it may hold texts that stand there.
 */
struct ContainerBody {
  enum class Memory : std::uint8_t { Own, InArena };

  static constexpr std::size_t kMostValues = std::numeric_limits<std::uint32_t>::max();

  ContainerBody(Arena* iArena, Memory iMemory, std::size_t iCapacity) noexcept
      : arena(iArena), capacity(static_cast<std::uint32_t>(iCapacity)), memory(iMemory) {}

  /// Has to be called before a value below may be changed or moved.
  void Touch() const noexcept {
    if (arena != nullptr) {
      arena->Touch();
    }
  }

  ContainerBody* nextDoomed = nullptr;  ///< links bodies that wait for their destruction, so that it needs no memory
  Arena* arena;
  std::uint32_t size = 0;  ///< the number of values
  std::uint32_t capacity;
  Memory memory;
  bool isObject = false;
};

/// Destroys a body and everything below it. Takes neither memory nor stack for the depth.
void Destroy(ContainerBody* ioBody) noexcept;

}  // namespace json
