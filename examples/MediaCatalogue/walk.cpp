#include "walk.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "VYXInfSystemUtil.h"

namespace MediaCatalogue {

namespace {

// The results' folder as the walk would spell it, ended by a separator; empty where it is not below the current folder.
KORUnicodeString PrefixOf(const std::filesystem::path& iOut) {
  const std::filesystem::path relative = iOut.lexically_relative(std::filesystem::current_path());
  if (relative.empty() || *relative.begin() == ".." || relative == ".") {
    return {};
  }
  const KORUnicodeString spelled(relative.generic_string().c_str());
  return VYXInfSystemUtil::ResolvePath(spelled, true);
}

bool IsResult(const KORUnicodeString& iPath) {
  return iPath == kCatalogueName || iPath == kArchiveName;
}

}  // namespace

std::vector<KORUnicodeString> ListFiles(const std::filesystem::path& iOut) {
  constexpr unsigned int kFlags =
      VYXInfSystemUtil::ENUM_FILES | VYXInfSystemUtil::ENUM_RECURSIVE | VYXInfSystemUtil::ENUM_RELATIVE;
  std::vector<KORUnicodeString> files = VYXInfSystemUtil::EnumDirectories(".", "", kFlags, nullptr);

  const KORUnicodeString prefix = PrefixOf(iOut);
  const bool isOutHere = iOut == std::filesystem::current_path();
  std::erase_if(files, [&](const KORUnicodeString& iPath) {
    const bool isBelowOut = !prefix.IsEmpty() && iPath.ToStringView().starts_with(prefix.ToStringView());
    return isBelowOut || (isOutHere && IsResult(iPath));
  });
  std::ranges::sort(files);
  return files;
}

}  // namespace MediaCatalogue
