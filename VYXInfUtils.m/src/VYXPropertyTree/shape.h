#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXPropertyTree/arena.h"
#include "VYXPropertyTree/search_key.h"

namespace json {

/**
 * The keys of an object in their order. It stands in an arena and is shared by the arena's objects that have the same
 * keys: those are most of the objects of a document.
 */
class Shape {
 public:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  /// A shape of keys in ascending order, each once.
  static Shape* Make(Arena& ioArena, std::span<const SearchKey> iKeys);

  /// The number of keys.
  std::size_t Size() const noexcept { return _size; }

  const KORUnicodeString& Key(std::size_t iIndex) const noexcept { return Keys()[iIndex]; }
  std::uint64_t Prefix(std::size_t iIndex) const noexcept { return Prefixes()[iIndex]; }

  /// The place of a key; kNone for one that is not there.
  std::size_t Find(const SearchKey& iKey) const noexcept;

  /// True when these are the keys.
  bool Has(std::span<const SearchKey> iKeys) const noexcept;

  /// True when two shapes have the same keys.
  bool HasKeysOf(const Shape& iOther) const noexcept;

 private:
  explicit Shape(std::size_t iSize) noexcept : _size(iSize) {}

  const std::uint64_t* Prefixes() const noexcept { return reinterpret_cast<const std::uint64_t*>(this + 1); }
  const KORUnicodeString* Keys() const noexcept {
    return reinterpret_cast<const KORUnicodeString*>(Prefixes() + _size);
  }
  std::size_t FindAmongEqualPrefixes(std::size_t iFirst, const SearchKey& iKey) const noexcept;

  std::size_t _size;
};

}  // namespace json
