#include "platform/os/folders.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>

#include "platform/os/files.h"
#include "platform/os/posix/system_calls.h"

#if !defined(__unix__)
#error "this source is for POSIX hosts"
#endif

namespace VYX::Os {
namespace {

using Posix::Calls;
using Posix::Uninterrupted;

EntryKind KindOf(unsigned char iType) noexcept {
  switch (iType) {
    case DT_DIR:
      return EntryKind::Folder;
    case DT_REG:
      return EntryKind::Regular;
    case DT_UNKNOWN:
    case DT_LNK:
      return EntryKind::Unknown;
    default:
      return EntryKind::Other;
  }
}

}  // namespace

Status FolderReader::Open(const std::string& iPath) {
  static_cast<void>(Close());
  do {
    _folder = Calls().OpenFolder(iPath.c_str());
  } while (_folder == nullptr && errno == EINTR);
  return _folder == nullptr ? Status::OfLastCall() : Status();
}

Status FolderReader::Read(FolderEntry& oEntry, bool& oIsAtEnd) {
  if (_folder == nullptr) {
    return Failure::InvalidHandle();
  }
  const dirent* entry = nullptr;
  do {
    errno = 0;
    entry = Calls().ReadFolder(static_cast<DIR*>(_folder));
  } while (entry == nullptr && errno == EINTR);
  if (entry == nullptr && errno != 0) {
    return Status::OfLastCall();
  }
  oIsAtEnd = entry == nullptr;
  if (entry != nullptr) {
    oEntry = {entry->d_name, KindOf(entry->d_type)};
  }
  return {};
}

Status FolderReader::Close() noexcept {
  if (_folder == nullptr) {
    return {};
  }
  const int result = Calls().CloseFolder(static_cast<DIR*>(_folder));
  _folder = nullptr;
  return result == 0 || errno == EINTR ? Status() : Status::OfLastCall();
}

Status CreateFolder(const std::string& iPath) {
  constexpr mode_t kEverybody = S_IRWXU | S_IRWXG | S_IRWXO;
  if (Uninterrupted([&] { return Calls().MakeFolder(iPath.c_str(), kEverybody); }) == 0) {
    return {};
  }
  const Status status = Status::OfLastCall();
  FileInfo info;
  const bool isThere = status.GetNative() == EEXIST && DescribePath(iPath, info).IsOk() && info.IsFolder();
  return isThere ? Status() : status;
}

Status CreatePrivateFolder(const std::string& iPath) {
  constexpr mode_t kOthers = S_IRWXG | S_IRWXO;
  // A separator at the end would make the host look through a link.
  const std::string path = iPath.substr(0, iPath.find_last_not_of('/') + 1);
  if (Uninterrupted([&] { return Calls().MakeFolder(path.c_str(), S_IRWXU); }) == 0) {
    return {};
  }
  const Status status = Status::OfLastCall();
  struct stat info {};
  const bool isOwn = status.GetNative() == EEXIST &&
                     Calls().StatAt(AT_FDCWD, path.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(info.st_mode) &&
                     info.st_uid == geteuid() && (info.st_mode & kOthers) == 0;
  return isOwn ? Status() : status;
}

Status CurrentFolder(std::string& oPath) {
  const std::unique_ptr<char, decltype(&std::free)> path(Calls().CurrentFolder(nullptr, 0), &std::free);
  if (path == nullptr) {
    return Status::OfLastCall();
  }
  oPath = path.get();
  return {};
}

}  // namespace VYX::Os
