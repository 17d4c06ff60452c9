#pragma once

#include <atomic>
#include <cstddef>

namespace json {

struct ContainerBody;

/**
 * Memory for what a text or a copy is made of at once: arrays, objects, their keys and texts. It is taken from the heap
 * in large pieces and given back as a whole, when the last body in it has died; or at once with the topmost body, as
 * long as nothing below was touched.
 *
 * The bodies of an arena never part: they belong to one tree, and so to one thread at a time.
 */
class Arena {
 public:
  /// An arena whose first piece has room for about so many bytes.
  static Arena* Make(std::size_t iExpected);

  /// Frees all memory, the arena's own included.
  static void Free(Arena* iArena) noexcept;

  Arena(const Arena&) = delete;
  Arena& operator=(const Arena&) = delete;

  /// Memory aligned for any of ours.
  void* Allocate(std::size_t iSize) {
    const std::size_t size = (iSize + kAlignment - 1) & ~(kAlignment - 1);
    if (size > static_cast<std::size_t>(_end - _next) || size < iSize) {
      return AllocateElsewhere(size);
    }
    void* const memory = _next;
    _next += size;
    return memory;
  }

  /// How much was allocated, in pieces begun.
  std::size_t Size() const noexcept { return _size; }

  /// A body came to life; the first one is the topmost.
  void AddBody(ContainerBody* ioBody) noexcept {
    _top = _top == nullptr ? ioBody : _top;
    ++_bodies;
  }

  /// A body died; true for the last one, after which the arena has to be freed.
  bool DropBody() noexcept { return --_bodies == 0; }

  /// From now on values below may own what is not in the arena, or may have left the topmost body. Reading through
  /// views ends here, too, from several threads.
  void Touch() noexcept { _isTouched.store(true, std::memory_order_relaxed); }

  /// True when everything dies with this body.
  bool DiesWith(const ContainerBody* iBody) const noexcept {
    return iBody == _top && !_isTouched.load(std::memory_order_relaxed);
  }

 private:
  struct Piece {
    Piece* previous;
    std::size_t size;
  };
  static constexpr std::size_t kAlignment = 8;

  explicit Arena(Piece* iPiece) noexcept;
  void* AllocateElsewhere(std::size_t iSize);

  char* _next;
  char* _end;
  Piece* _last;
  std::size_t _size;
  ContainerBody* _top = nullptr;
  std::size_t _bodies = 0;
  std::atomic<bool> _isTouched = false;
};

}  // namespace json
