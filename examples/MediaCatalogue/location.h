#pragma once

#include <filesystem>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXInfLoadableContent.h"

namespace MediaCatalogue {

/**
 * The location from which VYX::Inf::LoadableContent loads a file.
 *
 * LoadableContent takes what follows "file:///" for the path as it stands, so that an absolute path is put there whole:
 * "/photos/a #1.png" gives "file:////photos/a #1.png", with four slashes and nothing percent-encoded.
 *
 * @param iFolder an absolute path.
 * @param iPath relative to it, with the library's separators.
 */
KORUnicodeString LocationOf(const std::filesystem::path& iFolder, const KORUnicodeString& iPath);

/// The location of a content, which it tells only where it transfers itself.
KORUnicodeString LocationOf(const VYX::Inf::LoadableContent& iContent);

/// The path in a location; empty where there is none.
KORUnicodeString PathIn(const KORUnicodeString& iLocation);

}  // namespace MediaCatalogue
