#include "media_type.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "VYXInfSystemUtil.h"

namespace MediaCatalogue {

namespace {

struct Row {
  std::string_view extension;
  const char* mediaType;
};

// In the order of the extensions.
constexpr Row kTypes[] = {
    {"aac", "audio/aac"},         {"avi", "video/x-msvideo"},
    {"bmp", "image/bmp"},         {"c", "text/x-c"},
    {"cc", "text/x-c++"},         {"cmake", "text/x-cmake"},
    {"cpp", "text/x-c++"},        {"css", "text/css"},
    {"csv", "text/csv"},          {"flac", "audio/flac"},
    {"gif", "image/gif"},         {"gz", "application/gzip"},
    {"h", "text/x-c++"},          {"hpp", "text/x-c++"},
    {"htm", "text/html"},         {"html", "text/html"},
    {"ini", "text/plain"},        {"jpeg", "image/jpeg"},
    {"jpg", "image/jpeg"},        {"js", "text/javascript"},
    {"json", "application/json"}, {"log", "text/plain"},
    {"md", "text/markdown"},      {"mkv", "video/matroska"},
    {"mov", "video/quicktime"},   {"mp3", "audio/mpeg"},
    {"mp4", "video/mp4"},         {"ogg", "audio/ogg"},
    {"pdf", "application/pdf"},   {"png", "image/png"},
    {"py", "text/x-python"},      {"sh", "application/x-sh"},
    {"svg", "image/svg+xml"},     {"tar", "application/x-tar"},
    {"tif", "image/tiff"},        {"tiff", "image/tiff"},
    {"ts", "video/mp2t"},         {"txt", "text/plain"},
    {"wav", "audio/wav"},         {"webm", "video/webm"},
    {"webp", "image/webp"},       {"xml", "application/xml"},
    {"yaml", "application/yaml"}, {"yml", "application/yaml"},
    {"zip", "application/zip"},
};
static_assert(std::ranges::is_sorted(kTypes, {}, &Row::extension));

}  // namespace

const char* MediaTypeOf(const KORUnicodeString& iPath) {
  KORUnicodeString name;
  KORUnicodeString extension;
  VYXInfSystemUtil::SplitFileNameExt(VYXInfSystemUtil::GetFileNameFromPath(iPath), name, extension);
  extension.ToLower();
  const Row* const row = std::ranges::lower_bound(kTypes, extension.ToStringView(), {}, &Row::extension);
  const bool isKnown = row != std::end(kTypes) && row->extension == extension.ToStringView();
  return isKnown ? row->mediaType : "application/octet-stream";
}

}  // namespace MediaCatalogue
