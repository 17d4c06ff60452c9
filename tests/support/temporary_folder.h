#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "KORSysTS/KORUnicodeString.h"

namespace VYX::Test {

/// A folder of the test's own that goes away with everything inside.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  /// The folder, or something inside, in the host's own spelling.
  std::string Native(std::string_view iRelative = {}) const;

  /// The same as a text.
  KORUnicodeString Path(std::string_view iRelative = {}) const;

  /// Creates a folder inside, with those on the way; answers its native path.
  std::string MakeFolder(std::string_view iRelative) const;

  /// Creates a file inside; answers its native path.
  std::string MakeFile(std::string_view iRelative, std::string_view iContent) const;

  /// False on a host, or for a user, that makes no links.
  static bool CanMakeLinks();

  /// Creates a link inside; answers its native path.
  std::string MakeLink(std::string_view iRelative, const std::string& iTarget) const;

  /// The sorted names in the folder or in one inside.
  std::vector<std::string> Names(std::string_view iRelative = {}) const;

 private:
  std::string _path;
  [[maybe_unused]] bool _isOfParent = false;  // of the process that runs the same test, see replay.h
};

/// The whole content of a file, by means of the standard library; "<unreadable>" when there is none.
std::string ContentOf(const std::string& iNativePath);

/// Number of descriptors that the process holds open.
int CountOpenDescriptors();

}  // namespace VYX::Test
