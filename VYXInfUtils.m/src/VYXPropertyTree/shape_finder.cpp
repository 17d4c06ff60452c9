#include "VYXPropertyTree/shape_finder.h"

#include <algorithm>

#include "internal/PooledText.h"

namespace json {

using VYX::Internal::PooledText;

namespace {

// Larger objects are mostly the only ones with their keys.
constexpr std::size_t kLargestKnown = 256;

bool AreEqual(std::string_view iLeft, std::string_view iRight) noexcept {
  if (iLeft.size() != iRight.size()) {
    return false;
  }
  return iLeft.size() <= PooledText::kReadBytes ? PooledText::HaveEqualBytes(iLeft.data(), iRight.data(), iLeft.size())
                                                : iLeft == iRight;
}

/// In key order, and repeated keys in the order of the text.
bool IsBefore(const SearchKey& iLeft, const SearchKey& iRight) noexcept {
  return iLeft.prefix != iRight.prefix ? iLeft.prefix < iRight.prefix : iLeft.text < iRight.text;
}

}  // namespace

KeySequence& ShapeFinder::Find(std::size_t iPlace, std::size_t iCount) {
  static_assert(VYX::Adapters::JsonTape::kReadableBytes >= PooledText::kReadBytes);
  const SearchKey first(_tape.Text(iPlace + 1));
  const std::uint64_t mixed = (first.prefix ^ (first.text.size() << 5) ^ iCount) * 0x9E3779B97F4A7C15U;
  KeySequence*& known = _known[mixed >> 58];
  if (known != nullptr && Has(*known, iPlace, iCount)) {
    ++known->uses;
    return *known;
  }
  KeySequence& sequence = TakeUnused();
  Read(iPlace, iCount, sequence);
  Order(sequence);
  if (iCount <= kLargestKnown) {
    if (known != nullptr) {
      known->isKnown = false;
      FreeUnused(*known);
    }
    known = &sequence;
    sequence.isKnown = true;
  }
  ++sequence.uses;
  return sequence;
}

void ShapeFinder::Release(KeySequence& ioSequence) {
  --ioSequence.uses;
  FreeUnused(ioSequence);
}

KeySequence& ShapeFinder::TakeUnused() {
  if (_unused.empty()) {
    return *_sequences.emplace_back(std::make_unique<KeySequence>());
  }
  KeySequence& sequence = *_unused.back();
  _unused.pop_back();
  return sequence;
}

void ShapeFinder::FreeUnused(KeySequence& ioSequence) {
  if (ioSequence.uses == 0 && !ioSequence.isKnown) {
    _unused.push_back(&ioSequence);
  }
}

bool ShapeFinder::Has(const KeySequence& iKnown, std::size_t iPlace, std::size_t iCount) const noexcept {
  if (iKnown.keys.size() != iCount) {
    return false;
  }
  std::size_t place = iPlace + 1;
  for (const KeySequence::Key& key : iKnown.keys) {
    if (!AreEqual(key.text, _tape.Text(place))) {
      return false;
    }
    place = _tape.After(place + 1);
  }
  return true;
}

void ShapeFinder::Read(std::size_t iPlace, std::size_t iCount, KeySequence& oSequence) {
  oSequence.shape = nullptr;
  oSequence.keys.clear();
  oSequence.keys.reserve(iCount);
  std::size_t place = iPlace + 1;
  for (std::size_t index = 0; index < iCount; ++index) {
    oSequence.keys.push_back({_tape.Text(place), 0});
    place = _tape.After(place + 1);
  }
}

/// Makes the shape of a sequence and finds the place of each key in it.
void ShapeFinder::Order(KeySequence& ioSequence) {
  _sorted.clear();
  for (const KeySequence::Key& key : ioSequence.keys) {
    _sorted.push_back({SearchKey(key.text), static_cast<std::uint32_t>(_sorted.size())});
  }
  const auto isBefore = [](const SortedKey& iLeft, const SortedKey& iRight) { return IsBefore(iLeft.key, iRight.key); };
  if (!std::is_sorted(_sorted.begin(), _sorted.end(), isBefore)) {
    std::sort(_sorted.begin(), _sorted.end(), isBefore);
  }
  _distinct.clear();
  for (const SortedKey& one : _sorted) {
    if (_distinct.empty() || _distinct.back().text != one.key.text) {
      _distinct.push_back(one.key);
    }
    ioSequence.keys[one.index].place = static_cast<std::uint32_t>(_distinct.size() - 1);
  }
  ioSequence.shape = Shape::Make(_arena, _distinct);
}

}  // namespace json
