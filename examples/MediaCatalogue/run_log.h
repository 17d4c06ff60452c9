#pragma once

#include <filesystem>
#include <memory>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXInfLog.h"
#include "arguments.h"

namespace MediaCatalogue {

/**
 * The log of one run: configured by the constructor, closed by the destructor.
 *
 * What the user reads stays on the screen: VYXInfLog::Init with a file would move standard output into it. So the
 * default logger writes to the console, at WARN, where failure traces belong, and the file is added to it with a level
 * of its own. The environment overrides that as in every program of the library: VYX_LOG_LEVEL sets both levels,
 * VYX_LOG_CONFIG_FILE replaces the console by what the settings file says, and VYX_LOG_OUTPUT, where it names a folder,
 * does move standard output into a file.
 */
class RunLog {
 public:
  /**
   * Begins the log: in the file of --log, else, where neither the environment says where to log nor iFolder is empty,
   * in a file of this run in iFolder.
   *
   * @throws std::runtime_error when the file cannot be written.
   */
  RunLog(const Arguments& iArguments, const std::filesystem::path& iFolder);
  ~RunLog();
  RunLog(const RunLog&) = delete;
  RunLog& operator=(const RunLog&) = delete;

  /// The log file, an absolute path; empty where there is none.
  const std::filesystem::path& File() const { return _file; }

  /// Writes a line, unless its level is filtered.
  static void Write(VYXInfLogLevel iLevel, const KORUnicodeString& iText);

 private:
  std::filesystem::path _file;
  std::shared_ptr<VYXInfLog::LogSink> _sink;
};

/// How the files are called that RunLog makes by itself: this, time and process, ".log".
inline constexpr const char* kLogNameStart = "MediaCatalogue_";

}  // namespace MediaCatalogue
