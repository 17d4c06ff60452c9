#pragma once

#include <cstddef>
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
    /// Stands at an entry.
    explicit Iterator(const std::string* iEntry) noexcept : _entry(iEntry) {}

    /// The entry as a view.
    StringView operator*() const noexcept { return StringView(std::string_view(*_entry)); }

    /// Steps to the next entry.
    Iterator& operator++() noexcept {
      ++_entry;
      return *this;
    }
    /// True at the same entry.
    bool operator==(const Iterator& iOther) const noexcept = default;

   private:
    const std::string* _entry;
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
