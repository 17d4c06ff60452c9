#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "KORSysTS/KORUnicodeString.h"

namespace VYX::Platform {

/// What one catalog file holds, or why it cannot be used.
struct MessageFile {
  std::map<std::string, KORUnicodeString, std::less<>> texts;  ///< by key
  std::string problem;                                         ///< object and cause; empty for a usable file
  bool isThere = true;                                         ///< false where there is no such file
  bool isLasting = true;  ///< false where the host refused what it may grant the next time
};

/// Reads a catalog file.
MessageFile ReadMessageFile(const std::string& iPath);

/**
 * The catalog file of a name, such as "Messages.fr.json", under the installation folders; null where there is none.
 * Read once and kept, but where the host could not read it; may be called from any thread.
 */
std::shared_ptr<const MessageFile> FindMessageFile(const std::string& iName, std::string_view iInstallFolders);

}  // namespace VYX::Platform
