#pragma once

#include <string>
#include <string_view>

#include "platform/os/status.h"

namespace VYX::Os {

/// Turns a path in the library's spelling (both separators count) into the host's own. Refused are a text with a zero
/// byte, and a drive prefix where the host has no drives. Whether the path exists is not asked.
Status ToNativePath(std::string_view iPath, std::string& oNative);

/// The host's path separator.
char NativeSeparator() noexcept;

/// True when a colon separates the folders of a path list, as a semicolon does everywhere.
bool IsColonListSeparator() noexcept;

/// True when a path in the host's own spelling does not depend on the current folder.
bool IsAbsolute(std::string_view iNative) noexcept;

}  // namespace VYX::Os
