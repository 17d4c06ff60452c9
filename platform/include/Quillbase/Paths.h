#pragma once

#include <compare>
#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

#include "Quillbase/StringView.h"
#include "VYXExport.h"

namespace QB {

/**
 * A list of folders, parsed from a search-path text.
 *
 * The text is cut at each ";" and, on hosts that separate by colons, at each ":" that does not follow a single drive
 * letter. Empty entries are left out; nothing else is trimmed or checked.
 *
 * ```cpp
 * for (const QB::StringView folder : QB::Paths("/opt/app;;/usr/share/app")) {
 *   std::cout << folder.ToUnicode() << "\n";
 * }
 * ```
 *
 * prints
 *
 * ```text
 * /opt/app
 * /usr/share/app
 * ```
 *
 * The views stay valid while the list lives unchanged. One list belongs to one thread at a time.
 */
class VYX_EXPORT Paths {
 public:
  /// Walks the entries in order.
  class VYX_EXPORT Iterator {
   public:
    /// @{
    /// What the standard library asks of an iterator.
    using iterator_concept = std::random_access_iterator_tag;
    using iterator_category = std::input_iterator_tag;  // views are made when they are read
    using value_type = StringView;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = StringView;
    /// @}

    /// Stands nowhere.
    Iterator() noexcept = default;
    /// Stands at an entry.
    explicit Iterator(const std::string* iEntry) noexcept : _entry(iEntry) {}

    /// The entry as a view.
    StringView operator*() const noexcept { return StringView(std::string_view(*_entry)); }

    /// The entry at a distance.
    StringView operator[](difference_type iDistance) const noexcept { return *(*this + iDistance); }

    /// @{
    /// Moves to another entry of the list, or behind its last one.
    Iterator& operator++() noexcept { return *this += 1; }
    Iterator& operator--() noexcept { return *this -= 1; }
    Iterator operator++(int) noexcept { return Iterator(_entry++); }
    Iterator operator--(int) noexcept { return Iterator(_entry--); }
    Iterator& operator+=(difference_type iDistance) noexcept {
      _entry += iDistance;
      return *this;
    }
    Iterator& operator-=(difference_type iDistance) noexcept { return *this += -iDistance; }
    friend Iterator operator+(Iterator iFrom, difference_type iDistance) noexcept { return iFrom += iDistance; }
    friend Iterator operator+(difference_type iDistance, Iterator iFrom) noexcept { return iFrom += iDistance; }
    friend Iterator operator-(Iterator iFrom, difference_type iDistance) noexcept { return iFrom -= iDistance; }
    /// @}
    /// The number of entries between two places of one list.
    friend difference_type operator-(const Iterator& iLeft, const Iterator& iRight) noexcept {
      return iLeft._entry - iRight._entry;
    }
    /// @{
    /// The order of the places in one list.
    bool operator==(const Iterator& iOther) const noexcept = default;
    std::strong_ordering operator<=>(const Iterator& iOther) const noexcept = default;
    /// @}

   private:
    const std::string* _entry = nullptr;
  };

  /// An empty list.
  Paths() = default;

  /// The folders of a search-path text.
  explicit Paths(const KORUnicodeString& iSearchPaths);

  /// @{
  /// For range-based loops.
  Iterator begin() const noexcept { return Iterator(_entries.data()); }
  Iterator end() const noexcept { return Iterator(_entries.data() + _entries.size()); }
  /// @}

  /// Number of folders.
  std::size_t Size() const noexcept { return _entries.size(); }

 private:
  std::vector<std::string> _entries;
};

}  // namespace QB
