#include "KORSysBase/KORFile.h"

#include <limits>
#include <string>
#include <string_view>

#include "pending_error.h"
#include "platform/os/files.h"
#include "platform/os/native_path.h"

namespace {

namespace Os = VYX::Os;
using VYX::Platform::LeaveError;

struct OpenRequest {
  Os::OpenMode mode = Os::OpenMode::Read;
  std::string_view purpose;
  bool isText = false;
};

// The C library's mode text: one of r, w, a, then b, t and x, each once at most.
bool ParseMode(std::string_view iMode, OpenRequest& oRequest) {
  const std::string_view options = iMode.substr(iMode.empty() ? 0 : 1);
  for (std::size_t i = 0; i < options.size(); ++i) {
    if (std::string_view("btx").find(options[i]) == std::string_view::npos ||
        options.find(options[i], i + 1) != std::string_view::npos) {
      return false;
    }
  }
  const bool isNew = options.find('x') != std::string_view::npos;
  const bool isText = options.find('b') == std::string_view::npos;
  switch (iMode.empty() ? '\0' : iMode.front()) {
    case 'r':
      oRequest = {Os::OpenMode::Read, " for reading", isText};
      return !isNew;
    case 'w':
      oRequest = {isNew ? Os::OpenMode::WriteNew : Os::OpenMode::Write, " for writing", isText};
      return true;
    case 'a':
      oRequest = {isNew ? Os::OpenMode::AppendNew : Os::OpenMode::Append, " for appending", isText};
      return true;
    default:
      return false;
  }
}

std::string NameOf(unsigned int iDescriptor) {
  const std::string path = Os::PathOf(iDescriptor);
  return path.empty() ? "descriptor " + std::to_string(iDescriptor) : path;
}

}  // namespace

long KORFOpen(const KORUnicodeString& iPath, const char* iMode, unsigned int* oDescriptor) {
  OpenRequest request;
  if (iMode == nullptr || oDescriptor == nullptr || !ParseMode(iMode, request)) {
    return LeaveError(Os::Failure::InvalidParameter(), "Cannot open", iPath.ToStringView(), {}, "unknown mode");
  }
  std::string path;
  Os::Status status = Os::ToNativePath(iPath.ToStringView(), path);
  if (status.IsOk()) {
    status = Os::OpenFile(path, request.mode, *oDescriptor, request.isText);
  }
  return status.IsOk() ? 0 : LeaveError(status, "Cannot open", iPath.ToStringView(), request.purpose);
}

long KORFRead(unsigned int iDescriptor, void* oBuffer, unsigned int iSize, unsigned int* oRead) {
  constexpr std::string_view kAttempt = "Cannot read";
  if (iDescriptor == 0 || oRead == nullptr || (oBuffer == nullptr && iSize != 0)) {
    return LeaveError(Os::Failure::InvalidParameter(), kAttempt, NameOf(iDescriptor));
  }
  std::size_t count = 0;
  const Os::Status status = Os::ReadFully(iDescriptor, oBuffer, iSize, count);
  if (!status.IsOk()) {
    return LeaveError(status, kAttempt, NameOf(iDescriptor));
  }
  *oRead = static_cast<unsigned int>(count);
  return 0;
}

long KORFWrite(unsigned int iDescriptor, const void* iData, unsigned int iSize, unsigned int* oWritten) {
  constexpr std::string_view kAttempt = "Cannot write";
  if (iDescriptor == 0 || oWritten == nullptr || (iData == nullptr && iSize != 0)) {
    return LeaveError(Os::Failure::InvalidParameter(), kAttempt, NameOf(iDescriptor));
  }
  std::size_t count = 0;
  const Os::Status status = Os::WriteFully(iDescriptor, iData, iSize, count);
  if (!status.IsOk()) {
    return LeaveError(status, kAttempt, NameOf(iDescriptor));
  }
  *oWritten = static_cast<unsigned int>(count);
  return 0;
}

long KORFSize(unsigned int iDescriptor, unsigned int* oSize) {
  constexpr std::string_view kAttempt = "Cannot tell the size of";
  Os::FileInfo info;
  const bool isValid = iDescriptor != 0 && oSize != nullptr;
  const Os::Status status = isValid ? Os::DescribeFile(iDescriptor, info) : Os::Failure::InvalidParameter();
  if (!status.IsOk()) {
    return LeaveError(status, kAttempt, NameOf(iDescriptor));
  }
  if (!info.IsRegular()) {
    return LeaveError(Os::Failure::InvalidParameter(), kAttempt, NameOf(iDescriptor), {}, "not a regular file");
  }
  if (info.size > std::numeric_limits<unsigned int>::max()) {
    return LeaveError(Os::Failure::FileTooLarge(), kAttempt, NameOf(iDescriptor), {},
                      std::to_string(info.size) + " bytes do not fit into 32 bits");
  }
  *oSize = static_cast<unsigned int>(info.size);
  return 0;
}

long KORFClose(unsigned int iDescriptor) {
  const Os::Status status = iDescriptor != 0 ? Os::CloseFile(iDescriptor) : Os::Failure::InvalidHandle();
  // The descriptor is gone, and by now perhaps another thread's file: only its number may be named.
  return status.IsOk() ? 0 : LeaveError(status, "Cannot close", "descriptor " + std::to_string(iDescriptor));
}

long _KORFileAccess(const KORUnicodeString& iPath, int iMode, int) {
  constexpr int kExistence = 0;
  constexpr int kWritability = 2;
  std::string path;
  Os::Status status = Os::Failure::InvalidParameter();
  if (iMode == kExistence || iMode == kWritability) {
    status = Os::ToNativePath(iPath.ToStringView(), path);
  }
  if (status.IsOk()) {
    status = iMode == kExistence ? Os::TestExistence(path) : Os::TestWritability(path);
  }
  const std::string_view purpose = iMode == kWritability ? " for writing" : "";
  return status.IsOk() ? 0 : LeaveError(status, "Cannot access", iPath.ToStringView(), purpose);
}

long _KORDeleteFile(const KORUnicodeString& iPath) {
  std::string path;
  Os::Status status = Os::ToNativePath(iPath.ToStringView(), path);
  if (status.IsOk()) {
    status = Os::RemoveFile(path);
  }
  return status.IsOk() ? 0 : LeaveError(status, "Cannot delete", iPath.ToStringView());
}
