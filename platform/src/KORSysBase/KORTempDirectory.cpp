#include "KORSysBase/KORTempDirectory.h"

#include <string>

#include "pending_error.h"
#include "platform/os/environment.h"
#include "platform/os/files.h"
#include "platform/os/native_path.h"
#include "platform/os/temporary_folder.h"

namespace {

namespace Os = VYX::Os;

Os::Status TestFolder(const std::string& iPath) {
  Os::FileInfo info;
  const Os::Status status = Os::DescribePath(iPath, info);
  if (!status.IsOk()) {
    return status;
  }
  return info.IsFolder() ? Os::TestWritability(iPath) : Os::Failure::NotAFolder();
}

// A relative path would mean another folder as soon as the program goes elsewhere.
bool IsChosen(const char* iPath) {
  return iPath != nullptr && Os::IsAbsolute(iPath) && TestFolder(iPath).IsOk();
}

}  // namespace

long KORGetTempDirectory(KORUnicodeString** oPath) {
  constexpr const char* kAttempt = "Cannot use the temporary folder";
  if (oPath == nullptr) {
    return VYX::Platform::LeaveError(Os::Failure::InvalidParameter(), kAttempt, {});
  }
  const char* const chosen = Os::TrustedEnvironmentValue("TMPDIR");
  if (IsChosen(chosen)) {
    *oPath = new KORUnicodeString(chosen);
    return 0;
  }
  const std::string usual = Os::UsualTemporaryFolder();
  const Os::Status status = TestFolder(usual);
  if (!status.IsOk()) {
    return VYX::Platform::LeaveError(status, kAttempt, usual);
  }
  *oPath = new KORUnicodeString(std::string_view(usual));
  return 0;
}
