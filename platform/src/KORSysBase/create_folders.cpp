#include "create_folders.h"

#include "platform/os/native_path.h"

namespace VYX::Platform {

// From the first to the last. What exists is no failure, be it made by somebody else meanwhile.
Os::Status CreateFolders(const std::string& iNativePath, Os::Status (*iCreate)(const std::string&)) {
  Os::Status status = iCreate(iNativePath);
  if (status.IsOk()) {
    return status;
  }
  const char separator = Os::NativeSeparator();
  for (std::size_t end = iNativePath.find(separator, 1); end != std::string::npos;
       end = iNativePath.find(separator, end + 1)) {
    // A folder that may not be created is none that has to be: the last one decides.
    static_cast<void>(iCreate(iNativePath.substr(0, end)));
  }
  return iCreate(iNativePath);
}

}  // namespace VYX::Platform
