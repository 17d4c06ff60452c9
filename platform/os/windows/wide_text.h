#pragma once

#include <string>
#include <string_view>

namespace VYX::Os::Windows {

/// UTF-8 as the UTF-16 that the host's functions take; false for a text that is no UTF-8, with oWide untouched.
bool ToWide(std::string_view iText, std::wstring& oWide);

/// The same for what people read: what is no UTF-8 becomes U+FFFD.
std::wstring ToReadableWide(std::string_view iText);

/// UTF-16 as UTF-8; half a surrogate pair becomes U+FFFD.
std::string ToUtf8(std::wstring_view iWide);

}  // namespace VYX::Os::Windows
