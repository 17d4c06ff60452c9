#include <string>

#include "KORSysBase/KORError.h"
#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"
#include "open_file.h"
#include "platform/os/files.h"
#include "platform/os/native_path.h"

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::FailureReturn;
using VYX::Internal::LogPendingError;
using VYX::Internal::OpenFile;

namespace {

// The host's time in ticks of 100 ns since 1601, divided by the ticks of a second: cut towards 1601, from either side.
std::int64_t ToUnixSeconds(const VYX::Os::FileInfo& iInfo) noexcept {
  constexpr std::int64_t kSecondsFrom1601To1970 = 11'644'473'600;
  constexpr std::int32_t kNanosecondsPerTick = 100;
  const bool isBefore1601 = iInfo.writeSeconds < -kSecondsFrom1601To1970;
  return iInfo.writeSeconds + (isBefore1601 && iInfo.writeNanoseconds >= kNanosecondsPerTick ? 1 : 0);
}

}  // namespace

long VYXInfSystemUtil::GetFileSize(const KORUnicodeString& iPath, unsigned int& oSize) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    OpenFile file;
    unsigned int size = 0;
    long code = file.Open(iPath, "r");
    if (code >= 0) {
      code = KORFSize(file.Get(), &size);
    }
    if (code >= 0) {
      code = file.Close();
    }
    if (code < 0) {
      return FailureReturn(VYX_HERE, LogPendingError(code));
    }
    oSize = size;
    return S_OK;
  });
}

long VYXInfSystemUtil::GetFileLastWriteTimeInSecondsSinceUnixEpoch(const KORUnicodeString& iPath,
                                                                   std::int64_t& oSeconds) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    std::string path;
    VYX::Os::FileInfo info;
    VYX::Os::Status status = VYX::Os::ToNativePath(iPath.ToStringView(), path);
    if (status.IsOk()) {
      status = VYX::Os::DescribePath(path, info);
    }
    if (!status.IsOk()) {
      return FailureReturn(VYX_HERE, E_FAIL, status.Describe());
    }
    oSeconds = ToUnixSeconds(info);
    return S_OK;
  });
}

bool VYXInfSystemUtil::DoesFileExist(const KORUnicodeString& iPath) {
  return CatchAtBoundary(VYX_HERE, false, [&]() -> bool {
    std::string path;
    return VYX::Os::ToNativePath(iPath.ToStringView(), path).IsOk() && VYX::Os::TestExistence(path).IsOk();
  });
}

long VYXInfSystemUtil::DeleteFile(const KORUnicodeString& iPath) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long { return _KORDeleteFile(iPath); });
}
