#pragma once

#include <utility>

#include "platform/os/files.h"

namespace VYX::Os {

/// Closes an open file on every way out, also where memory runs out. One object belongs to one thread.
class FileGuard {
 public:
  explicit FileGuard(FileDescriptor iFile) noexcept : _file(iFile) {}
  ~FileGuard() {
    if (_file != 0) {
      static_cast<void>(CloseFile(_file));
    }
  }
  FileGuard(const FileGuard&) = delete;
  FileGuard& operator=(const FileGuard&) = delete;

  /// Closes the file now, once, for who has to know whether that succeeded.
  Status Close() { return CloseFile(std::exchange(_file, 0)); }

 private:
  FileDescriptor _file;
};

}  // namespace VYX::Os
