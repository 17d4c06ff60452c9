#pragma once

#include <string>

namespace VYX::Os {

/// The outcome of a call to the host: success, or the host's own error number. A value; may be used from any thread.
class [[nodiscard]] Status {
 public:
  /// Success.
  constexpr Status() noexcept = default;

  /// The failure of a native error number; 0 is success.
  constexpr explicit Status(int iNative) noexcept : _native(iNative) {}

  /// The failure that the last native call left behind.
  static Status OfLastCall() noexcept;

  constexpr bool IsOk() const noexcept { return _native == 0; }

  /// True when there is no file or folder of the name.
  bool IsNotThere() const noexcept;

  /// True when a name was taken that had to be free.
  bool IsAlreadyThere() const noexcept;

  /// The host's own number.
  constexpr int GetNative() const noexcept { return _native; }

  /// The number of the Windows error that says the same, on every host; 0 for success.
  int ToErrorNumber() const noexcept;

  /// S_OK, or 0x8007xxxx (sign-extended) with the Windows error number.
  long ToResultCode() const noexcept;

  /// The host's text for the error: "No such file or directory".
  std::string Describe() const;

 private:
  int _native = 0;
};

/// Failures that portable code finds by itself, in the host's numbers.
namespace Failure {
Status BadName() noexcept;           ///< the text cannot be a path
Status PathNotFound() noexcept;      ///< a drive that does not exist
Status AccessDenied() noexcept;      ///< not allowed, or a folder where a file is wanted
Status NotAFolder() noexcept;        ///< something else where a folder is wanted
Status InvalidParameter() noexcept;  ///< an argument that can never be right
Status InvalidHandle() noexcept;     ///< no open file or folder
Status FileTooLarge() noexcept;      ///< a size beyond what the caller can hold
Status DeviceFull() noexcept;        ///< no room left
Status OutOfMemory() noexcept;       ///< no memory left
}  // namespace Failure

}  // namespace VYX::Os
