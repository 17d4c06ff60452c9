#pragma once

#include <cstdint>

namespace VYX::Os::Windows {

/// The calls about files and folders that can fail, as one table, in types that need no header of the host's. A test
/// replaces entries to make a chosen call fail or to shorten reads and writes; a failing entry leaves its cause behind
/// with SetLastError, as the host does.
struct FileCalls {
  /// CreateFileW, shared with everybody unless said otherwise, not inherited; null on failure.
  void* (*OpenFile)(const wchar_t* iPath, std::uint32_t iRights, std::uint32_t iSharing, void* iSecurity,
                    std::uint32_t iDisposition, std::uint32_t iFlags);
  /// ReadFile, at an offset where there is one.
  bool (*Read)(void* iFile, void* oBuffer, std::uint32_t iSize, const std::uint64_t* iOffset, std::uint32_t* oRead);
  /// WriteFile, at an offset where there is one.
  bool (*Write)(void* iFile, const void* iData, std::uint32_t iSize, const std::uint64_t* iOffset,
                std::uint32_t* oWritten);
  /// CloseHandle.
  bool (*Close)(void* iFile);
  /// FlushFileBuffers.
  bool (*Flush)(void* iFile);
  /// GetFileInformationByHandle, into a BY_HANDLE_FILE_INFORMATION.
  bool (*DescribeFile)(void* iFile, void* oInfo);
  /// SetFileInformationByHandle.
  bool (*ChangeFile)(void* iFile, int iKind, void* iInfo, std::uint32_t iSize);
  /// GetFinalPathNameByHandleW; the length, 0 on failure.
  std::uint32_t (*FinalPath)(void* iFile, wchar_t* oPath, std::uint32_t iSize);
  /// GetFileAttributesW; 0xFFFFFFFF on failure.
  std::uint32_t (*Attributes)(const wchar_t* iPath);
  /// SetFileAttributesW.
  bool (*ChangeAttributes)(const wchar_t* iPath, std::uint32_t iAttributes);
  /// DeleteFileW.
  bool (*RemoveFile)(const wchar_t* iPath);
  /// MoveFileExW.
  bool (*Move)(const wchar_t* iFrom, const wchar_t* iTo, std::uint32_t iFlags);
  /// CreateDirectoryW.
  bool (*MakeFolder)(const wchar_t* iPath, void* iSecurity);
  /// RemoveDirectoryW.
  bool (*RemoveFolder)(const wchar_t* iPath);
  /// FindFirstFileExW, into a WIN32_FIND_DATAW; null on failure.
  void* (*FindFirst)(const wchar_t* iPattern, void* oData);
  /// FindNextFileW.
  bool (*FindNext)(void* iSearch, void* oData);
  /// FindClose.
  bool (*EndSearch)(void* iSearch);
  /// GetFullPathNameW; the length, 0 on failure.
  std::uint32_t (*FullPath)(const wchar_t* iPath, std::uint32_t iSize, wchar_t* oPath);
  /// GetCurrentDirectoryW; the length, 0 on failure.
  std::uint32_t (*CurrentFolder)(std::uint32_t iSize, wchar_t* oPath);
};

extern FileCalls gFileCalls;

}  // namespace VYX::Os::Windows
