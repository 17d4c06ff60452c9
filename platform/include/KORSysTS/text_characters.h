#pragma once

#include <cstddef>
#include <iterator>
#include <ranges>
#include <string_view>

#include "KORSysTS/KORUnicodeChar.h"
#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

namespace VYX::Text {

/**
 * The characters of a text as a range of the standard library, forwards and backwards.
 *
 * ```cpp
 * const KORUnicodeString path = "a/b";
 * for (const KORUnicodeChar character : VYX::Text::Characters(path)) {
 *   std::cout << character << "\n";
 * }
 * ```
 *
 * prints
 *
 * ```text
 * a
 * /
 * b
 * ```
 *
 * A character is a code point, or a byte that belongs to no well-formed sequence. Going from one to the next takes
 * constant time, whatever the text. The range is a view of the text's bytes, which must live unchanged meanwhile;
 * iterators may outlive the view. It may be used by any thread that may read the text.
 */
class VYX_EXPORT Characters {
 public:
  /// Stands on a character, or behind the last one.
  class VYX_EXPORT Iterator {
   public:
    /// @{
    /// What the standard library asks of an iterator.
    using iterator_concept = std::bidirectional_iterator_tag;
    using iterator_category = std::input_iterator_tag;  // characters are made when they are read
    using value_type = KORUnicodeChar;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = KORUnicodeChar;
    /// @}

    /// Stands nowhere.
    Iterator() noexcept = default;
    /// Stands on the character at a byte offset.
    Iterator(std::string_view iText, std::size_t iOffset) noexcept : _text(iText), _offset(iOffset) {}

    /// The character.
    KORUnicodeChar operator*() const noexcept;
    /// @{
    /// Steps to the next character or to the one before.
    Iterator& operator++() noexcept;
    Iterator& operator--() noexcept;
    Iterator operator++(int) noexcept {
      const Iterator before = *this;
      ++*this;
      return before;
    }
    Iterator operator--(int) noexcept {
      const Iterator before = *this;
      --*this;
      return before;
    }
    /// @}

    /// The byte offset of the character in the text.
    std::size_t Offset() const noexcept { return _offset; }

    /// The same place; both have to stand in the same text.
    bool operator==(const Iterator& iOther) const noexcept { return _offset == iOther._offset; }

   private:
    std::string_view _text;
    std::size_t _offset = 0;
  };

  /// The characters of nothing.
  Characters() noexcept = default;
  /// The characters of a text, which must outlive the range.
  explicit Characters(const KORUnicodeString& iText) noexcept : _text(iText.ToStringView()) {}
  /// A temporary text would not outlive it.
  explicit Characters(KORUnicodeString&& ioText) = delete;
  /// The characters of UTF-8 bytes.
  explicit Characters(std::string_view iText) noexcept : _text(iText) {}

  /// @{
  /// From the first character to behind the last one.
  Iterator begin() const noexcept { return {_text, 0}; }
  Iterator end() const noexcept { return {_text, _text.size()}; }
  /// @}
  /// True when there is no character.
  bool empty() const noexcept { return _text.empty(); }

 private:
  std::string_view _text;
};

}  // namespace VYX::Text

/// @cond
template <>
inline constexpr bool std::ranges::enable_view<VYX::Text::Characters> = true;
template <>
inline constexpr bool std::ranges::enable_borrowed_range<VYX::Text::Characters> = true;
/// @endcond
