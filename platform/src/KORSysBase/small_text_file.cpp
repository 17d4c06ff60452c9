#include "small_text_file.h"

#include <cstddef>
#include <cstdint>

#include "platform/os/files.h"

namespace VYX::Platform {

namespace {

constexpr std::uint64_t kMaxFileSize = 16U << 20;

// Answers what is wrong, and nothing for success.
std::string ReadOpenFile(Os::FileDescriptor iFile, std::string& oText) {
  Os::FileInfo info;
  if (const Os::Status status = Os::DescribeFile(iFile, info); !status.IsOk()) {
    return status.Describe();
  }
  if (!info.IsRegular()) {
    return "it is no regular file";
  }
  if (info.size > kMaxFileSize) {
    return "it has more than 16 MiB";
  }
  oText.resize(static_cast<std::size_t>(info.size));
  std::size_t count = 0;
  if (const Os::Status status = Os::ReadFully(iFile, oText.data(), oText.size(), count); !status.IsOk()) {
    return status.Describe();
  }
  oText.resize(count);
  return {};
}

}  // namespace

std::string ReadSmallTextFile(const std::string& iPath, std::string& oText) {
  Os::FileDescriptor file = 0;
  if (const Os::Status status = Os::OpenFile(iPath, Os::OpenMode::Read, file); !status.IsOk()) {
    return status.Describe();
  }
  std::string problem = ReadOpenFile(file, oText);
  static_cast<void>(Os::CloseFile(file));
  return problem;
}

}  // namespace VYX::Platform
