#include <vector>

#include "KORSysBase/KORDirectory.h"
#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::FailureReturn;
using VYX::Internal::LogPendingError;
using VYX::Internal::LogUnlessFiltered;

namespace {

// No host takes a longer path; the steps below would spend their time on it in vain.
constexpr std::size_t kLongestPath = 32'767;

// The missing folders of a path, the last one first. Every one of them has a parent that is missing too, but the last
// in the list, whose parent exists or is not named in the path.
std::vector<KORUnicodeString> FindMissing(const KORUnicodeString& iPath, bool& oHasStart) {
  std::vector<KORUnicodeString> missing;
  KORUnicodeString path = iPath;
  while (!VYXInfSystemUtil::DoesFileExist(path)) {
    KORUnicodeString parent = VYXInfSystemUtil::GetParentDir(path);
    missing.push_back(std::move(path));
    path = std::move(parent);
    if (path.IsEmpty()) {
      oHasStart = false;
      return missing;
    }
  }
  LogUnlessFiltered(DEBUG, "Directory already exist: ", path);
  oHasStart = true;
  return missing;
}

long CreateOne(const KORUnicodeString& iPath) {
  if (KORCreateDirectory(iPath) > 0) {
    return FailureReturn(VYX_HERE, LogPendingError(E_FAIL));
  }
  return S_OK;
}

}  // namespace

long VYXInfSystemUtil::CreateDirectoryRecursively(const KORUnicodeString& iPath) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    if (iPath.GetLengthInByte() > kLongestPath || iPath.IsEmpty()) {
      return FailureReturn(VYX_HERE, E_FAIL);
    }
    bool hasStart = false;
    const std::vector<KORUnicodeString> missing = FindMissing(iPath, hasStart);
    long code = S_OK;
    if (!hasStart) {
      code = FailureReturn(VYX_HERE, E_FAIL);
    }
    for (auto path = missing.rbegin() + (hasStart ? 0 : 1); path != missing.rend(); ++path) {
      // Each level reports the failure of the one above it.
      code = code < 0 ? FailureReturn(VYX_HERE, LogPendingError(code)) : CreateOne(*path);
    }
    return code;
  });
}
