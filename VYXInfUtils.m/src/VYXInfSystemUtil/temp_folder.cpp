#include <atomic>
#include <memory>

#include "KORSysBase/KORDirectory.h"
#include "KORSysBase/KOREnvironment.h"
#include "KORSysBase/KORError.h"
#include "KORSysBase/KORTempDirectory.h"
#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::FailureLog;
using VYX::Internal::LogPendingError;
using VYX::Internal::LogUnlessFiltered;

namespace {

KORUnicodeString FindCandidate() {
  KORUnicodeString* found = nullptr;
  const long code = KORGetTempDirectory(&found);
  const std::unique_ptr<KORUnicodeString> owner(found);
  if (code >= 0 && found != nullptr && !found->IsEmpty()) {
    return *found;
  }
  // The line below is all that is said about it.
  KORError::KORCleanLastError();
  LogUnlessFiltered(WARN,
                    "KORGetTempDirectory did not return a value.  Searching for a different TEMP folder path ...");
  for (const char* const name : {"TMP", "TEMP", "TMPDIR", "TEMPDIR", "USERPROFILE"}) {
    const char* const value = KORGetEnv(name);
    if (value != nullptr && *value != '\0') {
      return value;
    }
  }
  return {};
}

bool IsUsable(const KORUnicodeString& iPath) {
  KORDirectoryHandle folder;
  if (const long code = KOROpenDirectory(iPath, &folder); code != 0) {
    LogPendingError(code);
    FailureLog(VYX_HERE);
    LogUnlessFiltered(WARN, "The TEMP folder path IS N/A !     [", iPath, "] ");
    return false;
  }
  LogUnlessFiltered(INFO, "TEMP folder is valid.     [", iPath, "] ");
  if (const long code = KORCloseDirectory(&folder); code != 0) {
    LogPendingError(code);
    FailureLog(VYX_HERE);
  }
  return true;
}

}  // namespace

KORUnicodeString VYXInfSystemUtil::GetTempFolderPath() {
  return CatchAtBoundary(VYX_HERE, KORUnicodeString(), [&]() -> KORUnicodeString {
    // Set once, to a folder that was proved, and never freed: it is read without a lock, also while the process ends.
    static constinit std::atomic<const KORUnicodeString*> cache{nullptr};
    if (const KORUnicodeString* const cached = cache.load(std::memory_order_acquire); cached != nullptr) {
      return *cached;
    }
    KORUnicodeString path = ResolvePath(FindCandidate(), false);
    if (IsUsable(path)) {
      auto found = std::make_unique<const KORUnicodeString>(path);
      const KORUnicodeString* none = nullptr;
      if (cache.compare_exchange_strong(none, found.get(), std::memory_order_acq_rel)) {
        static_cast<void>(found.release());
      }
    }
    return path;
  });
}
