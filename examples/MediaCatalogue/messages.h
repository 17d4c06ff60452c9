#pragma once

#include <cstdint>
#include <initializer_list>

#include "KORSysTS/KORUnicodeString.h"

namespace MediaCatalogue {

/// A text for the user: its key in the message catalogs MediaCatalogue.*.json, and what stands in where there are none.
struct Message {
  const char* key;
  const char* english;
};

inline constexpr Message kCataloguing{"Cataloguing", "Cataloguing {0}"};
inline constexpr Message kProgress{"Progress", "{0} of {1} files"};
inline constexpr Message kMediaType{"MediaType", "media type"};
inline constexpr Message kFiles{"Files", "files"};
inline constexpr Message kBytes{"Bytes", "bytes"};
inline constexpr Message kOthers{"Others", "others"};
inline constexpr Message kAll{"All", "all"};
inline constexpr Message kFailures{"Failures", "Not catalogued: {0} files; the catalogue lists them with the reason"};
inline constexpr Message kWritten{"Written", "Written and read back equal: {0} ({1} bytes)"};
inline constexpr Message kPacked{"Packed", "Packed and read back equal: {0} ({1} files)"};
inline constexpr Message kNoSuchFolder{"NoSuchFolder", "There is no folder {0}"};
inline constexpr Message kCannotList{"CannotList", "Cannot list the folder {0}: {1}"};
inline constexpr Message kVerifying{"Verifying", "Verifying {0} against {1}"};
inline constexpr Message kGone{"Gone", "{0}: is gone"};
inline constexpr Message kSizeDiffers{"SizeDiffers", "{0}: {1} bytes, catalogued {2}"};
inline constexpr Message kContentDiffers{"ContentDiffers", "{0}: the content has changed (SHA-256)"};
inline constexpr Message kNotLoaded{"NotLoaded", "{0}: cannot be read; the trace above tells why"};
inline constexpr Message kNoPlace{"NoPlace", "{0}: the location names no file"};
inline constexpr Message kCopyDiffers{"CopyDiffers", "{0}: the copy in the catalogue is not what was catalogued"};
inline constexpr Message kUnchanged{"Unchanged", "All as catalogued: {0} files"};
inline constexpr Message kDifferences{"Differences", "Not as catalogued: {0} of {1} files"};
inline constexpr Message kMeasured{"Measured", "Measured: {0} ({1} files per second)"};
inline constexpr Message kLogIn{"LogIn", "The log is in {0}"};

/// The message in the user's language, the parameters in the places of "{0}", "{1}" and so on.
KORUnicodeString Say(const Message& iMessage, std::initializer_list<KORUnicodeString> iParameters = {});

/// A number as a parameter.
KORUnicodeString Number(std::int64_t iNumber);

}  // namespace MediaCatalogue
