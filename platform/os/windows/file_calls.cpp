#include "platform/os/windows/file_calls.h"

#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os::Windows {
namespace {

void* OrNull(HANDLE iHandle) noexcept {
  return iHandle == INVALID_HANDLE_VALUE ? nullptr : iHandle;
}

OVERLAPPED At(const std::uint64_t* iOffset) noexcept {
  OVERLAPPED place = {};
  if (iOffset != nullptr) {
    place.Offset = static_cast<DWORD>(*iOffset);
    place.OffsetHigh = static_cast<DWORD>(*iOffset >> 32);
  }
  return place;
}

void* Open(const wchar_t* iPath, std::uint32_t iRights, std::uint32_t iSharing, void* iSecurity,
           std::uint32_t iDisposition, std::uint32_t iFlags) {
  auto* const security = static_cast<SECURITY_ATTRIBUTES*>(iSecurity);
  return OrNull(CreateFileW(iPath, iRights, iSharing, security, iDisposition, iFlags, nullptr));
}

bool Read(void* iFile, void* oBuffer, std::uint32_t iSize, const std::uint64_t* iOffset, std::uint32_t* oRead) {
  OVERLAPPED place = At(iOffset);
  DWORD count = 0;
  const bool isRead = ReadFile(iFile, oBuffer, iSize, &count, iOffset == nullptr ? nullptr : &place) != 0;
  *oRead = count;
  return isRead;
}

bool Write(void* iFile, const void* iData, std::uint32_t iSize, const std::uint64_t* iOffset, std::uint32_t* oWritten) {
  OVERLAPPED place = At(iOffset);
  DWORD count = 0;
  const bool isWritten = WriteFile(iFile, iData, iSize, &count, iOffset == nullptr ? nullptr : &place) != 0;
  *oWritten = count;
  return isWritten;
}

bool Describe(void* iFile, void* oInfo) {
  return GetFileInformationByHandle(iFile, static_cast<BY_HANDLE_FILE_INFORMATION*>(oInfo)) != 0;
}

bool Change(void* iFile, int iKind, void* iInfo, std::uint32_t iSize) {
  return SetFileInformationByHandle(iFile, static_cast<FILE_INFO_BY_HANDLE_CLASS>(iKind), iInfo, iSize) != 0;
}

void* FindFirst(const wchar_t* iPattern, void* oData) {
  return OrNull(
      FindFirstFileExW(iPattern, FindExInfoBasic, oData, FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH));
}

bool FindNext(void* iSearch, void* oData) {
  return FindNextFileW(iSearch, static_cast<WIN32_FIND_DATAW*>(oData)) != 0;
}

}  // namespace

constinit FileCalls gFileCalls = {
    .OpenFile = Open,
    .Read = Read,
    .Write = Write,
    .Close = [](void* iFile) { return CloseHandle(iFile) != 0; },
    .Flush = [](void* iFile) { return FlushFileBuffers(iFile) != 0; },
    .DescribeFile = Describe,
    .ChangeFile = Change,
    .FinalPath = [](void* iFile, wchar_t* oPath, std::uint32_t iSize) -> std::uint32_t {
      return GetFinalPathNameByHandleW(iFile, oPath, iSize, 0);
    },
    .Attributes = [](const wchar_t* iPath) -> std::uint32_t { return GetFileAttributesW(iPath); },
    .ChangeAttributes = [](const wchar_t* iPath,
                           std::uint32_t iAttributes) { return SetFileAttributesW(iPath, iAttributes) != 0; },
    .RemoveFile = [](const wchar_t* iPath) { return DeleteFileW(iPath) != 0; },
    .Move = [](const wchar_t* iFrom, const wchar_t* iTo,
               std::uint32_t iFlags) { return MoveFileExW(iFrom, iTo, iFlags) != 0; },
    .MakeFolder =
        [](const wchar_t* iPath, void* iSecurity) {
          return CreateDirectoryW(iPath, static_cast<SECURITY_ATTRIBUTES*>(iSecurity)) != 0;
        },
    .RemoveFolder = [](const wchar_t* iPath) { return RemoveDirectoryW(iPath) != 0; },
    .FindFirst = FindFirst,
    .FindNext = FindNext,
    .EndSearch = [](void* iSearch) { return FindClose(iSearch) != 0; },
    .FullPath = [](const wchar_t* iPath, std::uint32_t iSize, wchar_t* oPath) -> std::uint32_t {
      return GetFullPathNameW(iPath, iSize, oPath, nullptr);
    },
    .CurrentFolder = [](std::uint32_t iSize, wchar_t* oPath) -> std::uint32_t {
      return GetCurrentDirectoryW(iSize, oPath);
    },
};

}  // namespace VYX::Os::Windows
