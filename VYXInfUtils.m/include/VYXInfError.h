#pragma once

#include <cstddef>
#include <functional>
#include <iosfwd>

#include "KORSysBase/KORListVal.h"
#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

class KORListValVYXInfError;

/**
 * A result code together with a message captured when the error was made: a failure that can be kept, compared,
 * collected and shown.
 *
 * ```cpp
 * const VYXInfError error(KORSysZipFile::kEncrypted);
 * error.GetErrorMessage();  // "Unknown error with code -2147220730"
 * KORListValVYXInfError errors;
 * errors.Append(error);
 * errors.Size();  // 1
 * ```
 *
 * One object belongs to one thread at a time. No operation fails.
 */
class VYX_EXPORT VYXInfError {
 public:
  /**
   * Captures an error. For a code other than 0 the calling thread's pending platform error of that code, if there is
   * one, gives the message and is consumed: a later failure trace does not report it again. Where there is none the
   * message is "Unknown error with code " and the signed decimal code.
   *
   * @param iCode the result code, of which 32 bits are kept; 0 has an empty message and leaves the pending error alone.
   */
  VYXInfError(long iCode = 0);

  /// @{
  /// Copies code and message; the pending error is not asked again.
  VYXInfError(const VYXInfError&) = default;
  VYXInfError& operator=(const VYXInfError&) = default;
  /// @}
  virtual ~VYXInfError();

  /// The result code.
  long GetHResult() const noexcept { return _hresult; }

  /// A copy of the message.
  KORUnicodeString GetErrorMessage() const { return _message; }

  /// 1 when the codes are equal and the messages identical, else 0.
  int operator==(const VYXInfError& iOther) const noexcept;
  /// 0 when operator== answers 1, else 1.
  int operator!=(const VYXInfError& iOther) const noexcept { return (*this == iOther) ? 0 : 1; }

  /// The messages of a list in order, each followed by a line feed; empty for an empty list.
  static KORUnicodeString ErrorListToString(KORListValVYXInfError iList);

  /// Writes the message and the code, "Disk full (0x80070070)"; "no error (0x00000000)" for the code 0.
  friend VYX_EXPORT std::ostream& operator<<(std::ostream& ioStream, const VYXInfError& iError);

 private:
  friend struct std::hash<VYXInfError>;

  long _hresult;
  KORUnicodeString _message;
};

/// Equal errors hash alike.
template <>
struct std::hash<VYXInfError> {
  /// The hash of a value.
  std::size_t operator()(const VYXInfError& iError) const noexcept {
    return std::hash<KORUnicodeString>()(iError._message) * 31 + static_cast<std::size_t>(iError._hresult);
  }
};

VYX_EXTERN_TEMPLATE(KORListVal<VYXInfError>);

/// A list of errors, held by value, positions counted from 1; KORListVal tells the rules. Copies do not consult the
/// platform's pending error again.
class VYX_EXPORT KORListValVYXInfError : public KORListVal<VYXInfError> {
 public:
  using KORListVal::KORListVal;
};
