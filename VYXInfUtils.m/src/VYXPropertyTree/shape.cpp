#include "VYXPropertyTree/shape.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "internal/PooledText.h"

namespace json {

using VYX::Internal::PooledText;

Shape* Shape::Make(Arena& ioArena, std::span<const SearchKey> iKeys) {
  void* const memory =
      ioArena.Allocate(sizeof(Shape) + iKeys.size() * (sizeof(std::uint64_t) + sizeof(KORUnicodeString)));
  auto* const shape = new (memory) Shape(iKeys.size());
  auto* prefix = reinterpret_cast<std::uint64_t*>(shape + 1);
  auto* key = reinterpret_cast<KORUnicodeString*>(prefix + iKeys.size());
  for (const SearchKey& one : iKeys) {
    *prefix++ = one.prefix;
    PooledText::Make(key++, one.text, [&](std::size_t iSize) { return ioArena.Allocate(iSize); });
  }
  return shape;
}

std::size_t Shape::Find(const SearchKey& iKey) const noexcept {
  const std::uint64_t* const prefixes = Prefixes();
  std::size_t first = 0;
  for (std::size_t count = _size; count > 0;) {
    const std::size_t half = count / 2;
    const bool isLess = prefixes[first + half] < iKey.prefix;
    first = isLess ? first + half + 1 : first;
    count = isLess ? count - half - 1 : half;
  }
  if (first == _size || prefixes[first] != iKey.prefix) {
    return kNone;
  }
  return Key(first).ToStringView() == iKey.text ? first : FindAmongEqualPrefixes(first, iKey);
}

std::size_t Shape::FindAmongEqualPrefixes(std::size_t iFirst, const SearchKey& iKey) const noexcept {
  std::size_t first = iFirst;
  for (std::size_t count = _size - iFirst; count > 0;) {
    const std::size_t half = count / 2;
    const std::size_t middle = first + half;
    const bool isLess = Prefix(middle) == iKey.prefix && Key(middle).ToStringView() < iKey.text;
    first = isLess ? middle + 1 : first;
    count = isLess ? count - half - 1 : half;
  }
  return first < _size && Key(first).ToStringView() == iKey.text ? first : kNone;
}

bool Shape::Has(std::span<const SearchKey> iKeys) const noexcept {
  const auto isKey = [this](std::size_t iIndex, const SearchKey& iKey) {
    return Prefix(iIndex) == iKey.prefix && Key(iIndex).ToStringView() == iKey.text;
  };
  std::size_t index = 0;
  return iKeys.size() == _size &&
         std::all_of(iKeys.begin(), iKeys.end(), [&](const SearchKey& iKey) { return isKey(index++, iKey); });
}

bool Shape::HasKeysOf(const Shape& iOther) const noexcept {
  if (_size != iOther._size || std::memcmp(Prefixes(), iOther.Prefixes(), _size * sizeof(std::uint64_t)) != 0) {
    return false;
  }
  for (std::size_t index = 0; index < _size; ++index) {
    if (!PooledText::AreEqual(Key(index), iOther.Key(index))) {
      return false;
    }
  }
  return true;
}

}  // namespace json
