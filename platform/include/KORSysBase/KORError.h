#pragma once

#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

struct IUnknown;  // a context that callers of old pass; always null

/**
 * The pending error of the calling thread: the code of the platform function that failed last, and a message that names
 * the object and the cause ("Cannot open '/x/y' for reading: No such file or directory").
 *
 * Every platform function that fails leaves one; who reports it clears it, so that one error is reported once. Each
 * thread has its own.
 *
 * ```cpp
 * const long code = _KORDeleteFile("no such file");
 * if (code < 0) {
 *   KORError* const error = KORError::KORGetLastError(code, nullptr);
 *   std::cout << error->GetMessageText().SubString(0, 13) << "\n";  // Cannot delete
 *   error->Release();
 *   KORError::KORCleanLastError();
 * }
 * ```
 *
 * All operations may be called from any thread.
 */
class VYX_EXPORT KORError {
 public:
  /**
   * The calling thread's pending error, if it is the one of this code. E_FAIL, the code that says least, yields
   * whatever error is pending.
   *
   * @param iCode the failing result code.
   * @param iContext always null.
   * @return the error, to be released by its Release; null when there is none. It stays the thread's and is valid until
   *         KORCleanLastError or KORSetLastError.
   */
  static KORError* KORGetLastError(long iCode, IUnknown* iContext) noexcept;

  /// Forgets the calling thread's pending error.
  static void KORCleanLastError() noexcept;

  /// Leaves a pending error for the calling thread in place of an earlier one, and answers the code, so that a failing
  /// function can return it in one statement. Where no memory is left for it, none is pending.
  static long KORSetLastError(long iCode, KORUnicodeString iMessage) noexcept;

  /// The message: object and cause.
  const KORUnicodeString& GetMessageText() const noexcept { return _message; }

  /// The result code.
  long GetCode() const noexcept { return _code; }

  /// Ends the use of an error that KORGetLastError yielded.
  void Release() noexcept {}

 private:
  KORError(long iCode, KORUnicodeString iMessage) noexcept : _code(iCode), _message(std::move(iMessage)) {}
  static void Destroy(void* iError) noexcept;

  long _code;
  KORUnicodeString _message;
};
