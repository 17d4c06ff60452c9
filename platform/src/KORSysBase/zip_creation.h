#pragma once

#include <memory>
#include <string>
#include <unordered_set>

#include "platform/adapters/deflate.h"
#include "platform/adapters/zip_archive.h"
#include "zip_file_io.h"
#include "zip_problem.h"

namespace VYX::Platform {

/// An archive that is being created. What is not finished leaves nothing behind.
class ZipCreation {
 public:
  /// Files up to iMaxInMemory bytes are compressed in one go.
  explicit ZipCreation(std::uint64_t iMaxInMemory);
  ~ZipCreation();
  ZipCreation(const ZipCreation&) = delete;
  ZipCreation& operator=(const ZipCreation&) = delete;

  /// Begins an archive that gets iNativePath as its name when it is finished.
  ZipProblem Open(const std::string& iNativePath);

  /// Notes a file to be stored as iName; it is read in Finish.
  ZipProblem Add(const std::string& iNativeFile, const std::string& iName);

  /// Reads the files and writes the archive.
  ZipProblem Finish();

 private:
  struct Work;

  std::unique_ptr<Work> _work;
  std::unordered_set<std::string> _names;
};

}  // namespace VYX::Platform
