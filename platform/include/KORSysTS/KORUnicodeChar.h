#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>

#include "VYXExport.h"

/**
 * One character of a text: a Unicode code point, or one byte of an ill-formed UTF-8 text that belongs to no code point.
 *
 * A byte that stands in no well-formed sequence (see "Constraints on Conversion Processes" in chapter 3 of the Unicode
 * Standard) is a character of its own. It differs from every code point, and appending it to a text writes the same
 * byte again, so that no text changes by being taken apart and put together.
 *
 * ```cpp
 * KORUnicodeString text("ab");
 * const KORUnicodeChar first = text[0];
 * if (first.IsAscii() && first == 'a') {
 *   text += first;
 * }
 * text;  // "aba"
 * ```
 *
 * A value of 4 bytes without ownership; safe to use from any thread.
 */
class VYX_EXPORT KORUnicodeChar {
 public:
  /// The zero character, U+0000.
  constexpr KORUnicodeChar() noexcept = default;

  /// The character of a narrow one: ASCII stands for itself, any other byte is kept as a byte of its own.
  constexpr KORUnicodeChar(char iChar) noexcept : _value(FromNarrow(iChar)) {}

  /// The character of a code point. A value that is no Unicode scalar value becomes U+FFFD REPLACEMENT CHARACTER.
  constexpr explicit KORUnicodeChar(char32_t iCodePoint) noexcept
      : _value(IsScalarValue(iCodePoint) ? iCodePoint : kReplacement) {}

  /// Becomes the character of a narrow one.
  constexpr KORUnicodeChar& operator=(char iChar) noexcept {
    _value = FromNarrow(iChar);
    return *this;
  }

  /// The code point; U+FFFD for a byte of ill-formed text.
  constexpr char32_t GetCodePoint() const noexcept { return IsByte() ? kReplacement : _value; }

  /// True for a byte of ill-formed text, which is no code point.
  constexpr bool IsByte() const noexcept { return _value >= kFirstByte; }

  /// True for U+0000 to U+007F.
  constexpr bool IsAscii() const noexcept { return _value < 0x80; }

  /// The narrow character: ASCII and bytes of ill-formed text as they are, U+001A SUBSTITUTE for all others.
  constexpr operator char() const noexcept { return static_cast<char>(NarrowByte()); }

  /// The UTF-8 bytes of the character, one to four.
  std::string ConvertToChar() const;

  /// The same code point or the same byte; a byte never equals a code point.
  constexpr bool operator==(const KORUnicodeChar& iOther) const noexcept { return _value == iOther._value; }
  /// Equal to the character made of a narrow one.
  constexpr bool operator==(char iOther) const noexcept { return _value == FromNarrow(iOther); }
  /// Equal to a code point, as in `text[0] == U'a'`; false for a byte.
  constexpr bool operator==(char32_t iCodePoint) const noexcept { return _value == iCodePoint && !IsByte(); }

  /// The order of code points, bytes of ill-formed text behind them all; consistent with equality. The other side is a
  /// character, a narrow one or a code point.
  template <std::same_as<KORUnicodeChar> Self, class Other>
  requires(std::same_as<Other, KORUnicodeChar> || std::same_as<Other, char> ||
           std::same_as<Other, char32_t>) friend constexpr std::strong_ordering
  operator<=>(const Self& iLeft, const Other& iRight) noexcept {
    return iLeft._value <=> ValueOf(iRight);
  }

  /// Writes the UTF-8 bytes of the character.
  friend VYX_EXPORT std::ostream& operator<<(std::ostream& ioStream, const KORUnicodeChar& iChar);

 private:
  static constexpr char32_t kReplacement = 0xFFFD;
  static constexpr char32_t kFirstByte = 0x110000;

  static constexpr char32_t FromNarrow(char iChar) noexcept {
    const auto byte = static_cast<unsigned char>(iChar);
    return byte < 0x80 ? byte : kFirstByte + byte;
  }
  static constexpr char32_t ValueOf(const KORUnicodeChar& iChar) noexcept { return iChar._value; }
  static constexpr char32_t ValueOf(char iChar) noexcept { return FromNarrow(iChar); }
  static constexpr char32_t ValueOf(char32_t iCodePoint) noexcept { return iCodePoint; }
  static constexpr bool IsScalarValue(char32_t iValue) noexcept {
    return iValue < 0xD800 || (iValue > 0xDFFF && iValue <= 0x10FFFF);
  }
  constexpr unsigned char NarrowByte() const noexcept {
    if (IsByte()) {
      return static_cast<unsigned char>(_value - kFirstByte);
    }
    return IsAscii() ? static_cast<unsigned char>(_value) : static_cast<unsigned char>(0x1A);
  }

  friend struct std::hash<KORUnicodeChar>;

  char32_t _value = 0;
};

/// Equal characters hash alike.
template <>
struct std::hash<KORUnicodeChar> {
  /// The hash of a value.
  std::size_t operator()(const KORUnicodeChar& iChar) const noexcept {
    return std::hash<char32_t>()(KORUnicodeChar::ValueOf(iChar));
  }
};
