#pragma once

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

 private:
  std::string _text;
};
