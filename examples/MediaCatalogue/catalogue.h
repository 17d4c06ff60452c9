#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXPropertyTree.h"
#include "file_facts.h"

namespace MediaCatalogue {

/// How many files of a kind there are, and how many bytes they hold together.
struct Total {
  std::int64_t files = 0;
  std::int64_t bytes = 0;
};

/// One file of the catalogue; the path is relative to the folder.
struct CataloguedFile {
  KORUnicodeString path;
  FileFacts facts;
};

/**
 * The catalogue of one folder, and the property tree that is written:
 *
 *     {"failures": {"<path>": "<reason>", ...},
 *      "files": {"<path>": {"crc32": ..., "lastWriteTime": ..., "mediaType": ..., "sha256": ..., "size": ...}, ...},
 *      "folder": "<path>",
 *      "totals": {"byMediaType": {"<type>": {"bytes": ..., "files": ...}, ...}, "bytes": ..., "failures": ...,
 *                 "files": ...}}
 *
 * The program adds the member "media", the same files as transferred media (media_tree.h).
 *
 * Operations raise std::runtime_error where the tree finds no memory.
 */
class Catalogue {
 public:
  /// Enters a file.
  void Add(const KORUnicodeString& iPath, FileFacts iFacts);

  /// Enters a file that could not be read.
  void AddFailure(const KORUnicodeString& iPath, const KORUnicodeString& iReason);

  /// The catalogue of iFolder as a tree, with the totals.
  VYXPropertyTree ToTree(const KORUnicodeString& iFolder) const;

  /// The files in the order in which they were entered.
  const std::vector<CataloguedFile>& Files() const { return _files; }

  const Total& All() const { return _all; }
  const std::map<KORUnicodeString, Total>& ByMediaType() const { return _byMediaType; }
  std::int64_t FailureCount() const { return _failureCount; }

 private:
  std::vector<CataloguedFile> _files;
  VYXPropertyTree _failures;
  Total _all;
  std::map<KORUnicodeString, Total> _byMediaType;
  std::int64_t _failureCount = 0;
};

}  // namespace MediaCatalogue
