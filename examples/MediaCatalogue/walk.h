#pragma once

#include <filesystem>
#include <vector>

#include "KORSysTS/KORUnicodeString.h"

namespace MediaCatalogue {

// The files of the results' folder.
inline constexpr const char* kCatalogueName = "catalogue.json";
inline constexpr const char* kArchiveName = "catalogue.zip";
inline constexpr const char* kPerformanceName = "performance.json";

/**
 * The regular files below the current folder: paths relative to it with the library's separators, in ascending order.
 *
 * @param iOut the results' folder, as an absolute path without links; what it holds is left out. Where it is the
 * current folder itself, only the results are.
 * @param iLogFile an absolute path that is left out; may be empty.
 */
std::vector<KORUnicodeString> ListFiles(const std::filesystem::path& iOut, const std::filesystem::path& iLogFile);

}  // namespace MediaCatalogue
