#include "platform/os/folder_handle.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "platform/os/posix/system_calls.h"

#if !defined(__unix__)
#error "this source is for POSIX hosts"
#endif

namespace VYX::Os {
namespace {

using Posix::Calls;
using Posix::Uninterrupted;

// 0 to 2 belong to standard input, output and error, also where the process has closed them.
constexpr int kLowestFile = 3;
constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK;

Status OutcomeOf(int iResult) noexcept {
  return iResult == -1 ? Status::OfLastCall() : Status();
}

}  // namespace

void FolderHandle::Close() noexcept {
  if (_folder != kNone) {
    Calls().Close(std::exchange(_folder, kNone));
  }
}

Status FolderHandle::Open(const std::string& iPath) {
  Close();
  _folder = Uninterrupted([&] { return Calls().Open(iPath.c_str(), kFolderFlags, mode_t{0}); });
  return OutcomeOf(_folder);
}

Status FolderHandle::OpenFolder(const std::string& iName, FolderHandle& oFolder) const {
  FolderHandle folder;
  folder._folder = Uninterrupted([&] { return Calls().OpenAt(_folder, iName.c_str(), kFolderFlags | O_NOFOLLOW); });
  const Status status = OutcomeOf(folder._folder);
  if (status.IsOk()) {
    oFolder = std::move(folder);
  }
  return status;
}

Status FolderHandle::CreateFolder(const std::string& iName, bool iIsPrivate) const {
  const mode_t mode = iIsPrivate ? S_IRWXU : S_IRWXU | S_IRWXG | S_IRWXO;
  return OutcomeOf(Uninterrupted([&] { return Calls().MakeFolderAt(_folder, iName.c_str(), mode); }));
}

Status FolderHandle::CreateFile(const std::string& iName, bool iIsProgram, FileDescriptor& oFile) const {
  constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
  constexpr mode_t kRun = S_IXUSR | S_IXGRP | S_IXOTH;
  constexpr mode_t kReadAndWrite = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
  const mode_t mode = iIsProgram ? kReadAndWrite | kRun : kReadAndWrite;
  int file = Uninterrupted([&] { return Calls().CreateAt(_folder, iName.c_str(), kFlags, mode); });
  if (file != -1 && file < kLowestFile) {
    const int low = std::exchange(file, Calls().MoveDescriptor(file, kLowestFile));
    Calls().Close(low);
  }
  const Status status = OutcomeOf(file);
  if (status.IsOk()) {
    oFile = static_cast<FileDescriptor>(file);
  }
  return status;
}

Status FolderHandle::MoveFile(const std::string& iName, const FolderHandle& iFolder,
                              const std::string& iNewName) const {
  return OutcomeOf(
      Uninterrupted([&] { return Calls().RenameAt(_folder, iName.c_str(), iFolder._folder, iNewName.c_str()); }));
}

Status FolderHandle::RemoveFile(const std::string& iName) const {
  return OutcomeOf(Uninterrupted([&] { return Calls().UnlinkAt(_folder, iName.c_str(), 0); }));
}

Status FolderHandle::RemoveFolder(const std::string& iName) const {
  return OutcomeOf(Uninterrupted([&] { return Calls().UnlinkAt(_folder, iName.c_str(), AT_REMOVEDIR); }));
}

Status FolderHandle::Query(const std::string& iName, Kind& oKind) const {
  struct stat info {};
  if (Uninterrupted([&] { return Calls().StatAt(_folder, iName.c_str(), &info, AT_SYMLINK_NOFOLLOW); }) == 0) {
    oKind = S_ISDIR(info.st_mode) ? Kind::Folder : Kind::Other;
    return {};
  }
  const Status status = Status::OfLastCall();
  if (status.GetNative() != ENOENT) {
    return status;
  }
  oKind = Kind::Missing;
  return {};
}

}  // namespace VYX::Os
