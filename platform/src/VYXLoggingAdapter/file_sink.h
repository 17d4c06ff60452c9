#pragma once

#include <cstdint>
#include <deque>
#include <string>

#include "platform/os/files.h"
#include "platform/src/VYXLoggingAdapter/file_name_pattern.h"
#include "platform/src/VYXLoggingAdapter/fork_safe_mutex.h"
#include "platform/src/VYXLoggingAdapter/sink.h"
#include "platform/src/VYXLoggingAdapter/trouble.h"

namespace VYX::Logging {

/// How a log file is written.
struct FileSinkOptions {
  std::string folder;              ///< in the host's spelling; empty for the current folder
  FileNamePattern name;            ///< within the folder, or a path of its own
  bool append = true;              ///< keeps what an existing file holds
  bool autoFlush = true;           ///< hands every line to the operating system before the call returns
  std::uint64_t rotationSize = 0;  ///< bytes after which the next file is begun; 0 for never
  std::uint64_t maxFiles = 0;      ///< full files of this sink that are kept; 0 for all
  std::string target;              ///< folder that full files are moved to; empty for none
};

/**
 * Writes a log file: each line whole, in one call to the operating system, at the end of the file, so that neither
 * threads nor processes nor a kill tear one.
 *
 * The folder is made as needed; a relative one is taken from the folder that is current when the sink is made. The file
 * is opened with the first line, and again within a second after somebody moved or removed it. Without automatic
 * flushing, lines below ERROR wait in memory until 64 KiB have come together, a line of ERROR or above is written, or
 * the sink is flushed or dies.
 */
class FileSink : public Sink {
 public:
  FileSink(FileSinkOptions iOptions, LineFormat iFormat, Filter iFilter);
  ~FileSink() override;

  void Flush() noexcept override;

  /// Opens the file now. False, and the trouble is reported, where that fails.
  bool Open();

 private:
  void WriteLine(const Record& iRecord, std::string_view iLine) override;
  void ForgetForkedLines(const Record& iRecord);
  void ReopenIfGone(const Os::WallTime& iTime);
  void RotateIfFull(std::size_t iComing, const Os::WallTime& iTime);
  void RetireFullFile();
  bool OpenLocked(const Os::WallTime& iTime);
  Os::Status OpenDescriptor();
  void CloseLocked() noexcept;
  void FlushLocked() noexcept;
  void WriteOut(std::string_view iBytes);

  const FileSinkOptions _options;
  ForkSafeMutex _lock;
  Os::FileDescriptor _file = 0;
  std::string _path;
  std::uint64_t _size = 0;
  std::uint64_t _number = 0;         // of the file, for names that hold one
  bool _isEmptied = false;           // a file that is not appended to is emptied once
  bool _isTorn = false;              // a failed write left part of a line behind
  std::int64_t _checkedSecond = 0;   // when the file was last seen in its place
  std::deque<std::string> _full;     // full files, the oldest first
  std::string _pending;              // lines that wait for a flush
  std::int32_t _pendingProcess = 0;  // whose they are
  Trouble _trouble;
};

}  // namespace VYX::Logging
