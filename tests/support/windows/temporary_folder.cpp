#include "support/temporary_folder.h"

#include <algorithm>
#include <atomic>
#include <stdexcept>

#include "platform/os/folders.h"
#include "platform/os/windows/handle.h"
#include "platform/os/windows/path_text.h"
#include "support/replay.h"

namespace VYX::Test {

namespace {

using Os::Windows::Handle;
using Os::Windows::ToWidePath;

constexpr DWORD kSharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

std::wstring Wide(const std::string& iNative) {
  std::wstring path;
  if (!ToWidePath(iNative, path).IsOk()) {
    throw std::runtime_error("no path: " + iNative);
  }
  return path;
}

Handle Open(const std::string& iNative, DWORD iRights, DWORD iDisposition) {
  const HANDLE file = ::CreateFileW(Wide(iNative).c_str(), iRights, kSharing, nullptr, iDisposition, 0, nullptr);
  return Handle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

std::string MakeUniqueFolder() {
  static std::atomic<int> counter{0};
  wchar_t base[MAX_PATH + 1] = {};
  ::GetTempPathW(MAX_PATH, base);
  for (;;) {
    const std::string path = Os::Windows::ToPathText(base) + "vyx_test_" + std::to_string(::GetCurrentProcessId()) +
                             "_" + std::to_string(::GetTickCount64()) + "_" + std::to_string(++counter);
    if (::CreateDirectoryW(Wide(path).c_str(), nullptr) != 0) {
      return path;
    }
    if (::GetLastError() != ERROR_ALREADY_EXISTS) {
      throw std::runtime_error("no temporary folder " + path);
    }
  }
}

}  // namespace

TemporaryFolder::TemporaryFolder() : _path(TakeFolderOfParent()) {
  _isOfParent = !_path.empty();
  if (!_isOfParent) {
    _path = MakeUniqueFolder();
    RememberFolder(_path);
  }
}

TemporaryFolder::~TemporaryFolder() {
  if (!_isOfParent) {
    Os::RemovalReport ignored;
    static_cast<void>(Os::RemoveTree(_path, ignored));
  }
}

std::string TemporaryFolder::Native(std::string_view iRelative) const {
  std::string path = iRelative.empty() ? _path : _path + "\\" + std::string(iRelative);
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

KORUnicodeString TemporaryFolder::Path(std::string_view iRelative) const {
  return KORUnicodeString(std::string_view(Native(iRelative)));
}

std::string TemporaryFolder::MakeFolder(std::string_view iRelative) const {
  const std::string path = Native(iRelative);
  for (std::size_t end = path.find('\\', _path.size() + 1); end != std::string::npos; end = path.find('\\', end + 1)) {
    ::CreateDirectoryW(Wide(path.substr(0, end)).c_str(), nullptr);
  }
  ::CreateDirectoryW(Wide(path).c_str(), nullptr);
  return path;
}

std::string TemporaryFolder::MakeFile(std::string_view iRelative, std::string_view iContent) const {
  const Handle file = Open(Native(iRelative), GENERIC_WRITE, CREATE_ALWAYS);
  DWORD written = 0;
  if (!file.IsOpen() ||
      ::WriteFile(file.Get(), iContent.data(), static_cast<DWORD>(iContent.size()), &written, nullptr) == 0) {
    throw std::runtime_error("cannot make the file " + Native(iRelative));
  }
  return Native(iRelative);
}

bool TemporaryFolder::CanMakeLinks() {
  const TemporaryFolder folder;
  constexpr DWORD kUnprivileged = 2;
  const std::wstring link = Wide(folder.Native("l"));
  return ::CreateSymbolicLinkW(link.c_str(), L"target", kUnprivileged) != 0 &&
         ::GetFileAttributesW(link.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string TemporaryFolder::MakeLink(std::string_view iRelative, const std::string& iTarget) const {
  constexpr DWORD kUnprivileged = 2;
  std::wstring target;
  Os::Windows::ToWideName(iTarget, target);
  std::replace(target.begin(), target.end(), L'/', L'\\');
  const std::string link = Native(iRelative);
  const std::string place = iTarget.find(':') != std::string::npos ? iTarget : link + "\\..\\" + iTarget;
  const DWORD attributes = ::GetFileAttributesW(Wide(place).c_str());
  const bool isFolder = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  if (::CreateSymbolicLinkW(Wide(link).c_str(), target.c_str(), kUnprivileged | (isFolder ? 1U : 0U)) == 0) {
    throw std::runtime_error("cannot make the link " + link);
  }
  return link;
}

std::vector<std::string> TemporaryFolder::Names(std::string_view iRelative) const {
  std::vector<std::string> names;
  WIN32_FIND_DATAW entry = {};
  const HANDLE search = ::FindFirstFileW((Wide(Native(iRelative)) + L"\\*").c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) {
    throw std::runtime_error("cannot list " + Native(iRelative));
  }
  do {
    const std::string name = Os::Windows::ToNameText(entry.cFileName);
    if (name != "." && name != "..") {
      names.push_back(name);
    }
  } while (::FindNextFileW(search, &entry) != 0);
  ::FindClose(search);
  std::sort(names.begin(), names.end());
  return names;
}

std::string ContentOf(const std::string& iNativePath) {
  const Handle file = Open(iNativePath, GENERIC_READ, OPEN_EXISTING);
  LARGE_INTEGER size = {};
  if (!file.IsOpen() || ::GetFileSizeEx(file.Get(), &size) == 0) {
    return "<unreadable>";
  }
  std::string content(static_cast<std::size_t>(size.QuadPart), '\0');
  DWORD count = 0;
  if (::ReadFile(file.Get(), content.data(), static_cast<DWORD>(content.size()), &count, nullptr) == 0) {
    return "<unreadable>";
  }
  content.resize(count);
  return content;
}

int CountOpenDescriptors() {
  DWORD count = 0;
  ::GetProcessHandleCount(::GetCurrentProcess(), &count);
  return static_cast<int>(count);
}

}  // namespace VYX::Test
