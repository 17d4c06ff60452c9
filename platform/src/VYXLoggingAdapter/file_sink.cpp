#include "platform/src/VYXLoggingAdapter/file_sink.h"

#include <algorithm>
#include <mutex>
#include <utility>

#include "KORSysBase/KORDirectory.h"
#include "platform/os/folders.h"
#include "platform/os/native_path.h"

namespace VYX::Logging {

namespace {

constexpr std::size_t kPendingLimit = 64 * 1024;
constexpr int kErrorLevel = 1;

// Slashes separate everywhere; the host's own separator may be another one.
std::string Native(std::string iPath) {
  std::replace(iPath.begin(), iPath.end(), '/', Os::NativeSeparator());
  return iPath;
}

std::string Joined(const std::string& iFolder, const std::string& iName) {
  if (iFolder.empty() || Os::IsAbsolute(iName)) {
    return iName;
  }
  const bool isEnded = iFolder.ends_with(Os::NativeSeparator());
  return isEnded ? iFolder + iName : iFolder + Os::NativeSeparator() + iName;
}

std::size_t NameStart(const std::string& iPath) {
  const std::size_t separator = iPath.rfind(Os::NativeSeparator());
  return separator == std::string::npos ? 0 : separator + 1;
}

bool Exists(const std::string& iPath) {
  return Os::TestExistence(iPath).IsOk();
}

// Makes the folder of a path where it is missing; what goes wrong shows when the file is opened.
void MakeFolderOf(const std::string& iPath) {
  const std::string folder = iPath.substr(0, NameStart(iPath));
  if (!folder.empty() && !Exists(folder)) {
    static_cast<void>(KORCreateDirectoryR(folder.c_str()));
  }
}

// The file is opened later, and more than once: it must not move with the current folder.
FileSinkOptions Anchored(FileSinkOptions iOptions) {
  iOptions.folder = Native(std::move(iOptions.folder));
  iOptions.target = Native(std::move(iOptions.target));
  std::string here;
  if (Os::CurrentFolder(here).IsOk()) {
    if (!Os::IsAbsolute(iOptions.folder)) {
      iOptions.folder = Joined(here, iOptions.folder);
    }
    if (!iOptions.target.empty() && !Os::IsAbsolute(iOptions.target)) {
      iOptions.target = Joined(here, iOptions.target);
    }
  }
  return iOptions;
}

}  // namespace

FileSink::FileSink(FileSinkOptions iOptions, LineFormat iFormat, Filter iFilter)
    : Sink(std::move(iFormat), std::move(iFilter)), _options(Anchored(std::move(iOptions))) {}

FileSink::~FileSink() {
  FlushLocked();
  CloseLocked();
}

bool FileSink::Open() {
  const std::lock_guard guard(_lock);
  return OpenLocked(Os::CurrentWallTime());
}

void FileSink::Flush() noexcept {
  const std::lock_guard guard(_lock);
  FlushLocked();
}

void FileSink::WriteLine(const Record& iRecord, std::string_view iLine) {
  const std::lock_guard guard(_lock);
  ForgetForkedLines(iRecord);
  ReopenIfGone(iRecord.time);
  RotateIfFull(_pending.size() + iLine.size(), iRecord.time);
  if (_file == 0 && !OpenLocked(iRecord.time)) {
    return;
  }
  if (_options.autoFlush) {
    WriteOut(iLine);
    return;
  }
  _pending.append(iLine);
  if (iRecord.level <= kErrorLevel || _pending.size() >= kPendingLimit) {
    FlushLocked();
  }
}

// What waited when the process was forked is the parent's to write.
void FileSink::ForgetForkedLines(const Record& iRecord) {
  if (_pendingProcess != iRecord.processId) {
    _pending.clear();
    _pendingProcess = iRecord.processId;
  }
}

void FileSink::ReopenIfGone(const Os::WallTime& iTime) {
  if (_file == 0 || iTime.seconds == _checkedSecond) {
    return;
  }
  _checkedSecond = iTime.seconds;
  Os::FileInfo opened;
  Os::FileInfo named;
  const bool isThere = Os::DescribeFile(_file, opened).IsOk() && Os::DescribePath(_path, named).IsOk() &&
                       opened.device == named.device && opened.file == named.file;
  if (!isThere) {
    FlushLocked();
    CloseLocked();
  }
}

void FileSink::RotateIfFull(std::size_t iComing, const Os::WallTime& iTime) {
  if (_file == 0 || _options.rotationSize == 0 || _size == 0 || _size + iComing <= _options.rotationSize) {
    return;
  }
  FlushLocked();
  CloseLocked();
  RetireFullFile();
  ++_number;
  OpenLocked(iTime);
}

// Moves the full file out of the way of the next one, and removes the oldest of those that are too many.
void FileSink::RetireFullFile() {
  std::string place = _options.target.empty() ? _path : Joined(_options.target, _path.substr(NameStart(_path)));
  MakeFolderOf(place);
  if (!_options.name.HasNumber()) {
    std::uint64_t number = 1;
    while (Exists(place + "." + std::to_string(number))) {
      ++number;
    }
    place += "." + std::to_string(number);
  }
  if (place != _path) {
    const Os::Status status = Os::RenameNew(_path, place);
    if (!status.IsOk()) {
      _trouble.Report("cannot move '" + _path + "' to '" + place + "'", status.Describe());
      return;
    }
  }
  _full.push_back(std::move(place));
  while (_options.maxFiles != 0 && _full.size() > _options.maxFiles) {
    static_cast<void>(Os::RemoveFile(_full.front()));
    _full.pop_front();
  }
}

bool FileSink::OpenLocked(const Os::WallTime& iTime) {
  _checkedSecond = iTime.seconds;
  _path = Joined(_options.folder, Native(_options.name.Expand(_number, iTime)));
  MakeFolderOf(_path);
  const Os::Status status = OpenDescriptor();
  if (!status.IsOk()) {
    _trouble.Report("cannot open '" + _path + "'", status.Describe());
    return false;
  }
  Os::FileInfo info;
  _size = Os::DescribeFile(_file, info).IsOk() ? info.size : 0;
  return true;
}

Os::Status FileSink::OpenDescriptor() {
  const bool isEmptied = !_options.append && !_isEmptied;
  const Os::Status status = Os::OpenFile(_path, isEmptied ? Os::OpenMode::WriteLog : Os::OpenMode::AppendLog, _file);
  _isEmptied = _isEmptied || (isEmptied && status.IsOk());
  return status;
}

void FileSink::CloseLocked() noexcept {
  if (_file != 0) {
    static_cast<void>(Os::CloseFile(std::exchange(_file, 0U)));
  }
}

void FileSink::FlushLocked() noexcept {
  if (!_pending.empty() && _file != 0) {
    WriteOut(_pending);
    // What a full disk refuses is lost rather than hoarded.
    _pending.clear();
  }
}

void FileSink::WriteOut(std::string_view iBytes) {
  std::size_t written = 0;
  if (_isTorn) {
    // Part of a line stands at the end: the next one begins on a line of its own.
    _isTorn = !Os::WriteFully(_file, "\n", 1, written).IsOk();
  }
  const Os::Status status = Os::WriteFully(_file, iBytes.data(), iBytes.size(), written);
  _size += written;
  if (!status.IsOk()) {
    _isTorn = _isTorn || (written > 0 && iBytes[written - 1] != '\n');
    _trouble.Report("cannot write '" + _path + "'", status.Describe());
    return;
  }
  _trouble.Clear();
}

}  // namespace VYX::Logging
