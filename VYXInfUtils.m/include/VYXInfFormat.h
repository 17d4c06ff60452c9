#pragma once

#include <fmt/format.h>

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

#include "KORSysBase/KORTime.h"
#include "KORSysBase/KORUuid.h"
#include "KORSysTS/KORString.h"
#include "KORSysTS/KORUnicodeChar.h"
#include "KORSysTS/KORUnicodeString.h"
#include "Quillbase/StringView.h"
#include "VYXInfError.h"
#include "VYXInfUri.h"
#include "VYXListAccess.h"
#include "VYXPropertyAccess.h"
#include "VYXPropertyTree.h"

/**
 * The library's values in the format texts of the fmt library (9 or later), for callers who use that: no other header
 * includes this one, and the library itself does not need fmt.
 *
 *     fmt::format("{:>10}|{:.3}", name, text);
 *
 * A value is written as operator<< writes it, under the format specifications of texts: fill, alignment, width and
 * precision, both counted by fmt. A tree without root and one that finds no memory give the empty text, with a trace.
 */
namespace VYX::Format {

/// The types whose bytes are at hand.
template <class T>
concept Text = std::same_as<T, KORUnicodeString> || std::same_as<T, KORString> || std::same_as<T, QB::StringView>;

/// @{
/// The text of another value, as operator<< writes it.
inline std::string TextOf(const KORUnicodeChar& iChar) {
  return iChar.ConvertToChar();
}
inline std::string TextOf(const VYXInfUri& iUri) {
  return iUri.GetString().ConvertToChar();
}
inline std::string TextOf(const VYXPropertyTree& iTree) {
  return VYXPropertyTreeUtils::Stringify(iTree).ConvertToChar();
}
inline std::string TextOf(const VYXPropertyAccess& iView) {
  return iView.Stringify().ConvertToChar();
}
inline std::string TextOf(const VYXListAccess& iView) {
  return iView.Stringify().ConvertToChar();
}
inline std::string TextOf(const KORUuid& iUuid) {
  char text[KORUuid::kTextLength + 1];
  iUuid.UUID_to_chaine(text, 0);
  return text;
}
inline std::string TextOf(const KORTime& iTime) {
  const KORUnicodeString seconds = iTime.ConvertToString("%Y-%m-%dT%H:%M:%S", KORTz::Utc);
  return fmt::format("{}.{:09}Z", seconds.ToStringView(), iTime.GetNanoseconds());
}
inline std::string TextOf(const VYXInfError& iError) {
  const auto code = static_cast<std::uint32_t>(iError.GetHResult());
  const KORUnicodeString message = code == 0 ? KORUnicodeString("no error") : iError.GetErrorMessage();
  return fmt::format("{} (0x{:08x})", message.ToStringView(), code);
}
/// @}

/// The types that have such a text.
template <class T>
concept Described = std::same_as<T, KORUnicodeChar> || std::same_as<T, KORTime> || std::same_as<T, KORUuid> ||
    std::same_as<T, VYXInfUri> || std::same_as<T, VYXInfError> || std::same_as<T, VYXPropertyTree> ||
    std::same_as<T, VYXPropertyAccess> || std::same_as<T, VYXListAccess>;

}  // namespace VYX::Format

/// @cond
/// Formats the library's texts.
template <VYX::Format::Text T>
struct fmt::formatter<T> : fmt::formatter<std::string_view> {
  template <class Context>
  auto format(const T& iText, Context& ioContext) const {
    return fmt::formatter<std::string_view>::format(iText.ToStringView(), ioContext);
  }
};

/// Formats the library's other values.
template <VYX::Format::Described T>
struct fmt::formatter<T> : fmt::formatter<std::string_view> {
  template <class Context>
  auto format(const T& iValue, Context& ioContext) const {
    return fmt::formatter<std::string_view>::format(VYX::Format::TextOf(iValue), ioContext);
  }
};
/// @endcond
