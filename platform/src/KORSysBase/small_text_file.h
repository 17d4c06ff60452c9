#pragma once

#include <string>

namespace VYX::Platform {

/// Reads a regular file of at most 16 MiB. Answers what is wrong, and the empty text for success.
std::string ReadSmallTextFile(const std::string& iPath, std::string& oText);

}  // namespace VYX::Platform
