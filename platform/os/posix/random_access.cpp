#include "platform/os/random_access.h"

#include "platform/os/posix/system_calls.h"

#if !defined(__unix__)
#error "this source is for POSIX hosts"
#endif

namespace VYX::Os {

using Posix::Calls;
using Posix::Uninterrupted;

Status ReadAt(FileDescriptor iFile, std::uint64_t iOffset, void* oBuffer, std::size_t iSize, std::size_t& oRead) {
  oRead = 0;
  while (oRead < iSize) {
    char* const target = static_cast<char*>(oBuffer) + oRead;
    const auto offset = static_cast<off_t>(iOffset + oRead);
    const ssize_t count =
        Uninterrupted([&] { return Calls().ReadAt(static_cast<int>(iFile), target, iSize - oRead, offset); });
    if (count == -1) {
      return Status::OfLastCall();
    }
    if (count == 0) {
      break;
    }
    oRead += static_cast<std::size_t>(count);
  }
  return {};
}

Status WriteAt(FileDescriptor iFile, std::uint64_t iOffset, const void* iData, std::size_t iSize) {
  std::size_t written = 0;
  while (written < iSize) {
    const char* const source = static_cast<const char*>(iData) + written;
    const auto offset = static_cast<off_t>(iOffset + written);
    const ssize_t count =
        Uninterrupted([&] { return Calls().WriteAt(static_cast<int>(iFile), source, iSize - written, offset); });
    if (count == -1) {
      return Status::OfLastCall();
    }
    if (count == 0) {
      return Failure::DeviceFull();
    }
    written += static_cast<std::size_t>(count);
  }
  return {};
}

}  // namespace VYX::Os
