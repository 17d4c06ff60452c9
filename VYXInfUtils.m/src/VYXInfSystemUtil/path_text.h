#pragma once

#include <string>
#include <string_view>

#include "KORSysTS/KORUnicodeString.h"

/// Paths as bytes: every character that means something in a path is ASCII, so UTF-8 is searched and cut byte by byte.
namespace VYX::Internal {

inline constexpr char kPathSeparator = '\\';

/// The path with backslashes for slashes.
std::string WithBackslashes(const KORUnicodeString& iPath);

/// The text of bytes.
inline KORUnicodeString ToText(std::string_view iBytes) {
  return KORUnicodeString(iBytes);
}

}  // namespace VYX::Internal
