#include "small_text_file.h"

#include <cstddef>
#include <cstdint>

#include "platform/os/file_guard.h"

namespace VYX::Platform {

namespace {

constexpr std::uint64_t kMaxFileSize = 16U << 20;

// Answers what is wrong, and nothing for success.
std::string ReadOpenFile(Os::FileDescriptor iFile, std::string& oText, Os::Status& oHost) {
  Os::FileInfo info;
  oHost = Os::DescribeFile(iFile, info);
  if (!oHost.IsOk()) {
    return oHost.Describe();
  }
  if (!info.IsRegular()) {
    return "it is no regular file";
  }
  if (info.size > kMaxFileSize) {
    return "it has more than 16 MiB";
  }
  oText.resize(static_cast<std::size_t>(info.size));
  std::size_t count = 0;
  oHost = Os::ReadFully(iFile, oText.data(), oText.size(), count);
  if (!oHost.IsOk()) {
    return oHost.Describe();
  }
  oText.resize(count);
  return {};
}

}  // namespace

std::string ReadSmallTextFile(const std::string& iPath, std::string& oText, Os::Status& oHost) {
  Os::FileDescriptor file = 0;
  oHost = Os::OpenFile(iPath, Os::OpenMode::Read, file);
  if (!oHost.IsOk()) {
    return oHost.Describe();
  }
  const Os::FileGuard guard(file);
  return ReadOpenFile(file, oText, oHost);
}

}  // namespace VYX::Platform
