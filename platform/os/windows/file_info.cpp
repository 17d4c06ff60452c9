#include "platform/os/windows/file_info.h"

#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os::Windows {
namespace {

constexpr std::int64_t kTicksPerSecond = 10'000'000;
constexpr std::int32_t kNanosecondsPerTick = 100;
constexpr std::int64_t kSecondsFrom1601 = 11'644'473'600;

std::uint64_t Combine(DWORD iHigh, DWORD iLow) noexcept {
  return static_cast<std::uint64_t>(iHigh) << 32 | iLow;
}

void SetWriteTime(const FILETIME& iTime, FileInfo& oInfo) noexcept {
  const auto ticks = static_cast<std::int64_t>(Combine(iTime.dwHighDateTime, iTime.dwLowDateTime));
  oInfo.writeSeconds = ticks / kTicksPerSecond - kSecondsFrom1601;
  oInfo.writeNanoseconds = static_cast<std::int32_t>(ticks % kTicksPerSecond) * kNanosecondsPerTick;
}

}  // namespace

Status Describe(void* iFile, FileInfo& oInfo) {
  BY_HANDLE_FILE_INFORMATION host = {};
  FileInfo info;
  if (GetFileType(iFile) == FILE_TYPE_DISK) {
    if (!gFileCalls.DescribeFile(iFile, &host)) {
      return Status::OfLastCall();
    }
    const bool isFolder = (host.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    info.type = isFolder ? FileInfo::kFolder : FileInfo::kRegular;
    info.permissions = host.dwFileAttributes;
    info.size = isFolder ? 0 : Combine(host.nFileSizeHigh, host.nFileSizeLow);
    info.device = host.dwVolumeSerialNumber;
    info.file = Combine(host.nFileIndexHigh, host.nFileIndexLow);
    SetWriteTime(host.ftLastWriteTime, info);
  }
  oInfo = info;
  return {};
}

Status OpenForQuery(const std::wstring& iPath, bool iIsLinkItself, FileHandle& oFile) {
  constexpr DWORD kEverybody = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const DWORD flags = FILE_FLAG_BACKUP_SEMANTICS | (iIsLinkItself ? FILE_FLAG_OPEN_REPARSE_POINT : 0);
  oFile.Reset(gFileCalls.OpenFile(iPath.c_str(), FILE_READ_ATTRIBUTES | READ_CONTROL, kEverybody, nullptr,
                                  OPEN_EXISTING, flags));
  if (!oFile.IsOpen() && GetLastError() == ERROR_ACCESS_DENIED) {
    oFile.Reset(gFileCalls.OpenFile(iPath.c_str(), FILE_READ_ATTRIBUTES, kEverybody, nullptr, OPEN_EXISTING, flags));
  }
  return oFile.IsOpen() ? Status() : Status::OfLastCall();
}

bool IsLink(std::uint32_t iAttributes) noexcept {
  return (iAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

bool IsRealFolder(std::uint32_t iAttributes) noexcept {
  return (iAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 && !IsLink(iAttributes);
}

}  // namespace VYX::Os::Windows
