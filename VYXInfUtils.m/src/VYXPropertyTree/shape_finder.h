#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "VYXPropertyTree/shape.h"
#include "platform/adapters/json_tape.h"

namespace json {

/// The keys of an object in the order of its text, repeated ones included, and the places of its values.
struct KeySequence {
  struct Key {
    std::string_view text;
    std::uint32_t place;  ///< among the values of the shape
  };

  const Shape* shape = nullptr;
  std::vector<Key> keys;
  std::uint32_t uses = 0;  ///< objects that are being built with it
  bool isKnown = false;
};

/**
 * Finds the shape of an object before it is built: most objects of a document have the keys of one that came before, in
 * the same order, which costs no more than looking at them.
 */
class ShapeFinder {
 public:
  ShapeFinder(const VYX::Adapters::JsonTape& iTape, Arena& ioArena) noexcept : _tape(iTape), _arena(ioArena) {}

  /// The keys of the object at a place of the tape, which has iCount members, at least one; until Release.
  KeySequence& Find(std::size_t iPlace, std::size_t iCount);

  /// Has to be called once for each answer of Find.
  void Release(KeySequence& ioSequence);

 private:
  bool Has(const KeySequence& iKnown, std::size_t iPlace, std::size_t iCount) const noexcept;
  KeySequence& TakeUnused();
  void FreeUnused(KeySequence& ioSequence);
  void Read(std::size_t iPlace, std::size_t iCount, KeySequence& oSequence);
  void Order(KeySequence& ioSequence);

  struct SortedKey {
    SearchKey key;
    std::uint32_t index;
  };

  const VYX::Adapters::JsonTape& _tape;
  Arena& _arena;
  std::array<KeySequence*, 64> _known{};
  std::vector<std::unique_ptr<KeySequence>> _sequences;
  std::vector<KeySequence*> _unused;
  std::vector<SortedKey> _sorted;
  std::vector<SearchKey> _distinct;
};

}  // namespace json
