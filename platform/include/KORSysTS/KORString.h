#pragma once

#include <compare>
#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

#include "VYXExport.h"

/**
 * A narrow (8-bit) string value: bytes with their length, zero-terminated, copied deeply.
 *
 * Where it stands for text the bytes are UTF-8. Where memory runs out, std::bad_alloc is thrown. One object belongs to
 * one thread at a time; distinct objects are independent.
 */
class VYX_EXPORT KORString {
 public:
  /// The empty string.
  KORString() = default;

  /// A copy of a zero-terminated text; null gives the empty string.
  KORString(const char* iText);

  /// A copy of the bytes of a view, zero bytes included.
  explicit KORString(std::string_view iText) : _text(iText) {}

  /// The zero-terminated bytes, valid until the string changes or dies. Never null.
  const char* CastToCharPtr() const noexcept { return _text.c_str(); }
  /// The same, where a zero-terminated text is wanted.
  operator const char*() const noexcept { return _text.c_str(); }

  /// Number of bytes, without the terminating zero.
  std::size_t GetLengthInByte() const noexcept { return _text.size(); }

  /// True for no bytes.
  bool IsEmpty() const noexcept { return _text.empty(); }

  /// The bytes as a view, valid until the string changes or dies.
  std::string_view ToStringView() const noexcept { return _text; }

  /// Byte for byte, zero bytes included.
  bool operator==(const KORString& iOther) const noexcept { return _text == iOther._text; }
  /// Byte for byte; false for null, and for a string that holds a zero byte.
  bool operator==(const char* iOther) const noexcept { return iOther != nullptr && _text == iOther; }

  /// @{
  /// The order of the bytes as unsigned numbers; a null pointer counts as the empty string.
  std::strong_ordering operator<=>(const KORString& iOther) const noexcept { return _text <=> iOther._text; }
  std::strong_ordering operator<=>(const char* iOther) const noexcept {
    return ToStringView() <=> std::string_view(iOther == nullptr ? "" : iOther);
  }
  /// @}

  /// @{
  /// The order of operator<=>. Spelled out, although that implies them: the standard library's transparent comparators
  /// would otherwise take two strings for pointers.
  friend bool operator<(const KORString& iLeft, const KORString& iRight) noexcept { return iLeft._text < iRight._text; }
  friend bool operator>(const KORString& iLeft, const KORString& iRight) noexcept { return iRight < iLeft; }
  friend bool operator<=(const KORString& iLeft, const KORString& iRight) noexcept { return !(iRight < iLeft); }
  friend bool operator>=(const KORString& iLeft, const KORString& iRight) noexcept { return !(iLeft < iRight); }
  /// @}

  /// Writes the bytes, padded as the stream's width asks.
  friend VYX_EXPORT std::ostream& operator<<(std::ostream& ioStream, const KORString& iText);

 private:
  std::string _text;
};

/// Equal strings hash alike.
template <>
struct std::hash<KORString> {
  /// The hash of a value.
  std::size_t operator()(const KORString& iText) const noexcept {
    return std::hash<std::string_view>()(iText.ToStringView());
  }
};
