#include "platform/os/windows/program_file.h"

#include <algorithm>
#include <utility>

#include "platform/os/native_path.h"
#include "platform/os/windows/wide_text.h"
#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os::Windows {
namespace {

constexpr std::wstring_view kSeparators = L"\\/";

std::wstring_view FileNameOf(std::wstring_view iPath) noexcept {
  return iPath.substr(iPath.find_last_of(kSeparators) + 1);
}

bool EndsWithIgnoringCase(std::wstring_view iText, std::wstring_view iLowerEnd) noexcept {
  if (iText.size() < iLowerEnd.size()) {
    return false;
  }
  return std::equal(iLowerEnd.begin(), iLowerEnd.end(), iText.end() - static_cast<std::ptrdiff_t>(iLowerEnd.size()),
                    [](wchar_t iLower, wchar_t iUnit) {
                      return iLower == (iUnit >= L'A' && iUnit <= L'Z' ? iUnit - L'A' + L'a' : iUnit);
                    });
}

Status TestProgram(const std::wstring& iPath) {
  const DWORD attributes = ::GetFileAttributesW(iPath.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    return Status::OfLastCall();
  }
  return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? Failure::AccessDenied() : Status();
}

// A name without an extension means the program of that name, unless there is a file of just that name.
Status Complete(std::wstring& ioPath) {
  const Status status = TestProgram(ioPath);
  if (status.IsOk() || FileNameOf(ioPath).find(L'.') != std::wstring_view::npos) {
    return status;
  }
  std::wstring path = ioPath + L".exe";
  if (!TestProgram(path).IsOk()) {
    return status;
  }
  ioPath = std::move(path);
  return {};
}

std::wstring ValueOfPath() {
  std::wstring value(1024, L'\0');
  for (;;) {
    const DWORD size = ::GetEnvironmentVariableW(L"PATH", value.data(), static_cast<DWORD>(value.size()));
    if (size < value.size()) {
      value.resize(size);
      return value;
    }
    value.resize(size);
  }
}

// Searches the absolute folders of PATH. A folder of that name is reported only where no program is found.
Status FindInPath(const std::wstring& iName, std::wstring& oPath) {
  const std::wstring value = ValueOfPath();
  std::wstring_view folders = value;
  Status failure(ERROR_FILE_NOT_FOUND);
  while (!folders.empty()) {
    std::wstring_view folder = folders.substr(0, folders.find(L';'));
    folders.remove_prefix(std::min(folder.size() + 1, folders.size()));
    if (folder.size() >= 2 && folder.front() == L'"' && folder.back() == L'"') {
      folder = folder.substr(1, folder.size() - 2);
    }
    if (!IsAbsolute(ToUtf8(folder))) {
      continue;
    }
    std::wstring path = std::wstring(folder).append(L"\\").append(iName);
    const Status status = Complete(path);
    if (status.IsOk()) {
      oPath = std::move(path);
      return {};
    }
    failure = status.GetNative() == ERROR_ACCESS_DENIED ? status : failure;
  }
  return failure;
}

}  // namespace

bool IsBatchFile(std::wstring_view iPath) noexcept {
  // A colon in the name begins the name of a stream inside the file.
  std::wstring_view name = FileNameOf(iPath);
  name = name.substr(0, name.find(L':'));
  name = name.substr(0, name.find_last_not_of(L" .") + 1);
  return EndsWithIgnoringCase(name, L".bat") || EndsWithIgnoringCase(name, L".cmd");
}

Status FindProgram(const std::string& iProgram, std::wstring& oPath) {
  std::wstring path;
  if (!ToWide(iProgram, path)) {
    return Failure::BadName();
  }
  if (IsBatchFile(path)) {
    return Status(ERROR_UNSUPPORTED_TYPE);
  }
  const bool isBare = path.find_first_of(kSeparators) == std::wstring::npos;
  const Status status = isBare ? FindInPath(std::wstring(path), path) : Complete(path);
  if (status.IsOk()) {
    oPath = std::move(path);
  }
  return status;
}

}  // namespace VYX::Os::Windows
