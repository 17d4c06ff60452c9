#pragma once

#include <cstdint>
#include <map>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXPropertyTree.h"
#include "file_facts.h"

namespace MediaCatalogue {

/// How many files of a kind there are, and how many bytes they hold together.
struct Total {
  std::int64_t files = 0;
  std::int64_t bytes = 0;
};

/**
 * The catalogue of one folder, as the property tree that is written:
 *
 *     {"failures": {"<path>": "<reason>", ...},
 *      "files": {"<path>": {"crc32": ..., "lastWriteTime": ..., "mediaType": ..., "sha256": ..., "size": ...}, ...},
 *      "folder": "<path>",
 *      "totals": {"byMediaType": {"<type>": {"bytes": ..., "files": ...}, ...}, "bytes": ..., "failures": ..., "files":
 * ...}}
 *
 * Operations raise std::runtime_error where the tree finds no memory.
 */
class Catalogue {
 public:
  /// Enters a file.
  void Add(const KORUnicodeString& iPath, const FileFacts& iFacts);

  /// Enters a file that could not be read.
  void AddFailure(const KORUnicodeString& iPath, const KORUnicodeString& iReason);

  /// Adds the totals and gives the tree away; the catalogue is at its end then.
  VYXPropertyTree TakeTree(const KORUnicodeString& iFolder);

  const Total& All() const { return _all; }
  const std::map<KORUnicodeString, Total>& ByMediaType() const { return _byMediaType; }
  std::int64_t FailureCount() const { return _failureCount; }

 private:
  VYXPropertyTree _files;
  VYXPropertyTree _failures;
  Total _all;
  std::map<KORUnicodeString, Total> _byMediaType;
  std::int64_t _failureCount = 0;
};

}  // namespace MediaCatalogue
