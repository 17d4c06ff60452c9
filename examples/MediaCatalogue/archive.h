#pragma once

#include <cstdint>
#include <vector>

#include "KORSysTS/KORUnicodeString.h"
#include "catalogue.h"

namespace MediaCatalogue {

/// What came of packing and of reading back.
struct ArchiveResult {
  std::uint64_t packed = 0;                   ///< files in the archive
  std::vector<KORUnicodeString> leftOut;      ///< files that no archive takes, a line with the reason each
  std::vector<KORUnicodeString> differences;  ///< what is not as catalogued, a line each
};

/**
 * Packs the catalogued files, which are below the current folder, into a zip archive under their relative paths; an
 * earlier archive is replaced as a whole. Then reads every entry back, piece by piece, and holds its size, CRC-32 and
 * SHA-256 against the catalogue.
 *
 * @throws std::runtime_error with the reason, when there is no archive in the end, or it cannot be listed.
 */
ArchiveResult PackAndVerify(const std::vector<CataloguedFile>& iFiles, const KORUnicodeString& iArchive);

}  // namespace MediaCatalogue
