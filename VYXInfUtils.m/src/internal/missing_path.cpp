#include "internal/missing_path.h"

#include <string>

#include "platform/os/files.h"
#include "platform/os/native_path.h"

namespace VYX::Internal {

bool IsSurelyMissing(const KORUnicodeString& iPath) {
  std::string path;
  if (!Os::ToNativePath(iPath.ToStringView(), path).IsOk()) {
    return true;
  }
  const Os::Status status = Os::TestExistence(path);
  return status.IsNotThere() || status.GetNative() == Os::Failure::NotAFolder().GetNative();
}

}  // namespace VYX::Internal
