#include "platform/os/linux/proc_files.h"

#include <limits.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>

#include "platform/os/files.h"
#include "platform/os/posix/system_calls.h"

#if !defined(__linux__)
#error "this source is for Linux"
#endif

namespace VYX::Os::Linux {
namespace {

using Posix::Calls;

// The next field of a text whose fields are parted by single blanks.
std::string_view TakeField(std::string_view& ioText) {
  const std::size_t end = ioText.find(' ');
  const std::string_view field = ioText.substr(0, end);
  ioText.remove_prefix(end == std::string_view::npos ? ioText.size() : end + 1);
  return field;
}

template <class Number>
bool ToNumber(std::string_view iText, Number& oNumber) {
  return std::from_chars(iText.data(), iText.data() + iText.size(), oNumber).ec == std::errc();
}

Status ReadToEnd(FileDescriptor iFile, std::string& oText) {
  std::array<char, 4096> buffer;
  std::size_t count = buffer.size();
  while (count == buffer.size()) {
    if (const Status status = ReadFully(iFile, buffer.data(), buffer.size(), count); !status.IsOk()) {
      return status;
    }
    oText.append(buffer.data(), count);
  }
  return {};
}

// The host marks the path of a file that is gone; a file may also be called so.
void RemoveDeletionMark(std::string& ioPath) {
  constexpr std::string_view kMark = " (deleted)";
  struct stat info = {};
  if (ioPath.ends_with(kMark) && Calls().StatPath(ioPath.c_str(), &info) != 0) {
    ioPath.resize(ioPath.size() - kMark.size());
  }
}

}  // namespace

Status ReadProcFile(const std::string& iPath, std::string& oText) {
  FileDescriptor file = 0;
  if (const Status status = OpenFile(iPath, OpenMode::Read, file); !status.IsOk()) {
    return status;
  }
  std::string text;
  const Status status = ReadToEnd(file, text);
  static_cast<void>(CloseFile(file));
  if (status.IsOk()) {
    oText = std::move(text);
  }
  return status;
}

Status ReadProcLink(const std::string& iPath, std::string& oTarget) {
  std::string target(PATH_MAX, '\0');
  const ssize_t length = Calls().ReadLink(iPath.c_str(), target.data(), target.size());
  if (length < 0) {
    return Status::OfLastCall();
  }
  target.resize(static_cast<std::size_t>(length));
  RemoveDeletionMark(target);
  oTarget = std::move(target);
  return {};
}

bool ParseProcessFacts(std::string_view iText, ProcessFacts& oFacts) {
  // "id (name) state parent ..."; the name may hold blanks and brackets, so its end is the last bracket.
  const std::size_t begin = iText.find('(');
  const std::size_t end = iText.rfind(')');
  if (begin == std::string_view::npos || end == std::string_view::npos || end < begin || end + 2 >= iText.size()) {
    return false;
  }
  ProcessFacts facts;
  facts.name = iText.substr(begin + 1, end - begin - 1);
  std::string_view rest = iText.substr(end + 2);
  const std::string_view state = TakeField(rest);
  facts.hasEnded = state == "Z" || state == "X";
  const bool hasParent = ToNumber(TakeField(rest), facts.parent);
  constexpr int kFieldsBeforeStartTime = 17;
  for (int field = 0; field < kFieldsBeforeStartTime; ++field) {
    TakeField(rest);
  }
  if (!hasParent || !ToNumber(TakeField(rest), facts.startTime)) {
    return false;
  }
  oFacts = std::move(facts);
  return true;
}

Status ReadProcessFacts(std::int32_t iProcess, ProcessFacts& oFacts) {
  std::string text;
  if (const Status status = ReadProcFile("/proc/" + std::to_string(iProcess) + "/stat", text); !status.IsOk()) {
    return status.IsNotThere() ? Status(ESRCH) : status;
  }
  return ParseProcessFacts(text, oFacts) ? Status() : Status(ESRCH);
}

}  // namespace VYX::Os::Linux
