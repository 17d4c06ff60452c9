#pragma once

#include <filesystem>
#include <vector>

#include "VYXPropertyTree.h"
#include "catalogue.h"

namespace MediaCatalogue {

/**
 * The catalogued files as transferred media: a MediaContainer for the folder and for every folder in it, a FileItem for
 * each file.
 *
 * Transferred objects nest to a limited depth. Where folders nest deeper than 200, the container of the 200th holds all
 * that is below, under names such as "sub\\file.txt".
 *
 * @param iFolder the folder that the files' paths are relative to, as an absolute path.
 * @throws std::runtime_error when the media cannot be transferred.
 */
VYXPropertyTree TransferMedia(const std::vector<CataloguedFile>& iFiles, const std::filesystem::path& iFolder);

}  // namespace MediaCatalogue
