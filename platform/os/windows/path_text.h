#pragma once

#include <string>
#include <string_view>

#include "platform/os/status.h"

namespace VYX::Os::Windows {

/**
 * Turns a path in the host's own spelling, UTF-8, into what the wide functions take: absolute, and with the prefix that
 * lifts the limit of 260 characters. Names are read as the host reads them: full stops and blanks at the end of a
 * component fall away, and a device's name is the device. A path that has such a prefix already is passed on as it is.
 */
Status ToWidePath(const std::string& iPath, std::wstring& oPath);

/// The wide path of a name in a folder, the name taken as it is.
std::wstring Join(const std::wstring& iFolder, std::wstring_view iName);

/// A name of the host's as UTF-8. Half a surrogate pair, which the host allows in a name, keeps its code point in three
/// bytes, so that the name can be handed back.
std::string ToNameText(std::wstring_view iName);

/// The reverse; false for what is neither UTF-8 nor such a half.
bool ToWideName(std::string_view iText, std::wstring& oName);

/// A path of the host's as UTF-8 and without the prefix.
std::string ToPathText(std::wstring_view iPath);

}  // namespace VYX::Os::Windows
