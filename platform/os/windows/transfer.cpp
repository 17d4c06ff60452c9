#include <algorithm>
#include <cstring>
#include <string_view>
#include <vector>

#include "platform/os/random_access.h"
#include "platform/os/windows/file_handle.h"
#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os {
namespace {

using Windows::gFileCalls;

// The host counts in 32 bits.
std::uint32_t Portion(std::size_t iSize) noexcept {
  constexpr std::size_t kMost = std::size_t{1} << 30;
  return static_cast<std::uint32_t>(std::min(iSize, kMost));
}

// A pipe whose other end is closed, and a place behind the end, are ends like any other.
bool IsAtEnd() noexcept {
  return GetLastError() == ERROR_BROKEN_PIPE || GetLastError() == ERROR_HANDLE_EOF;
}

Status Read(void* iFile, const std::uint64_t* iOffset, char* oBuffer, std::size_t iSize, std::size_t& oRead) {
  oRead = 0;
  while (oRead < iSize) {
    const std::uint64_t offset = iOffset == nullptr ? 0 : *iOffset + oRead;
    std::uint32_t count = 0;
    const bool isRead =
        gFileCalls.Read(iFile, oBuffer + oRead, Portion(iSize - oRead), iOffset == nullptr ? nullptr : &offset, &count);
    if (!isRead) {
      return IsAtEnd() ? Status() : Status::OfLastCall();
    }
    if (count == 0) {
      break;
    }
    oRead += count;
  }
  return {};
}

Status Write(void* iFile, const std::uint64_t* iOffset, std::string_view iData, std::size_t& oWritten) {
  oWritten = 0;
  while (oWritten < iData.size()) {
    const std::uint64_t offset = iOffset == nullptr ? 0 : *iOffset + oWritten;
    std::uint32_t count = 0;
    if (!gFileCalls.Write(iFile, iData.data() + oWritten, Portion(iData.size() - oWritten),
                          iOffset == nullptr ? nullptr : &offset, &count)) {
      return Status::OfLastCall();
    }
    if (count == 0) {
      return Failure::DeviceFull();
    }
    oWritten += count;
  }
  return {};
}

// Puts back what was read ahead, where the file has a position to go back to.
Status StepBack(void* iFile, std::size_t iCount) noexcept {
  LARGE_INTEGER distance;
  distance.QuadPart = -static_cast<LONGLONG>(iCount);
  return iCount == 0 || SetFilePointerEx(iFile, distance, nullptr, FILE_CURRENT) != 0 ? Status() : Status::OfLastCall();
}

// What text mode makes of bytes: a carriage return in front of a line feed falls away, and the end mark of old is the
// end. Answers the number of bytes left; ioUsed becomes that of the bytes taken in, which leaves out a carriage return
// at the end unless iIsLast.
std::size_t ConvertLineEnds(char* ioData, std::size_t iSize, bool iIsLast, std::size_t& oUsed, bool& oIsAtEnd) {
  constexpr char kEndMark = '\x1A';
  std::size_t kept = 0;
  for (oUsed = 0; oUsed < iSize; ++oUsed) {
    const char next = ioData[oUsed];
    oIsAtEnd = next == kEndMark;
    const bool isLastReturn = next == '\r' && oUsed + 1 == iSize && !iIsLast;
    if (oIsAtEnd || isLastReturn) {
      return kept;
    }
    const bool isDropped = next == '\r' && oUsed + 1 < iSize && ioData[oUsed + 1] == '\n';
    if (!isDropped) {
      ioData[kept++] = next;
    }
  }
  return kept;
}

Status ReadText(void* iFile, char* oBuffer, std::size_t iSize, std::size_t& oRead) {
  oRead = 0;
  bool isAtEnd = false;
  while (oRead < iSize && !isAtEnd) {
    // One byte more than wanted tells what follows a carriage return at the end.
    std::vector<char> bytes(iSize - oRead + 1);
    std::size_t count = 0;
    if (const Status status = Read(iFile, nullptr, bytes.data(), bytes.size(), count); !status.IsOk()) {
      return status;
    }
    const bool isLast = count < bytes.size();
    std::size_t used = 0;
    std::size_t kept = ConvertLineEnds(bytes.data(), isLast ? count : count - 1, isLast, used, isAtEnd);
    if (!isLast && !isAtEnd && used == count - 2) {
      // The carriage return at the end: the byte behind it decides.
      bytes[kept] = bytes[count - 1] == '\n' ? '\n' : '\r';
      used += bytes[kept] == '\n' ? 2 : 1;
      ++kept;
    }
    std::memcpy(oBuffer + oRead, bytes.data(), kept);
    oRead += kept;
    if (const Status status = StepBack(iFile, count - used); !status.IsOk()) {
      return status;
    }
    isAtEnd = isAtEnd || isLast;
  }
  return {};
}

// A line feed goes out with a carriage return in front. What is counted is what the caller handed over.
Status WriteText(void* iFile, std::string_view iData, std::size_t& oWritten) {
  std::string bytes;
  bytes.reserve(iData.size() + iData.size() / 16);
  for (const char next : iData) {
    if (next == '\n') {
      bytes += '\r';
    }
    bytes += next;
  }
  std::size_t count = 0;
  const Status status = Write(iFile, nullptr, bytes, count);
  const auto added = std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count), '\n');
  oWritten = status.IsOk() ? iData.size() : count - std::min(count, static_cast<std::size_t>(added));
  return status;
}

}  // namespace

Status ReadFully(FileDescriptor iFile, void* oBuffer, std::size_t iSize, std::size_t& oRead) {
  auto* const buffer = static_cast<char*>(oBuffer);
  return Windows::IsTextMode(iFile) ? ReadText(Windows::ToHandle(iFile), buffer, iSize, oRead)
                                    : Read(Windows::ToHandle(iFile), nullptr, buffer, iSize, oRead);
}

Status WriteFully(FileDescriptor iFile, const void* iData, std::size_t iSize, std::size_t& oWritten) {
  const std::string_view data(static_cast<const char*>(iData), iSize);
  return Windows::IsTextMode(iFile) ? WriteText(Windows::ToHandle(iFile), data, oWritten)
                                    : Write(Windows::ToHandle(iFile), nullptr, data, oWritten);
}

Status ReadAt(FileDescriptor iFile, std::uint64_t iOffset, void* oBuffer, std::size_t iSize, std::size_t& oRead) {
  return Read(Windows::ToHandle(iFile), &iOffset, static_cast<char*>(oBuffer), iSize, oRead);
}

Status WriteAt(FileDescriptor iFile, std::uint64_t iOffset, const void* iData, std::size_t iSize) {
  std::size_t written = 0;
  return Write(Windows::ToHandle(iFile), &iOffset, {static_cast<const char*>(iData), iSize}, written);
}

}  // namespace VYX::Os
