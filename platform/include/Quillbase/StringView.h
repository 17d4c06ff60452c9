#pragma once

#include <compare>
#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string_view>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

namespace QB {

/**
 * A read-only view of UTF-8 text that belongs to somebody else, such as the JSON reader or a path list.
 *
 * It stands wherever a `const KORUnicodeString&` is expected, without a conversion or a copy; a text copied from it
 * owns its bytes. The viewed bytes end with a zero byte and must outlive the view; a view handed to a visitor is valid
 * during the visit. Views are made and copied without memory, and nothing fails. Walking it by position costs a scan
 * each time for text outside ASCII: take ToUnicode for that.
 *
 * ```cpp
 * const QB::StringView view("borrowed");
 * VYXInfStringUtil::Capitalize(view);  // "Borrowed"
 * ```
 *
 * Views may be read from any thread while the bytes stay as they are.
 */
class VYX_EXPORT StringView {
 public:
  /// A view of nothing.
  StringView() noexcept : StringView(std::string_view("", 0)) {}

  /// A view of the bytes of iText, behind which a zero byte must stand.
  explicit StringView(std::string_view iText) noexcept
      : _text(KORUnicodeString::Borrowed(), iText.data(), iText.size()) {}

  /// @{
  /// A copy of a view is a view of the same bytes, not a text of its own.
  StringView(const StringView& iOther) noexcept : StringView(iOther.ToStringView()) {}
  StringView& operator=(const StringView& iOther) noexcept;
  /// @}
  ~StringView() = default;

  /// The text, copied.
  KORUnicodeString ToUnicode() const { return _text; }

  /// The text as it stands.
  operator const KORUnicodeString&() const noexcept { return _text; }

  /// The bytes, without the zero byte behind them.
  std::string_view ToStringView() const noexcept { return _text.ToStringView(); }

  /// @{
  /// Byte for byte; the order is that of the bytes as unsigned numbers.
  bool operator==(const StringView& iOther) const noexcept { return ToStringView() == iOther.ToStringView(); }
  bool operator==(std::string_view iOther) const noexcept { return ToStringView() == iOther; }
  std::strong_ordering operator<=>(const StringView& iOther) const noexcept {
    return ToStringView() <=> iOther.ToStringView();
  }
  std::strong_ordering operator<=>(std::string_view iOther) const noexcept { return ToStringView() <=> iOther; }
  /// @}

  /// Writes the bytes, padded as the stream's width asks.
  friend VYX_EXPORT std::ostream& operator<<(std::ostream& ioStream, const StringView& iText);

 private:
  KORUnicodeString _text;
};

}  // namespace QB

/// A view hashes like the text that it shows.
template <>
struct std::hash<QB::StringView> {
  /// The hash of a value.
  std::size_t operator()(const QB::StringView& iText) const noexcept {
    return std::hash<std::string_view>()(iText.ToStringView());
  }
};
