#pragma once

#include <string>

#include "platform/os/status.h"

namespace VYX::Platform {

/// Reads a regular file of at most 16 MiB. Answers what is wrong, and the empty text for success; oHost is what the
/// host said, success where the file itself is to blame.
std::string ReadSmallTextFile(const std::string& iPath, std::string& oText, Os::Status& oHost);

}  // namespace VYX::Platform
