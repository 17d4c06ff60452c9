#pragma once

#include <cstdint>
#include <utility>

#include "platform/os/files.h"
#include "platform/os/windows/file_calls.h"

namespace VYX::Os::Windows {

/// An open file or folder of the host's, closed with the object through the table of calls.
class FileHandle {
 public:
  explicit FileHandle(void* iFile = nullptr) noexcept : _file(iFile) {}
  ~FileHandle() { Reset(nullptr); }
  FileHandle(FileHandle&& ioOther) noexcept : _file(ioOther.Release()) {}
  FileHandle& operator=(FileHandle&& ioOther) noexcept {
    Reset(ioOther.Release());
    return *this;
  }

  bool IsOpen() const noexcept { return _file != nullptr; }
  void* Get() const noexcept { return _file; }
  void* Release() noexcept { return std::exchange(_file, nullptr); }
  void Reset(void* iFile) noexcept {
    if (_file != nullptr) {
      gFileCalls.Close(_file);
    }
    _file = iFile;
  }

 private:
  void* _file;
};

/// The host's handles have 32 significant bits, the lowest two of which it ignores: the lowest one marks text mode.
inline FileDescriptor ToDescriptor(void* iFile, bool iIsText) noexcept {
  return static_cast<FileDescriptor>(reinterpret_cast<std::uintptr_t>(iFile)) | (iIsText ? 1U : 0U);
}

inline void* ToHandle(FileDescriptor iFile) noexcept {
  constexpr FileDescriptor kMarks = 3;
  return reinterpret_cast<void*>(static_cast<std::uintptr_t>(iFile & ~kMarks));
}

inline bool IsTextMode(FileDescriptor iFile) noexcept {
  return (iFile & 1U) != 0;
}

}  // namespace VYX::Os::Windows
