#pragma once

#include <string>
#include <string_view>

namespace VYX::Fuzz {

/// A file in memory that can be opened by its path, for what reads files: writing it anew costs microseconds.
class MemoryFile {
 public:
  MemoryFile();
  ~MemoryFile();
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  /// Replaces the content.
  void Write(std::string_view iContent);

  const std::string& Path() const noexcept { return _path; }

 private:
  int _file;
  std::string _path;
};

}  // namespace VYX::Fuzz
