#pragma once

#include <dirent.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <time.h>

#include <cerrno>
#include <cstddef>

namespace VYX::Os::Posix {

/// Every call to the host that can fail, as one table. A test replaces entries to make a chosen call fail, to shorten
/// reads and writes or to settle the clock; the entries keep the host's own conventions (-1 or null, and errno).
struct SystemCalls {
  int (*Open)(const char* iPath, int iFlags, mode_t iMode);
  int (*OpenAt)(int iFolder, const char* iPath, int iFlags);
  int (*CreateAt)(int iFolder, const char* iPath, int iFlags, mode_t iMode);
  ssize_t (*Read)(int iFile, void* oBuffer, std::size_t iSize);
  ssize_t (*Write)(int iFile, const void* iData, std::size_t iSize);
  ssize_t (*ReadAt)(int iFile, void* oBuffer, std::size_t iSize, off_t iOffset);
  ssize_t (*WriteAt)(int iFile, const void* iData, std::size_t iSize, off_t iOffset);
  int (*Close)(int iFile);
  int (*MoveDescriptor)(int iFile, int iLowest);
  int (*MakeBlocking)(int iFile);
  int (*StatFile)(int iFile, struct stat* oInfo);
  int (*StatPath)(const char* iPath, struct stat* oInfo);
  int (*StatAt)(int iFolder, const char* iPath, struct stat* oInfo, int iFlags);
  int (*Access)(const char* iPath, int iMode);
  int (*Sync)(int iFile);
  int (*ChangeMode)(int iFile, mode_t iMode);
  int (*ChangeOwner)(int iFile, uid_t iOwner, gid_t iGroup);
  int (*Rename)(const char* iFrom, const char* iTo);
  int (*RenameNew)(const char* iFrom, const char* iTo);
  int (*RenameAt)(int iFromFolder, const char* iFrom, int iToFolder, const char* iTo);
  int (*UnlinkAt)(int iFolder, const char* iPath, int iFlags);
  int (*MakeFolder)(const char* iPath, mode_t iMode);
  int (*MakeFolderAt)(int iFolder, const char* iPath, mode_t iMode);
  char* (*RealPath)(const char* iPath, char* oPath);
  char* (*CurrentFolder)(char* oPath, std::size_t iSize);
  DIR* (*OpenFolder)(const char* iPath);
  DIR* (*AdoptFolder)(int iFile);
  dirent* (*ReadFolder)(DIR* iFolder);
  int (*CloseFolder)(DIR* iFolder);
  ssize_t (*ReadLink)(const char* iPath, char* oTarget, std::size_t iSize);
  ssize_t (*Random)(void* oBuffer, std::size_t iSize);
  int (*Spawn)(pid_t* oChild, const char* iPath, const posix_spawn_file_actions_t* iActions,
               const posix_spawnattr_t* iAttributes, char* const iArguments[], char* const iEnvironment[]);
  int (*WaitId)(idtype_t iKind, id_t iId, siginfo_t* oInfo, int iOptions);
  int (*OpenProcess)(pid_t iProcess);
  int (*SignalProcess)(int iProcess, int iSignal);
  int (*Poll)(pollfd* ioRequests, nfds_t iCount, int iTimeout);
  int (*GetNiceness)(id_t iThread);
  int (*SetNiceness)(id_t iThread, int iNiceness);
  int (*ClockGetTime)(clockid_t iClock, timespec* oTime);
};

extern SystemCalls gSystemCalls;

inline SystemCalls& Calls() noexcept {
  return gSystemCalls;
}

/// Repeats a call that a signal interrupted.
template <typename Call>
auto Uninterrupted(Call iCall) noexcept {
  auto result = iCall();
  while (result == -1 && errno == EINTR) {
    result = iCall();
  }
  return result;
}

}  // namespace VYX::Os::Posix
