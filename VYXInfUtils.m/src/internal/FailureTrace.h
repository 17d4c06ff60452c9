#pragma once

#include <charconv>
#include <concepts>
#include <exception>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "KORSysBase/KORResult.h"
#include "KORSysTS/KORUnicodeString.h"
#include "VYXInfLog.h"

/**
 * How every failure site of the library reports: first the pending platform error, then the trace line, then the detail
 * line, each written at ERROR and only unless ERROR is filtered; nothing is composed otherwise.
 *
 *     if (code < 0) {
 *       return FailureReturn(VYX_HERE, LogPendingError(code));           // after a platform call
 *     }
 *     return FailureReturn(VYX_HERE, E_FAIL, "Key '", iKey, "' not found");  // with a detail line
 *
 * All of it may be used from any thread.
 */
namespace VYX::Internal {

/// The place of a failure: the source path as the build records it, and the line.
struct SourceSite {
  const char* path;
  int line;
};

/// The place where this stands.
#define VYX_HERE (::VYX::Internal::SourceSite{__FILE__, __LINE__})

/// True when the default logger would drop a message of this level. Costs one relaxed atomic load and a comparison for
/// a console logger.
bool IsFiltered(VYXInfLogLevel iLevel);

inline void AppendPiece(std::string& ioLine, std::string_view iPiece) {
  ioLine.append(iPiece);
}
inline void AppendPiece(std::string& ioLine, const char* iPiece) {
  ioLine.append(iPiece == nullptr ? "" : iPiece);
}
inline void AppendPiece(std::string& ioLine, const std::string& iPiece) {
  ioLine.append(iPiece);
}
inline void AppendPiece(std::string& ioLine, const KORUnicodeString& iPiece) {
  ioLine.append(iPiece.ToStringView());
}
template <std::integral Integer>
void AppendPiece(std::string& ioLine, Integer iPiece) {
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits, iPiece).ptr;
  ioLine.append(digits, end);
}
void AppendPiece(std::string& ioLine, bool iPiece) = delete;
void AppendPiece(std::string& ioLine, char iPiece) = delete;

/// Joins the pieces with nothing between them and writes them as one line: narrow text, KORUnicodeString, integers.
template <class... Pieces>
void LogComposed(std::shared_ptr<VYXInfLog> iLogger, VYXInfLogLevel iLevel, const Pieces&... iPieces) {
  std::string line;
  (AppendPiece(line, iPieces), ...);
  iLogger->Log(iLevel, line.c_str());
}

/// Writes what is left of a line that there is no memory for.
void LogOutOfMemory(VYXInfLogLevel iLevel) noexcept;

/// LogComposed through the default logger, unless the level is filtered. Never fails: where memory runs out, the line
/// says only that.
template <class... Pieces>
void LogUnlessFiltered(VYXInfLogLevel iLevel, const Pieces&... iPieces) {
  try {
    if (!IsFiltered(iLevel)) {
      LogComposed(VYXInfLog::GetDefaultLogger(), iLevel, iPieces...);
    }
  } catch (const std::bad_alloc&) {
    LogOutOfMemory(iLevel);
  }
}

/// The pending-error step: writes the message of the platform's pending error of a negative code, if there is one, and
/// clears it. Answers the code.
long LogPendingError(long iCode);

/// Writes the line "FAILURE RETURN (path:line)".
void TraceFailureReturn(const SourceSite& iSite);

/// Writes the line "FAILURE LOG (path:line)".
void TraceFailureLog(const SourceSite& iSite);

/// Writes the detail line "    MESSAGE:  " and the pieces.
template <class... Pieces>
void TraceDetail(const Pieces&... iPieces) {
  LogUnlessFiltered(ERROR, "    MESSAGE:  ", iPieces...);
}

/// The trace, and the detail line where there are pieces, before a return; answers iResult, the failure value to
/// return.
template <class Result, class... Pieces>
Result FailureReturn(const SourceSite& iSite, Result iResult, const Pieces&... iPieces) {
  TraceFailureReturn(iSite);
  if constexpr (sizeof...(Pieces) > 0) {
    TraceDetail(iPieces...);
  }
  return iResult;
}

/// The trace, and the detail line where there are pieces, where the failure is only recorded and the operation goes on.
template <class... Pieces>
void FailureLog(const SourceSite& iSite, const Pieces&... iPieces) {
  TraceFailureLog(iSite);
  if constexpr (sizeof...(Pieces) > 0) {
    TraceDetail(iPieces...);
  }
}

/// Runs an operation that may throw; an exception of the standard family ends in a trace with its text, and the failure
/// value is answered. Other exceptions pass.
template <class Result, class Operation>
Result CatchAtBoundary(const SourceSite& iSite, Result iFailure, Operation&& iOperation) {
  try {
    return std::forward<Operation>(iOperation)();
  } catch (const std::exception& exception) {
    LogPendingError(E_FAIL);
    return FailureReturn(iSite, std::move(iFailure), exception.what());
  }
}

}  // namespace VYX::Internal
