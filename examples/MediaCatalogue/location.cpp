#include "location.h"

#include <string>
#include <string_view>

#include "VYXPropertyTree.h"
#include "VYXPropertyTreeTransfer.h"

namespace MediaCatalogue {

namespace {

constexpr std::string_view kPrefix = "file:///";

}  // namespace

KORUnicodeString LocationOf(const std::filesystem::path& iFolder, const KORUnicodeString& iPath) {
  KORUnicodeString path = iPath;
  path.ReplaceAll("\\", "/");
  KORUnicodeString location(kPrefix);
  location.Append(std::string_view(iFolder.generic_string())).Append("/").Append(path);
  return location;
}

KORUnicodeString LocationOf(const VYX::Inf::LoadableContent& iContent) {
  VYXPropertyTree fields;
  KORUnicodeString location;
  if (VYX::Inf::PropertyTreeTransmitter::Transmit(iContent, fields)) {
    fields.GetString("location", location);
  }
  return location;
}

KORUnicodeString PathIn(const KORUnicodeString& iLocation) {
  const std::string_view location = iLocation.ToStringView();
  return location.starts_with(kPrefix) ? KORUnicodeString(location.substr(kPrefix.size())) : KORUnicodeString();
}

}  // namespace MediaCatalogue
