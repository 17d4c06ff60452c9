#include "platform/os/files.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>

#include "platform/os/posix/file_info.h"
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

Status OutcomeOf(int iResult) noexcept {
  return iResult == -1 ? Status::OfLastCall() : Status();
}

int Native(FileDescriptor iFile) noexcept {
  return static_cast<int>(iFile);
}

int FlagsOf(OpenMode iMode) noexcept {
  // Without O_NONBLOCK the opening of a pipe would wait for its other end.
  constexpr int kAlways = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
  switch (iMode) {
    case OpenMode::Read:
      return kAlways | O_RDONLY;
    case OpenMode::Write:
      return kAlways | O_WRONLY | O_CREAT | O_TRUNC;
    case OpenMode::Append:
      return kAlways | O_WRONLY | O_CREAT | O_APPEND;
    case OpenMode::AppendLog:
      return kAlways | O_WRONLY | O_CREAT | O_APPEND | O_NOFOLLOW;
    case OpenMode::WriteLog:
      return kAlways | O_WRONLY | O_CREAT | O_APPEND | O_TRUNC | O_NOFOLLOW;
    case OpenMode::AppendNew:
      return kAlways | O_WRONLY | O_CREAT | O_EXCL | O_APPEND;
    default:
      return kAlways | O_WRONLY | O_CREAT | O_EXCL;
  }
}

// Moves a file off the numbers of the standard streams.
Status MoveUp(int& ioFile) noexcept {
  const int moved = Calls().MoveDescriptor(ioFile, kLowestFile);
  const Status status = OutcomeOf(moved);
  Calls().Close(ioFile);
  ioFile = moved;
  return status;
}

// A folder opens for reading like a file, and what is no regular file must wait for its data again.
Status SettleKind(int iFile) noexcept {
  struct stat info {};
  if (Calls().StatFile(iFile, &info) != 0) {
    return Status::OfLastCall();
  }
  if (S_ISDIR(info.st_mode)) {
    return Status(EISDIR);
  }
  if (!S_ISREG(info.st_mode)) {
    return OutcomeOf(Calls().MakeBlocking(iFile));
  }
  return {};
}

mode_t PermissionsOf(OpenMode iMode) noexcept {
  constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;
  switch (iMode) {
    case OpenMode::WriteOwner:
      return kOwnerOnly;
    case OpenMode::AppendLog:
    case OpenMode::WriteLog:
      return kOwnerOnly | S_IRGRP;
    default:
      return kOwnerOnly | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
  }
}

bool MayEverybodyWriteTheFolderOf(const std::string& iPath) {
  const std::size_t separator = iPath.rfind('/');
  const std::string folder = separator == std::string::npos ? "." : iPath.substr(0, separator + 1);
  struct stat info {};
  return Calls().StatPath(folder.c_str(), &info) != 0 || (info.st_mode & S_IWOTH) != 0;
}

// The flags forbid a link only where it could be anybody's.
int Open(const std::string& iPath, OpenMode iMode) {
  const int flags = FlagsOf(iMode);
  const auto open = [&](int iFlags) {
    return Uninterrupted([&] { return Calls().Open(iPath.c_str(), iFlags, PermissionsOf(iMode)); });
  };
  const int file = open(flags);
  if (file != -1 || errno != ELOOP || (flags & O_NOFOLLOW) == 0) {
    return file;
  }
  if (MayEverybodyWriteTheFolderOf(iPath)) {
    errno = EACCES;
    return -1;
  }
  return open(flags & ~O_NOFOLLOW);
}

bool IsNewFile(OpenMode iMode) noexcept {
  return (FlagsOf(iMode) & O_EXCL) != 0;
}

// Closes what could not be opened to the end, and leaves no new name behind.
void Discard(int iFile, const std::string& iPath, OpenMode iMode) noexcept {
  if (iFile != -1) {
    Calls().Close(iFile);
  }
  if (IsNewFile(iMode)) {
    Calls().UnlinkAt(AT_FDCWD, iPath.c_str(), 0);
  }
}

}  // namespace

Status OpenFile(const std::string& iPath, OpenMode iMode, FileDescriptor& oFile, bool) {
  int file = Open(iPath, iMode);
  if (file == -1) {
    return Status::OfLastCall();
  }
  Status status;
  if (file < kLowestFile) {
    status = MoveUp(file);
  }
  // What was just created is a regular file.
  if (status.IsOk() && !IsNewFile(iMode)) {
    status = SettleKind(file);
  }
  if (!status.IsOk()) {
    Discard(file, iPath, iMode);
    return status;
  }
  oFile = static_cast<FileDescriptor>(file);
  return {};
}

Status CloseFile(FileDescriptor iFile) {
  // An interrupted close has closed all the same; repeating it could close another thread's file.
  if (Calls().Close(Native(iFile)) == -1 && errno != EINTR) {
    return Status::OfLastCall();
  }
  return {};
}

Status ReadFully(FileDescriptor iFile, void* oBuffer, std::size_t iSize, std::size_t& oRead) {
  oRead = 0;
  while (oRead < iSize) {
    char* const target = static_cast<char*>(oBuffer) + oRead;
    const ssize_t count = Uninterrupted([&] { return Calls().Read(Native(iFile), target, iSize - oRead); });
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

Status WriteFully(FileDescriptor iFile, const void* iData, std::size_t iSize, std::size_t& oWritten) {
  oWritten = 0;
  while (oWritten < iSize) {
    const char* const source = static_cast<const char*>(iData) + oWritten;
    const ssize_t count = Uninterrupted([&] { return Calls().Write(Native(iFile), source, iSize - oWritten); });
    if (count == -1) {
      return Status::OfLastCall();
    }
    if (count == 0) {
      return Failure::DeviceFull();
    }
    oWritten += static_cast<std::size_t>(count);
  }
  return {};
}

Status FlushFile(FileDescriptor iFile) {
  return OutcomeOf(Uninterrupted([&] { return Calls().Sync(Native(iFile)); }));
}

Status FlushFolder(const std::string& iPath) {
  const int folder =
      Uninterrupted([&] { return Calls().Open(iPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, mode_t{0}); });
  if (folder == -1) {
    return Status::OfLastCall();
  }
  const Status status = OutcomeOf(Uninterrupted([&] { return Calls().Sync(folder); }));
  Calls().Close(folder);
  // Some file systems keep their folders without being asked, and say so by refusing.
  return status.GetNative() == EINVAL ? Status() : status;
}

Status DescribeFile(FileDescriptor iFile, FileInfo& oInfo) {
  struct stat info {};
  if (Calls().StatFile(Native(iFile), &info) != 0) {
    return Status::OfLastCall();
  }
  oInfo = Posix::ToFileInfo(info);
  return {};
}

Status DescribePath(const std::string& iPath, FileInfo& oInfo) {
  struct stat info {};
  if (Uninterrupted([&] { return Calls().StatPath(iPath.c_str(), &info); }) != 0) {
    return Status::OfLastCall();
  }
  oInfo = Posix::ToFileInfo(info);
  return {};
}

Status TakeOverPermissions(FileDescriptor iFile, const FileInfo& iFrom) {
  // Owner first: changing it clears the bits that raise privileges. Who may not give files away keeps them.
  const bool isOwnerTakenOver = Calls().ChangeOwner(Native(iFile), iFrom.owner, iFrom.group) == 0;
  constexpr std::uint32_t kRaising = S_ISUID | S_ISGID;
  const std::uint32_t mode = isOwnerTakenOver ? iFrom.permissions : iFrom.permissions & ~kRaising;
  return OutcomeOf(Uninterrupted([&] { return Calls().ChangeMode(Native(iFile), static_cast<mode_t>(mode)); }));
}

Status TestExistence(const std::string& iPath) {
  return OutcomeOf(Uninterrupted([&] { return Calls().Access(iPath.c_str(), F_OK); }));
}

Status TestWritability(const std::string& iPath) {
  return OutcomeOf(Uninterrupted([&] { return Calls().Access(iPath.c_str(), W_OK); }));
}

Status RemoveFile(const std::string& iPath) {
  return OutcomeOf(Uninterrupted([&] { return Calls().UnlinkAt(AT_FDCWD, iPath.c_str(), 0); }));
}

Status RenameOver(const std::string& iFrom, const std::string& iTo) {
  return OutcomeOf(Uninterrupted([&] { return Calls().Rename(iFrom.c_str(), iTo.c_str()); }));
}

Status RenameNew(const std::string& iFrom, const std::string& iTo) {
  return OutcomeOf(Uninterrupted([&] { return Calls().RenameNew(iFrom.c_str(), iTo.c_str()); }));
}

Status ResolveLinks(const std::string& iPath, std::string& oPath) {
  const std::unique_ptr<char, decltype(&std::free)> resolved(Calls().RealPath(iPath.c_str(), nullptr), &std::free);
  if (resolved == nullptr) {
    return Status::OfLastCall();
  }
  oPath = resolved.get();
  return {};
}

}  // namespace VYX::Os
