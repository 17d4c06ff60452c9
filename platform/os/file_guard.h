#pragma once

#include "platform/os/files.h"

namespace VYX::Os {

/// Closes an open file on every way out, also where memory runs out. For files that are read: what closing answers is
/// dropped. One object belongs to one thread.
class FileGuard {
 public:
  explicit FileGuard(FileDescriptor iFile) noexcept : _file(iFile) {}
  ~FileGuard() { static_cast<void>(CloseFile(_file)); }
  FileGuard(const FileGuard&) = delete;
  FileGuard& operator=(const FileGuard&) = delete;

 private:
  FileDescriptor _file;
};

}  // namespace VYX::Os
