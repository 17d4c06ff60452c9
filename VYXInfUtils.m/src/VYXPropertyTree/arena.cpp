#include "VYXPropertyTree/arena.h"

#include <algorithm>
#include <limits>
#include <new>

namespace json {

namespace {

constexpr std::size_t kLeastPiece = 256;
constexpr std::size_t kLargestPiece = std::size_t{1} << 20;

}  // namespace

Arena* Arena::Make(std::size_t iExpected) {
  const std::size_t size = std::clamp(iExpected + sizeof(Piece) + sizeof(Arena), kLeastPiece, kLargestPiece);
  auto* const piece = new (::operator new(size)) Piece{nullptr, size};
  return new (piece + 1) Arena(piece);
}

Arena::Arena(Piece* iPiece) noexcept
    : _next(reinterpret_cast<char*>(this + 1)),
      _end(reinterpret_cast<char*>(iPiece) + iPiece->size),
      _last(iPiece),
      _size(iPiece->size) {}

void Arena::Free(Arena* iArena) noexcept {
  // The arena stands in the first of its pieces, which is freed last.
  for (Piece* piece = iArena->_last; piece != nullptr;) {
    Piece* const previous = piece->previous;
    ::operator delete(piece);
    piece = previous;
  }
}

/// Begins a piece; pieces grow with the arena. What needs a large one gets its own, and the piece in use stays in use.
void* Arena::AllocateElsewhere(std::size_t iSize) {
  const std::size_t regular = std::clamp(_size, kLeastPiece, kLargestPiece);
  const bool isLarge = iSize > regular / 2;
  if (iSize > static_cast<std::size_t>(std::numeric_limits<std::ptrdiff_t>::max()) - sizeof(Piece)) {
    throw std::bad_alloc();
  }
  const std::size_t size = isLarge ? iSize + sizeof(Piece) : regular;
  auto* const piece = new (::operator new(size)) Piece{_last, size};
  _last = piece;
  _size += size;
  char* const memory = reinterpret_cast<char*>(piece + 1);
  if (!isLarge) {
    _next = memory + iSize;
    _end = reinterpret_cast<char*>(piece) + size;
  }
  return memory;
}

}  // namespace json
