#include "internal/FailureTrace.h"

#include "KORSysBase/KORError.h"

namespace VYX::Internal {

namespace {

void TraceLine(const char* iKind, const SourceSite& iSite) {
  LogUnlessFiltered(ERROR, iKind, " (", iSite.path, ":", iSite.line, ")");
}

}  // namespace

void LogOutOfMemory(VYXInfLogLevel iLevel) noexcept {
  try {
    VYXInfLog::GetDefaultLogger()->Log(iLevel, "(no memory for this line)");
  } catch (const std::exception&) {
    // Not even a logger can be had: the line is lost, the operation goes on to answer its failure.
  }
}

long LogPendingError(long iCode) {
  if (iCode >= 0) {
    return iCode;
  }
  KORError* const pending = KORError::KORGetLastError(iCode, nullptr);
  if (pending == nullptr) {
    return iCode;
  }
  LogUnlessFiltered(ERROR, pending->GetMessageText());
  pending->Release();
  KORError::KORCleanLastError();
  return iCode;
}

void TraceFailureReturn(const SourceSite& iSite) {
  TraceLine("FAILURE RETURN", iSite);
}

void TraceFailureLog(const SourceSite& iSite) {
  TraceLine("FAILURE LOG", iSite);
}

}  // namespace VYX::Internal
