#pragma once

#include <sys/stat.h>

#include "platform/os/files.h"

namespace VYX::Os::Posix {

/// The host's description of a file in ours. The type bits of the host overlap (a socket has those of a folder), so
/// they are not passed on.
inline FileInfo ToFileInfo(const struct stat& iInfo) noexcept {
  FileInfo info;
  info.type = S_ISDIR(iInfo.st_mode) ? FileInfo::kFolder : S_ISREG(iInfo.st_mode) ? FileInfo::kRegular : 0;
  info.permissions = iInfo.st_mode & 07777U;
  info.owner = iInfo.st_uid;
  info.group = iInfo.st_gid;
  info.size = static_cast<std::uint64_t>(iInfo.st_size);
  info.device = iInfo.st_dev;
  info.file = iInfo.st_ino;
  info.writeSeconds = iInfo.st_mtim.tv_sec;
  info.writeNanoseconds = static_cast<std::int32_t>(iInfo.st_mtim.tv_nsec);
  return info;
}

}  // namespace VYX::Os::Posix
