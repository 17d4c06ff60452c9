#include "platform/os/folders.h"

#include <memory>

#include "platform/os/files.h"
#include "platform/os/windows/file_info.h"
#include "platform/os/windows/path_text.h"
#include "platform/os/windows/private_access.h"
#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os {
namespace {

using Windows::gFileCalls;

// The host hands out the first name together with the search.
struct Search {
  void* handle = nullptr;
  WIN32_FIND_DATAW data = {};
  bool isNameReady = false;
  std::string name;
};

EntryKind KindOf(DWORD iAttributes) noexcept {
  if (Windows::IsLink(iAttributes)) {
    return EntryKind::Unknown;
  }
  return (iAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? EntryKind::Folder : EntryKind::Regular;
}

// The root of a drive has no entry for itself, so that a search in an empty one finds nothing.
Status TestForEmptyRoot(const std::wstring& iPath) {
  const Status status = Status::OfLastCall();
  const std::uint32_t attributes = gFileCalls.Attributes(iPath.c_str());
  const bool isFolder = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  if (attributes != INVALID_FILE_ATTRIBUTES && !isFolder) {
    return Failure::NotAFolder();
  }
  return status.GetNative() == ERROR_FILE_NOT_FOUND && isFolder ? Status() : status;
}

}  // namespace

Status FolderReader::Open(const std::string& iPath) {
  static_cast<void>(Close());
  std::wstring path;
  if (const Status status = Windows::ToWidePath(iPath, path); !status.IsOk()) {
    return status;
  }
  auto search = std::make_unique<Search>();
  search->handle = gFileCalls.FindFirst(Windows::Join(path, L"*").c_str(), &search->data);
  search->isNameReady = search->handle != nullptr;
  if (!search->isNameReady) {
    if (const Status status = TestForEmptyRoot(path); !status.IsOk()) {
      return status;
    }
  }
  _folder = search.release();
  return {};
}

Status FolderReader::Read(FolderEntry& oEntry, bool& oIsAtEnd) {
  if (_folder == nullptr) {
    return Failure::InvalidHandle();
  }
  Search& search = *static_cast<Search*>(_folder);
  if (!search.isNameReady && search.handle != nullptr) {
    search.isNameReady = gFileCalls.FindNext(search.handle, &search.data);
    if (!search.isNameReady && GetLastError() != ERROR_NO_MORE_FILES) {
      return Status::OfLastCall();
    }
  }
  oIsAtEnd = !search.isNameReady;
  if (search.isNameReady) {
    search.isNameReady = false;
    search.name = Windows::ToNameText(search.data.cFileName);
    oEntry = {search.name, KindOf(search.data.dwFileAttributes)};
  }
  return {};
}

Status FolderReader::Close() noexcept {
  const std::unique_ptr<Search> search(static_cast<Search*>(_folder));
  _folder = nullptr;
  const bool isClosed = search == nullptr || search->handle == nullptr || gFileCalls.EndSearch(search->handle);
  return isClosed ? Status() : Status::OfLastCall();
}

Status CreateFolder(const std::string& iPath) {
  std::wstring path;
  if (const Status status = Windows::ToWidePath(iPath, path); !status.IsOk()) {
    return status;
  }
  if (gFileCalls.MakeFolder(path.c_str(), nullptr)) {
    return {};
  }
  const Status status = Status::OfLastCall();
  FileInfo info;
  // The root of a drive is refused as not accessible.
  const bool isThere = DescribePath(iPath, info).IsOk() && info.IsFolder();
  return isThere ? Status() : status;
}

Status CreatePrivateFolder(const std::string& iPath) {
  // A separator at the end would make the host look through a link.
  std::wstring path;
  if (const Status status = Windows::ToWidePath(iPath.substr(0, iPath.find_last_not_of('\\') + 1), path);
      !status.IsOk()) {
    return status;
  }
  Windows::PrivateAccess access;
  if (!access.GetStatus().IsOk()) {
    return access.GetStatus();
  }
  if (gFileCalls.MakeFolder(path.c_str(), access.Get())) {
    return {};
  }
  const Status status = Status::OfLastCall();
  Windows::FileHandle folder;
  const bool isOwn = status.IsAlreadyThere() && Windows::IsRealFolder(gFileCalls.Attributes(path.c_str())) &&
                     Windows::OpenForQuery(path, true, folder).IsOk() && access.IsThatOf(folder.Get());
  return isOwn ? Status() : status;
}

Status CurrentFolder(std::string& oPath) {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const std::uint32_t length = gFileCalls.CurrentFolder(static_cast<std::uint32_t>(path.size()), path.data());
    if (length == 0) {
      return Status::OfLastCall();
    }
    const bool isWhole = length < path.size();
    path.resize(length);
    if (isWhole) {
      oPath = Windows::ToPathText(path);
      return {};
    }
  }
}

}  // namespace VYX::Os
