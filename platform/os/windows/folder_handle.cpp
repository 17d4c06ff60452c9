#include "platform/os/folder_handle.h"

#include "platform/os/windows/file_info.h"
#include "platform/os/windows/path_text.h"
#include "platform/os/windows/private_access.h"
#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

// The host has no calls that are relative to an open folder. A folder that is open without the right to be renamed or
// removed keeps its path, and so do all those above it: the path and the folder are the same while it is open.
namespace VYX::Os {
namespace {

using Windows::gFileCalls;

constexpr DWORD kStays = FILE_SHARE_READ | FILE_SHARE_WRITE;

Status OutcomeOf(bool iIsDone) noexcept {
  return iIsDone ? Status() : Status::OfLastCall();
}

void* HandleOf(int iFolder) noexcept {
  return Windows::ToHandle(static_cast<FileDescriptor>(iFolder));
}

Status OpenAt(const std::wstring& iPath, bool iIsLinkRefused, int& oFolder) {
  const DWORD flags = FILE_FLAG_BACKUP_SEMANTICS | (iIsLinkRefused ? FILE_FLAG_OPEN_REPARSE_POINT : 0);
  Windows::FileHandle folder(gFileCalls.OpenFile(iPath.c_str(), FILE_LIST_DIRECTORY | FILE_READ_ATTRIBUTES, kStays,
                                                 nullptr, OPEN_EXISTING, flags));
  if (!folder.IsOpen()) {
    return Status::OfLastCall();
  }
  BY_HANDLE_FILE_INFORMATION info = {};
  if (!gFileCalls.DescribeFile(folder.Get(), &info)) {
    return Status::OfLastCall();
  }
  const bool isFolder = (info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  // Some hosts open the target all the same; the name itself tells.
  const bool isLink = iIsLinkRefused &&
                      (Windows::IsLink(info.dwFileAttributes) || Windows::IsLink(gFileCalls.Attributes(iPath.c_str())));
  if (!isFolder || isLink) {
    return Failure::NotAFolder();
  }
  oFolder = static_cast<int>(Windows::ToDescriptor(folder.Release(), false));
  return {};
}

Status PathOfName(const std::string& iFolder, const std::string& iName, std::wstring& oPath) {
  std::wstring folder;
  std::wstring name;
  if (!Windows::ToWideName(iFolder, folder) || !Windows::ToWideName(iName, name) || name.empty() ||
      name.find_first_of(L"\\/:") != std::wstring::npos) {
    return Failure::BadName();
  }
  oPath = Windows::Join(folder, name);
  return {};
}

}  // namespace

void FolderHandle::Close() noexcept {
  if (_folder != kNone) {
    gFileCalls.Close(HandleOf(std::exchange(_folder, kNone)));
  }
}

Status FolderHandle::Open(const std::string& iPath) {
  Close();
  std::wstring path;
  Status status = Windows::ToWidePath(iPath, path);
  if (status.IsOk()) {
    status = OpenAt(path, false, _folder);
  }
  if (status.IsOk()) {
    _path = Windows::ToNameText(path);
  }
  return status;
}

Status FolderHandle::OpenFolder(const std::string& iName, FolderHandle& oFolder) const {
  std::wstring path;
  FolderHandle folder;
  Status status = PathOfName(_path, iName, path);
  if (status.IsOk()) {
    status = OpenAt(path, true, folder._folder);
  }
  if (status.IsOk()) {
    folder._path = Windows::ToNameText(path);
    oFolder = std::move(folder);
  }
  return status;
}

Status FolderHandle::CreateFolder(const std::string& iName, bool iIsPrivate) const {
  std::wstring path;
  if (const Status status = PathOfName(_path, iName, path); !status.IsOk()) {
    return status;
  }
  if (!iIsPrivate) {
    return OutcomeOf(gFileCalls.MakeFolder(path.c_str(), nullptr));
  }
  Windows::PrivateAccess access;
  return access.GetStatus().IsOk() ? OutcomeOf(gFileCalls.MakeFolder(path.c_str(), access.Get())) : access.GetStatus();
}

Status FolderHandle::CreateFile(const std::string& iName, bool, FileDescriptor& oFile) const {
  std::wstring path;
  if (const Status status = PathOfName(_path, iName, path); !status.IsOk()) {
    return status;
  }
  constexpr DWORD kEverybody = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  void* const file = gFileCalls.OpenFile(path.c_str(), GENERIC_WRITE, kEverybody, nullptr, CREATE_NEW,
                                         FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT);
  if (file == nullptr) {
    return Status::OfLastCall();
  }
  oFile = Windows::ToDescriptor(file, false);
  return {};
}

Status FolderHandle::MoveFile(const std::string& iName, const FolderHandle& iFolder,
                              const std::string& iNewName) const {
  std::wstring from;
  std::wstring to;
  Status status = PathOfName(_path, iName, from);
  if (status.IsOk()) {
    status = PathOfName(iFolder._path, iNewName, to);
  }
  return status.IsOk() ? OutcomeOf(gFileCalls.Move(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING)) : status;
}

Status FolderHandle::RemoveFile(const std::string& iName) const {
  std::wstring path;
  const Status status = PathOfName(_path, iName, path);
  return status.IsOk() ? Os::RemoveFile(Windows::ToNameText(path)) : status;
}

Status FolderHandle::RemoveFolder(const std::string& iName) const {
  std::wstring path;
  const Status status = PathOfName(_path, iName, path);
  return status.IsOk() ? OutcomeOf(gFileCalls.RemoveFolder(path.c_str())) : status;
}

Status FolderHandle::Query(const std::string& iName, Kind& oKind) const {
  std::wstring path;
  if (const Status status = PathOfName(_path, iName, path); !status.IsOk()) {
    return status;
  }
  const std::uint32_t attributes = gFileCalls.Attributes(path.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES) {
    oKind = Windows::IsRealFolder(attributes) ? Kind::Folder : Kind::Other;
    return {};
  }
  const Status status = Status::OfLastCall();
  if (!status.IsNotThere()) {
    return status;
  }
  oKind = Kind::Missing;
  return {};
}

}  // namespace VYX::Os
