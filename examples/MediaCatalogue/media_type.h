#pragma once

#include "KORSysTS/KORUnicodeString.h"

namespace MediaCatalogue {

/// The media type (RFC 6838) that a file's extension stands for, whatever its letter case; "application/octet-stream"
/// for one that is not known, and for none.
const char* MediaTypeOf(const KORUnicodeString& iPath);

}  // namespace MediaCatalogue
