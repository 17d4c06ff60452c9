#include "zip_file_io.h"

#include <atomic>
#include <utility>

#include "KORSysBase/KORSysZipFile.h"
#include "platform/os/clock.h"
#include "platform/os/process_identity.h"

namespace VYX::Platform {

ZipFileSource::~ZipFileSource() {
  if (_file != 0) {
    static_cast<void>(Os::CloseFile(_file));
  }
}

Os::Status ZipFileSource::Open(const std::string& iPath) {
  Os::Status status = Os::OpenFile(iPath, Os::OpenMode::Read, _file);
  Os::FileInfo info;
  if (status.IsOk()) {
    status = Os::DescribeFile(_file, info);
  }
  if (status.IsOk() && !info.IsRegular()) {
    status = Os::Failure::InvalidParameter();
  }
  _size = info.size;
  return status;
}

bool ZipFileSource::ReadAt(std::uint64_t iOffset, void* oBuffer, std::size_t iSize) noexcept {
  std::size_t read = 0;
  _status = Os::ReadAt(_file, iOffset, oBuffer, iSize, read);
  _isCutShort = _status.IsOk() && read != iSize;
  return _status.IsOk() && !_isCutShort;
}

ZipProblem ZipFileSource::GetProblem() const {
  return _isCutShort ? ZipProblem{KORSysZipFile::kDamaged, {}, "the archive ends too early"} : ToProblem(_status);
}

ZipFileSink::~ZipFileSink() {
  if (_file != 0) {
    static_cast<void>(Os::CloseFile(_file));
  }
  if (!_path.empty()) {
    static_cast<void>(Os::RemoveFile(_path));
  }
}

Os::Status ZipFileSink::Open(const std::string& iFinalPath) {
  static std::atomic<unsigned int> counter{0};
  std::string path = iFinalPath + "." + std::to_string(Os::CurrentProcessId()) + "-" +
                     std::to_string(Os::MonotonicCounter()) + "-" + std::to_string(++counter) + ".tmp";
  Os::FileInfo info;
  if (Os::DescribePath(iFinalPath, info).IsOk() && info.IsFolder()) {
    return Os::Failure::AccessDenied();
  }
  _finalPath = iFinalPath;
  const Os::Status status = Os::OpenFile(path, Os::OpenMode::WriteNew, _file);
  if (status.IsOk()) {
    _path = std::move(path);
  }
  return status;
}

bool ZipFileSink::WriteAt(std::uint64_t iOffset, const void* iData, std::size_t iSize) noexcept {
  if (_status.IsOk()) {
    _status = Os::WriteAt(_file, iOffset, iData, iSize);
  }
  return _status.IsOk();
}

Os::Status ZipFileSink::Commit() {
  Os::Status status = Os::FlushFile(_file);
  const Os::Status closed = Os::CloseFile(std::exchange(_file, 0));
  if (status.IsOk()) {
    status = closed;
  }
  if (status.IsOk()) {
    status = Os::RenameOver(_path, _finalPath);
  }
  if (status.IsOk()) {
    _path.clear();
  }
  return status;
}

}  // namespace VYX::Platform
