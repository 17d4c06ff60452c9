#pragma once

#include <string>

#include "VYXExport.h"

namespace VYX::Logging {

/**
 * Describes a log file that the back end shall write: narrow UTF-8 texts.
 *
 * The format and the filter are those of the settings file. One object belongs to one thread at a time.
 */
class VYX_EXPORT TextFileSink {
 public:
  /**
   * Describes a file; nothing is opened or checked before a back end takes it.
   *
   * @param iDirectory the file's folder, made as needed.
   * @param iFile the file's path; a bare name stands in iDirectory.
   * @param iFormat how a record becomes a line.
   * @param iFilter which records are written; the empty text takes all.
   */
  TextFileSink(const char* iDirectory, const char* iFile, const char* iFormat, const char* iFilter);
  ~TextFileSink();

  /// The file's folder.
  const std::string& GetDirectory() const noexcept { return _directory; }
  /// The file's path or bare name.
  const std::string& GetFile() const noexcept { return _file; }
  /// How a record becomes a line.
  const std::string& GetFormat() const noexcept { return _format; }
  /// Which records are written.
  const std::string& GetFilter() const noexcept { return _filter; }

 private:
  std::string _directory;
  std::string _file;
  std::string _format;
  std::string _filter;
};

}  // namespace VYX::Logging
