#include "platform/os/files.h"

#include <vector>

#include "platform/os/windows/file_info.h"
#include "platform/os/windows/path_text.h"
#include "platform/os/windows/private_access.h"
#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os {
namespace {

using Windows::FileHandle;
using Windows::gFileCalls;
using Windows::ToHandle;

constexpr DWORD kEverybody = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

Status OutcomeOf(bool iIsDone) noexcept {
  return iIsDone ? Status() : Status::OfLastCall();
}

// Rights without that of writing anywhere else put every write at the end, in one step.
constexpr DWORD kAppend = FILE_APPEND_DATA | FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES | SYNCHRONIZE;

void* Open(const std::wstring& iPath, OpenMode iMode, void* iSecurity) {
  // A new name is taken also by a link that leads nowhere.
  constexpr DWORD kNew = FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT;
  constexpr DWORD kOwn = GENERIC_WRITE | READ_CONTROL | WRITE_DAC;
  const auto open = [&](DWORD iRights, DWORD iDisposition, DWORD iFlags) {
    return gFileCalls.OpenFile(iPath.c_str(), iRights, kEverybody, iSecurity, iDisposition, iFlags);
  };
  switch (iMode) {
    case OpenMode::Read:
      return open(GENERIC_READ, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL);
    case OpenMode::Write:
      return open(GENERIC_WRITE, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL);
    case OpenMode::Append:
    case OpenMode::AppendLog:
      // Who may read a log file is what its folder hands down, and a link cannot be made by anybody here.
      return open(kAppend, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL);
    case OpenMode::WriteLog:
      return open(kAppend, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL);
    case OpenMode::AppendNew:
      return open(kAppend, CREATE_NEW, kNew);
    case OpenMode::WriteOwner:
      return open(kOwn, CREATE_NEW, kNew);
    default:
      return open(GENERIC_WRITE, CREATE_NEW, kNew);
  }
}

Status TestBothPaths(const std::string& iFrom, const std::string& iTo, std::wstring& oFrom, std::wstring& oTo) {
  const Status status = Windows::ToWidePath(iFrom, oFrom);
  return status.IsOk() ? Windows::ToWidePath(iTo, oTo) : status;
}

// The way of the newer hosts, which also replaces a file that others have open.
bool RenameOpenFile(const std::wstring& iFrom, const std::wstring& iTo) {
  constexpr DWORD kReplace = 1;
  constexpr DWORD kAsPosix = 2;
  constexpr int kRenameEx = 22;  // FileRenameInfoEx
  const FileHandle file(gFileCalls.OpenFile(iFrom.c_str(), DELETE | SYNCHRONIZE, kEverybody, nullptr, OPEN_EXISTING,
                                            FILE_FLAG_OPEN_REPARSE_POINT));
  if (!file.IsOpen()) {
    return false;
  }
  const std::size_t nameSize = iTo.size() * sizeof(wchar_t);
  std::vector<std::uint64_t> buffer((sizeof(FILE_RENAME_INFO) + nameSize) / sizeof(std::uint64_t) + 1);
  auto* const info = static_cast<FILE_RENAME_INFO*>(static_cast<void*>(buffer.data()));
  // The flags share their place with the one that the older way knows.
  *static_cast<DWORD*>(static_cast<void*>(buffer.data())) = kReplace | kAsPosix;
  info->FileNameLength = static_cast<DWORD>(nameSize);
  iTo.copy(info->FileName, iTo.size());
  const auto size = static_cast<std::uint32_t>(buffer.size() * sizeof(std::uint64_t));
  return gFileCalls.ChangeFile(file.Get(), kRenameEx, info, size);
}

Status PathOfHandle(void* iFile, std::wstring& oPath) {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const std::uint32_t length = gFileCalls.FinalPath(iFile, path.data(), static_cast<std::uint32_t>(path.size()));
    if (length == 0) {
      return Status::OfLastCall();
    }
    const bool isWhole = length < path.size();
    path.resize(length);
    if (isWhole) {
      oPath = std::move(path);
      return {};
    }
  }
}

}  // namespace

Status OpenFile(const std::string& iPath, OpenMode iMode, FileDescriptor& oFile, bool iIsText) {
  std::wstring path;
  if (const Status status = Windows::ToWidePath(iPath, path); !status.IsOk()) {
    return status;
  }
  void* file = nullptr;
  if (iMode == OpenMode::WriteOwner) {
    Windows::PrivateAccess access;
    if (!access.GetStatus().IsOk()) {
      return access.GetStatus();
    }
    file = Open(path, iMode, access.Get());
  } else {
    file = Open(path, iMode, nullptr);
  }
  if (file == nullptr) {
    return Status::OfLastCall();
  }
  oFile = Windows::ToDescriptor(file, iIsText);
  return {};
}

Status CloseFile(FileDescriptor iFile) {
  return OutcomeOf(gFileCalls.Close(ToHandle(iFile)));
}

Status FlushFile(FileDescriptor iFile) {
  return OutcomeOf(gFileCalls.Flush(ToHandle(iFile)));
}

Status FlushFolder(const std::string& iPath) {
  // The file systems of this host keep their folders without being asked, and renaming here waits for the disk.
  FileInfo info;
  const Status status = DescribePath(iPath, info);
  return !status.IsOk() || info.IsFolder() ? status : Failure::NotAFolder();
}

Status DescribeFile(FileDescriptor iFile, FileInfo& oInfo) {
  return Windows::Describe(ToHandle(iFile), oInfo);
}

Status DescribePath(const std::string& iPath, FileInfo& oInfo) {
  std::wstring path;
  FileHandle file;
  Status status = Windows::ToWidePath(iPath, path);
  if (status.IsOk()) {
    status = Windows::OpenForQuery(path, false, file);
  }
  return status.IsOk() ? Windows::Describe(file.Get(), oInfo) : status;
}

Status TakeOverPermissions(FileDescriptor iFile, const FileInfo& iFrom) {
  FILE_ID_DESCRIPTOR id = {};
  id.dwSize = sizeof id;
  id.Type = FileIdType;
  id.FileId.QuadPart = static_cast<LONGLONG>(iFrom.file);
  HANDLE const opened = OpenFileById(ToHandle(iFile), &id, READ_CONTROL, kEverybody, nullptr, 0);
  const FileHandle from(opened == INVALID_HANDLE_VALUE ? nullptr : opened);
  if (const Status status = Windows::TakeOverAccess(ToHandle(iFile), from.Get()); !status.IsOk()) {
    return status;
  }
  constexpr DWORD kKept = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                          FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
  FILE_BASIC_INFO basic = {};
  basic.FileAttributes = (iFrom.permissions & kKept) == 0 ? FILE_ATTRIBUTE_NORMAL : iFrom.permissions & kKept;
  return OutcomeOf(gFileCalls.ChangeFile(ToHandle(iFile), FileBasicInfo, &basic, sizeof basic));
}

Status TestExistence(const std::string& iPath) {
  std::wstring path;
  if (const Status status = Windows::ToWidePath(iPath, path); !status.IsOk()) {
    return status;
  }
  const std::uint32_t attributes = gFileCalls.Attributes(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    return Status::OfLastCall();
  }
  FileHandle file;
  return Windows::IsLink(attributes) ? Windows::OpenForQuery(path, false, file) : Status();
}

Status TestWritability(const std::string& iPath) {
  std::wstring path;
  if (const Status status = Windows::ToWidePath(iPath, path); !status.IsOk()) {
    return status;
  }
  // For a folder the same right means to add files.
  const FileHandle file(gFileCalls.OpenFile(path.c_str(), FILE_WRITE_DATA, kEverybody, nullptr, OPEN_EXISTING,
                                            FILE_FLAG_BACKUP_SEMANTICS));
  return OutcomeOf(file.IsOpen());
}

Status RemoveFile(const std::string& iPath) {
  std::wstring path;
  if (const Status status = Windows::ToWidePath(iPath, path); !status.IsOk()) {
    return status;
  }
  if (gFileCalls.RemoveFile(path.c_str())) {
    return {};
  }
  const Status status = Status::OfLastCall();
  const std::uint32_t attributes = gFileCalls.Attributes(path.c_str());
  constexpr std::uint32_t kFolderLink = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
  // A link to a folder is removed like a folder, which leaves its target alone.
  const bool isFolderLink = attributes != INVALID_FILE_ATTRIBUTES && (attributes & kFolderLink) == kFolderLink;
  return isFolderLink ? OutcomeOf(gFileCalls.RemoveFolder(path.c_str())) : status;
}

Status RenameOver(const std::string& iFrom, const std::string& iTo) {
  std::wstring from;
  std::wstring to;
  if (const Status status = TestBothPaths(iFrom, iTo, from, to); !status.IsOk()) {
    return status;
  }
  if (gFileCalls.Move(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
    return {};
  }
  const Status status = Status::OfLastCall();
  const bool isInUse = status.GetNative() == ERROR_ACCESS_DENIED || status.GetNative() == ERROR_SHARING_VIOLATION;
  return isInUse && RenameOpenFile(from, to) ? Status() : status;
}

Status RenameNew(const std::string& iFrom, const std::string& iTo) {
  std::wstring from;
  std::wstring to;
  const Status status = TestBothPaths(iFrom, iTo, from, to);
  return status.IsOk() ? OutcomeOf(gFileCalls.Move(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH)) : status;
}

std::string PathOf(FileDescriptor iFile) {
  std::wstring path;
  return PathOfHandle(ToHandle(iFile), path).IsOk() ? Windows::ToPathText(path) : std::string();
}

Status ResolveLinks(const std::string& iPath, std::string& oPath) {
  std::wstring path;
  FileHandle file;
  Status status = Windows::ToWidePath(iPath, path);
  if (status.IsOk()) {
    status = Windows::OpenForQuery(path, false, file);
  }
  std::wstring resolved;
  if (status.IsOk()) {
    status = PathOfHandle(file.Get(), resolved);
  }
  if (status.IsOk()) {
    oPath = Windows::ToPathText(resolved);
  }
  return status;
}

}  // namespace VYX::Os
