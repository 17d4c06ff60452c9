#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <iterator>
#include <type_traits>

/**
 * Walks the elements of a KORListVal, which owns them behind pointers: a random-access iterator of the standard
 * library.
 *
 * It stays valid until the list grows or shrinks or dies. Threads: the rules of the list.
 *
 * @tparam T the element type, const for a list that is not changed.
 */
template <class T>
class KORListValIterator {
 public:
  /// @{
  /// What the standard library asks of an iterator.
  using iterator_category = std::random_access_iterator_tag;
  using value_type = std::remove_const_t<T>;
  using difference_type = std::ptrdiff_t;
  using pointer = T*;
  using reference = T&;
  /// @}

  /// Stands nowhere.
  KORListValIterator() noexcept = default;

  /// Stands on an entry of the list's raw collection.
  explicit KORListValIterator(void* const* iEntry) noexcept : _entry(iEntry) {}

  /// An iterator that does not change the elements, from one that does.
  template <class Other>
  requires(std::same_as<T, const Other>) KORListValIterator(const KORListValIterator<Other>& iOther)
  noexcept : _entry(iOther.Entry()) {}

  /// The place in the raw collection.
  void* const* Entry() const noexcept { return _entry; }

  /// @{
  /// An element: this one, or one at a distance.
  reference operator*() const noexcept { return *static_cast<T*>(*_entry); }
  pointer operator->() const noexcept { return static_cast<T*>(*_entry); }
  reference operator[](difference_type iDistance) const noexcept { return *(*this + iDistance); }
  /// @}

  /// @{
  /// Moves to another element of the list, or behind its last one.
  KORListValIterator& operator++() noexcept { return *this += 1; }
  KORListValIterator& operator--() noexcept { return *this -= 1; }
  KORListValIterator operator++(int) noexcept {
    const KORListValIterator before = *this;
    ++_entry;
    return before;
  }
  KORListValIterator operator--(int) noexcept {
    const KORListValIterator before = *this;
    --_entry;
    return before;
  }
  KORListValIterator& operator+=(difference_type iDistance) noexcept {
    _entry += iDistance;
    return *this;
  }
  KORListValIterator& operator-=(difference_type iDistance) noexcept {
    _entry -= iDistance;
    return *this;
  }
  friend KORListValIterator operator+(KORListValIterator iFrom, difference_type iDistance) noexcept {
    return iFrom += iDistance;
  }
  friend KORListValIterator operator+(difference_type iDistance, KORListValIterator iFrom) noexcept {
    return iFrom += iDistance;
  }
  friend KORListValIterator operator-(KORListValIterator iFrom, difference_type iDistance) noexcept {
    return iFrom -= iDistance;
  }
  /// @}
  /// The number of elements between two places of one list.
  friend difference_type operator-(const KORListValIterator& iLeft, const KORListValIterator& iRight) noexcept {
    return iLeft._entry - iRight._entry;
  }

  /// @{
  /// The order of the places in one list.
  bool operator==(const KORListValIterator& iOther) const noexcept = default;
  std::strong_ordering operator<=>(const KORListValIterator& iOther) const noexcept = default;
  /// @}

 private:
  void* const* _entry = nullptr;
};
