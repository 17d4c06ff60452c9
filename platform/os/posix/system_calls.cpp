#include "platform/os/posix/system_calls.h"

#if !defined(__unix__)
#error "this source is for POSIX hosts"
#endif

#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/random.h>
#include <sys/resource.h>
#include <sys/syscall.h>
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

// The one call that answers its error instead of leaving it.
int SpawnWithErrno(pid_t* oChild, const char* iPath, const posix_spawn_file_actions_t* iActions,
                   const posix_spawnattr_t* iAttributes, char* const iArguments[], char* const iEnvironment[]) {
  errno = posix_spawn(oChild, iPath, iActions, iAttributes, iArguments, iEnvironment);
  return errno == 0 ? 0 : -1;
}

int OpenProcessDescriptor(pid_t iProcess) {
  return static_cast<int>(syscall(SYS_pidfd_open, iProcess, 0));
}

int SignalThroughDescriptor(int iProcess, int iSignal) {
  return static_cast<int>(syscall(SYS_pidfd_send_signal, iProcess, iSignal, nullptr, 0));
}

int GetNicenessOf(id_t iThread) {
  return getpriority(PRIO_PROCESS, iThread);
}

int SetNicenessOf(id_t iThread, int iNiceness) {
  return setpriority(PRIO_PROCESS, iThread, iNiceness);
}

ssize_t RandomBytes(void* oBuffer, std::size_t iSize) {
  return getrandom(oBuffer, iSize, 0);
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
    .ReadLink = readlink,
    .Random = RandomBytes,
    .Spawn = SpawnWithErrno,
    .WaitId = waitid,
    .OpenProcess = OpenProcessDescriptor,
    .SignalProcess = SignalThroughDescriptor,
    .Poll = poll,
    .GetNiceness = GetNicenessOf,
    .SetNiceness = SetNicenessOf,
    .ClockGetTime = clock_gettime,
};

}  // namespace VYX::Os::Posix
