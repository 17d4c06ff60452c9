#pragma once

#include <string>

#include "platform/adapters/zip_archive.h"
#include "platform/os/random_access.h"
#include "zip_problem.h"

namespace VYX::Platform {

/// An archive file that is read. It stays open, so that every look at it sees the same file.
class ZipFileSource final : public Adapters::ByteSource {
 public:
  ZipFileSource() = default;
  ~ZipFileSource() override;
  ZipFileSource(const ZipFileSource&) = delete;
  ZipFileSource& operator=(const ZipFileSource&) = delete;

  /// Opens a regular file; anything else is refused.
  Os::Status Open(const std::string& iPath);

  std::uint64_t GetSize() const noexcept override { return _size; }
  bool ReadAt(std::uint64_t iOffset, void* oBuffer, std::size_t iSize) noexcept override;

  /// Why ReadAt failed last.
  ZipProblem GetProblem() const;

 private:
  Os::FileDescriptor _file = 0;
  std::uint64_t _size = 0;
  Os::Status _status;
  bool _isCutShort = false;
};

/// An archive file that is written, beside its final name until it is complete.
class ZipFileSink final : public Adapters::ByteSink {
 public:
  ZipFileSink() = default;
  /// Removes what was not committed.
  ~ZipFileSink() override;
  ZipFileSink(const ZipFileSink&) = delete;
  ZipFileSink& operator=(const ZipFileSink&) = delete;

  Os::Status Open(const std::string& iFinalPath);
  bool WriteAt(std::uint64_t iOffset, const void* iData, std::size_t iSize) noexcept override;

  /// Gives the file its final name once all of it is on the disk.
  Os::Status Commit();

  /// Why WriteAt failed first; success where it did not.
  Os::Status GetStatus() const noexcept { return _status; }

 private:
  std::string _finalPath;
  std::string _path;
  Os::FileDescriptor _file = 0;
  Os::Status _status;
};

}  // namespace VYX::Platform
