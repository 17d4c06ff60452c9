#pragma once

#include <cstdint>

#include "KORSysTS/KORUnicodeString.h"
#include "Quillbase/Binary.h"

namespace MediaCatalogue {

/// Files of up to so many bytes are held in the catalogue themselves.
inline constexpr std::int64_t kInlineLimit = 1024;

/// What the catalogue tells about one file.
struct FileFacts {
  std::int64_t size = 0;           ///< bytes
  std::int64_t lastWriteTime = 0;  ///< seconds since 1970-01-01 UTC
  KORUnicodeString crc32;          ///< eight hexadecimal digits
  KORUnicodeString sha256;         ///< 64 hexadecimal digits
  KORUnicodeString mediaType;
  QB::Binary content;  ///< of a file up to kInlineLimit, else empty
};

/// A path relative to the current folder, spelled so that the platform never takes its first component for anything but
/// a name.
KORUnicodeString FromHere(const KORUnicodeString& iPath);

/**
 * Reads a file and tells about it.
 *
 * @param iPath relative to the current folder.
 * @param oReason why the file could not be read, where the answer is false; oFacts is untouched then.
 */
bool ReadFacts(const KORUnicodeString& iPath, FileFacts& oFacts, KORUnicodeString& oReason);

/// A path that can be shown and stored: bytes that are no UTF-8 become U+FFFD.
KORUnicodeString Readable(const KORUnicodeString& iPath);

/// The message of the platform's pending error, which is taken away; iDefault where there is none.
KORUnicodeString TakePendingMessage(const char* iDefault);

}  // namespace MediaCatalogue
