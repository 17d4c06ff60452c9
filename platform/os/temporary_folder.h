#pragma once

#include <string>

namespace VYX::Os {

/// The host's own folder for temporary files, whether or not it can be used.
std::string UsualTemporaryFolder();

}  // namespace VYX::Os
