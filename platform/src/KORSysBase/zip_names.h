#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "zip_layout.h"

namespace VYX::Platform {

/// An entry's name in UTF-8: by its Unicode path field, by its flag, as UTF-8 where iIsUtf8Preferred and it is
/// well-formed, else by code page 437.
std::string DecodeName(const ZipEntry& iEntry, bool iIsUtf8Preferred);

/// Which names are refused beyond those that are never safe.
struct ZipNameRules {
  bool arePortableNamesRequired = true;
  bool isCaseIgnored = false;
};

/// Where an entry goes below the target folder.
struct ZipTarget {
  std::string path;  ///< components joined with "/"; empty for the target folder itself
  bool isFolder = false;
};

/// Turns a name into a path below the target folder. Null on success, else why the name is refused; oTarget is then
/// untouched. Separators repeated and components "." fall away.
const char* ToTarget(std::string_view iName, const ZipNameRules& iRules, ZipTarget& oTarget);

/// The position of a target that another one takes the place of: two files of one path, or a file where another needs a
/// folder. Folders may be repeated. The number of targets where there is none. Linear memory, whatever the paths.
std::size_t FindClash(const std::vector<ZipTarget>& iTargets, bool iIsCaseIgnored);

}  // namespace VYX::Platform
