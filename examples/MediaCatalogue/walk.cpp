#include "walk.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "VYXInfSystemUtil.h"
#include "run_log.h"

namespace MediaCatalogue {

namespace {

// An absolute path as the walk would spell it; empty where it is not below the current folder.
KORUnicodeString SpelledHere(const std::filesystem::path& iPath, bool iIsFolder) {
  const std::filesystem::path relative = iPath.lexically_relative(std::filesystem::current_path());
  if (relative.empty() || *relative.begin() == ".." || relative == ".") {
    return {};
  }
  const KORUnicodeString spelled(relative.generic_string().c_str());
  return VYXInfSystemUtil::ResolvePath(spelled, iIsFolder);
}

bool IsResult(const KORUnicodeString& iPath) {
  const std::string_view path = iPath.ToStringView();
  const bool isLog =
      path.starts_with(kLogNameStart) && path.ends_with(".log") && path.find('\\') == std::string_view::npos;
  return isLog || iPath == kCatalogueName || iPath == kArchiveName || iPath == kPerformanceName;
}

}  // namespace

std::vector<KORUnicodeString> ListFiles(const std::filesystem::path& iOut, const std::filesystem::path& iLogFile) {
  constexpr unsigned int kFlags =
      VYXInfSystemUtil::ENUM_FILES | VYXInfSystemUtil::ENUM_RECURSIVE | VYXInfSystemUtil::ENUM_RELATIVE;
  std::vector<KORUnicodeString> files = VYXInfSystemUtil::EnumDirectories(".", "", kFlags, nullptr);

  const KORUnicodeString out = SpelledHere(iOut, true);
  const KORUnicodeString logFile = SpelledHere(iLogFile, false);
  const bool isOutHere = iOut == std::filesystem::current_path();
  std::erase_if(files, [&](const KORUnicodeString& iPath) {
    const bool isBelowOut = !out.IsEmpty() && iPath.ToStringView().starts_with(out.ToStringView());
    return isBelowOut || (isOutHere && IsResult(iPath)) || iPath == logFile;
  });
  std::ranges::sort(files);
  return files;
}

}  // namespace MediaCatalogue
