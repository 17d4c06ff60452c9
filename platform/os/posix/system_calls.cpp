#include "platform/os/posix/system_calls.h"

#if !defined(__unix__)
#error "this source is for POSIX hosts"
#endif

#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>

namespace VYX::Os::Posix {
namespace {

int OpenWithMode(const char* iPath, int iFlags, mode_t iMode) {
  return open(iPath, iFlags, iMode);
}

int OpenRelative(int iFolder, const char* iPath, int iFlags) {
  return openat(iFolder, iPath, iFlags);
}

int CreateRelative(int iFolder, const char* iPath, int iFlags, mode_t iMode) {
  return openat(iFolder, iPath, iFlags, iMode);
}

int Duplicate(int iFile, int iLowest) {
  return fcntl(iFile, F_DUPFD_CLOEXEC, iLowest);
}

int ClearNonBlocking(int iFile) {
  const int flags = fcntl(iFile, F_GETFL);
  return flags == -1 ? -1 : fcntl(iFile, F_SETFL, flags & ~O_NONBLOCK);
}

int AccessAsEffectiveUser(const char* iPath, int iMode) {
  return faccessat(AT_FDCWD, iPath, iMode, AT_EACCESS);
}

// Hard-linking is the portable way to give a file a name only if that name is free.
int RenameUnlessTaken(const char* iFrom, const char* iTo) {
  if (link(iFrom, iTo) != 0) {
    return -1;
  }
  return unlink(iFrom);
}

}  // namespace

constinit SystemCalls gSystemCalls = {
    .Open = OpenWithMode,
    .OpenAt = OpenRelative,
    .CreateAt = CreateRelative,
    .Read = read,
    .Write = write,
    .ReadAt = pread,
    .WriteAt = pwrite,
    .Close = close,
    .MoveDescriptor = Duplicate,
    .MakeBlocking = ClearNonBlocking,
    .StatFile = fstat,
    .StatPath = stat,
    .StatAt = fstatat,
    .Access = AccessAsEffectiveUser,
    .Sync = fsync,
    .ChangeMode = fchmod,
    .ChangeOwner = fchown,
    .Rename = rename,
    .RenameNew = RenameUnlessTaken,
    .RenameAt = renameat,
    .UnlinkAt = unlinkat,
    .MakeFolder = mkdir,
    .MakeFolderAt = mkdirat,
    .RealPath = realpath,
    .CurrentFolder = getcwd,
    .OpenFolder = opendir,
    .AdoptFolder = fdopendir,
    .ReadFolder = readdir,
    .CloseFolder = closedir,
    .ClockGetTime = clock_gettime,
};

}  // namespace VYX::Os::Posix
