#pragma once

#include "arguments.h"

namespace MediaCatalogue {

// Exit statuses.
inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kMisused = 2;

/**
 * Catalogues a folder: lists and reads its files, writes the catalogue and the archive, verifies both and tells about
 * it on standard output.
 *
 * @return the exit status.
 * @throws std::exception with the reason, when the results cannot be written.
 */
int CatalogueFolder(const Arguments& iArguments);

/// Verifies the catalogue that the arguments name, and answers the exit status. Throws as VerifyCatalogue does.
int VerifyFiles(const Arguments& iArguments);

}  // namespace MediaCatalogue
