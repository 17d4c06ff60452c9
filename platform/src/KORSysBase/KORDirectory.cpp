#include "KORSysBase/KORDirectory.h"

#include <string>
#include <string_view>

#include "create_folders.h"
#include "pending_error.h"
#include "platform/os/files.h"
#include "platform/os/folders.h"
#include "platform/os/native_path.h"

namespace {

namespace Os = VYX::Os;
using VYX::Platform::LeaveError;

std::string_view ViewOf(const char* iPath) noexcept {
  return iPath == nullptr ? std::string_view() : iPath;
}

void SetKind(Os::EntryKind iKind, KORDirectoryEntry& oEntry) noexcept {
  oEntry.isModeKnown = iKind != Os::EntryKind::Unknown;
  oEntry.mode = iKind == Os::EntryKind::Folder    ? KORFileInfo::kFolder
                : iKind == Os::EntryKind::Regular ? KORFileInfo::kRegularFile
                                                  : 0;
}

long CreateDirectoryR(std::string_view iPath, Os::Status (*iCreate)(const std::string&)) {
  std::string native;
  Os::Status status = Os::ToNativePath(iPath, native);
  if (status.IsOk()) {
    status = VYX::Platform::CreateFolders(native, iCreate);
  }
  return status.IsOk() ? 0 : LeaveError(status, "Cannot create the folder", iPath);
}

}  // namespace

KORDirectoryHandle::KORDirectoryHandle() noexcept = default;
KORDirectoryHandle::~KORDirectoryHandle() = default;

long KOROpenDirectory(const char* iPath, KORDirectoryHandle* oHandle) {
  constexpr std::string_view kAttempt = "Cannot open the folder";
  const std::string_view path = ViewOf(iPath);
  if (oHandle == nullptr) {
    return LeaveError(Os::Failure::InvalidParameter(), kAttempt, path);
  }
  std::string native;
  Os::Status status = Os::ToNativePath(path, native);
  auto reader = std::make_unique<Os::FolderReader>();
  if (status.IsOk()) {
    status = reader->Open(native);
  }
  if (!status.IsOk()) {
    return LeaveError(status, kAttempt, path);
  }
  oHandle->_reader = std::move(reader);
  oHandle->_path = KORUnicodeString(path);
  return 0;
}

long KORReadDirectory(KORDirectoryHandle* ioHandle, KORDirectoryEntry* oEntry, int* oEndOfDir) {
  constexpr std::string_view kAttempt = "Cannot read the folder";
  if (ioHandle == nullptr || oEntry == nullptr || oEndOfDir == nullptr || ioHandle->_reader == nullptr) {
    return LeaveError(Os::Failure::InvalidHandle(), kAttempt, {});
  }
  Os::FolderEntry entry;
  bool isAtEnd = false;
  const Os::Status status = ioHandle->_reader->Read(entry, isAtEnd);
  if (!status.IsOk()) {
    return LeaveError(status, kAttempt, ioHandle->_path.ToStringView());
  }
  *oEndOfDir = isAtEnd ? 1 : 0;
  if (!isAtEnd) {
    oEntry->name = entry.name.data();
    SetKind(entry.kind, *oEntry);
  }
  return 0;
}

long KORCloseDirectory(KORDirectoryHandle* ioHandle) {
  constexpr std::string_view kAttempt = "Cannot close the folder";
  if (ioHandle == nullptr || ioHandle->_reader == nullptr) {
    return LeaveError(Os::Failure::InvalidHandle(), kAttempt, {});
  }
  const Os::Status status = ioHandle->_reader->Close();
  ioHandle->_reader.reset();
  return status.IsOk() ? 0 : LeaveError(status, kAttempt, ioHandle->_path.ToStringView());
}

long KORGetFileInfo(const char* iPath, KORFileInfo* oInfo) {
  constexpr std::string_view kAttempt = "Cannot query";
  const std::string_view path = ViewOf(iPath);
  if (oInfo == nullptr) {
    return LeaveError(Os::Failure::InvalidParameter(), kAttempt, path);
  }
  std::string native;
  Os::FileInfo info;
  Os::Status status = Os::ToNativePath(path, native);
  if (status.IsOk()) {
    status = Os::DescribePath(native, info);
  }
  if (!status.IsOk()) {
    return LeaveError(status, kAttempt, path);
  }
  *oInfo = {info.type, info.size, info.device, info.file, info.writeSeconds};
  return 0;
}

int KORCreateDirectory(const char* iPath) {
  const std::string_view path = ViewOf(iPath);
  std::string native;
  Os::Status status = Os::ToNativePath(path, native);
  if (status.IsOk()) {
    status = Os::CreateFolder(native);
  }
  if (!status.IsOk()) {
    LeaveError(status, "Cannot create the folder", path);
  }
  return status.ToErrorNumber();
}

long KORCreateDirectoryR(const char* iPath) {
  return CreateDirectoryR(ViewOf(iPath), Os::CreateFolder);
}

long KORCreatePrivateDirectoryR(const char* iPath) {
  return CreateDirectoryR(ViewOf(iPath), Os::CreatePrivateFolder);
}

long KORRemoveDirectoryR(const char* iPath) {
  const std::string_view path = ViewOf(iPath);
  std::string native;
  Os::Status status = Os::ToNativePath(path, native);
  if (!status.IsOk()) {
    return LeaveError(status, "Cannot remove the folder", path);
  }
  Os::RemovalReport report;
  status = Os::RemoveTree(native, report);
  if (status.IsOk()) {
    return 0;
  }
  std::string cause = status.Describe();
  if (report.failed > 1) {
    cause += " (and " + std::to_string(report.failed - 1) + " more)";
  }
  return LeaveError(status, "Cannot remove", report.firstPath, {}, cause);
}
