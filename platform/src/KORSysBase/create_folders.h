#pragma once

#include <string>

#include "platform/os/status.h"

namespace VYX::Platform {

/// Creates a folder and every missing one on the way with iCreate (Os::CreateFolder or Os::CreatePrivateFolder).
Os::Status CreateFolders(const std::string& iNativePath, Os::Status (*iCreate)(const std::string&));

}  // namespace VYX::Platform
