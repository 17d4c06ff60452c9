#pragma once

#include <string>

#include "platform/os/status.h"

namespace VYX::Os::Windows {

/// The rights of something new that its owner alone may use, and that inherits none from its folder. The owner is the
/// user of the running process.
class PrivateAccess {
 public:
  PrivateAccess() noexcept;
  ~PrivateAccess();
  PrivateAccess(const PrivateAccess&) = delete;
  PrivateAccess& operator=(const PrivateAccess&) = delete;

  Status GetStatus() const noexcept { return _status; }

  /// The host's SECURITY_ATTRIBUTES; for one call.
  void* Get() noexcept;

  /// True for an open folder that belongs to the user of the running process, and whose rights name nobody else but
  /// the host itself.
  bool IsThatOf(void* iFolder) const noexcept;

 private:
  struct Rights;
  Rights* _rights = nullptr;
  Status _status;
};

/// Gives an open file the rights of another one; where these cannot be read, those that its folder hands down.
Status TakeOverAccess(void* iFile, void* iFrom) noexcept;

}  // namespace VYX::Os::Windows
