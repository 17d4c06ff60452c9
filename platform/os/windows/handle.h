#pragma once

#include <utility>

#include "platform/os/windows/windows_api.h"

namespace VYX::Os::Windows {

/// A handle of the host's, closed with the object; null is none.
class Handle {
 public:
  Handle() noexcept = default;
  explicit Handle(HANDLE iHandle) noexcept : _handle(iHandle) {}
  ~Handle() { Reset(nullptr); }
  Handle(Handle&& ioOther) noexcept : _handle(ioOther.Release()) {}
  Handle& operator=(Handle&& ioOther) noexcept {
    Reset(ioOther.Release());
    return *this;
  }

  bool IsOpen() const noexcept { return _handle != nullptr; }
  HANDLE Get() const noexcept { return _handle; }
  HANDLE Release() noexcept { return std::exchange(_handle, nullptr); }

  void Reset(HANDLE iHandle) noexcept {
    if (_handle != nullptr) {
      ::CloseHandle(_handle);
    }
    _handle = iHandle;
  }

 private:
  HANDLE _handle = nullptr;
};

}  // namespace VYX::Os::Windows
