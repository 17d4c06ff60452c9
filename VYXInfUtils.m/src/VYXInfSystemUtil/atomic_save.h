#pragma once

#include "KORSysTS/KORUnicodeString.h"
#include "file_content.h"

namespace VYX::Internal {

/// How an atomic save treats the file that is there.
struct AtomicSaveOptions {
  bool isAppended = false;  ///< the old content stays, in front of the new one
  bool isNew = false;       ///< the name must be free
};

/// Where an atomic save failed.
enum class AtomicSaveStep {
  Open,
  Write,
};

/**
 * Writes a file so that it holds its old content or the new one whatever happens: to a file beside it, flushed to the
 * disk, renamed over it. Permissions are kept, owner and group where the host allows; of a link, the file behind it is
 * replaced.
 *
 * @param oStep where it failed; untouched on success.
 * @return S_OK; or the code of the host's error, which is left pending. Nothing is left beside the file then.
 */
long SaveAtomically(const KORUnicodeString& iPath, const FileContent& iContent, const AtomicSaveOptions& iOptions,
                    AtomicSaveStep& oStep);

}  // namespace VYX::Internal
