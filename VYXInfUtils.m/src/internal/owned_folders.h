#pragma once

#include <cstdint>

#include "KORSysBase/KORListValKORUnicodeString.h"
#include "internal/FailureTrace.h"

namespace VYX::Internal {

/**
 * Creates a folder of a unique name in the temporary folder, with rights for its owner only. A folder that an earlier
 * call of the same second and thread left under that name is taken again.
 *
 * @param ioFolders the list of the owner, which gets the folder.
 * @param oPath the folder, with a backslash at its end.
 * @return 0, or the platform's code and a pending error.
 */
long CreateTemporaryFolder(const KORUnicodeString& iName, KORListValKORUnicodeString& ioFolders,
                           KORUnicodeString& oPath);

/**
 * Removes the folders of a list, each with everything inside, and empties the list. Each is told at TRACE as iWords and
 * its path; what cannot be removed leaves a trace of iSite. Folders that are gone are skipped. Nothing is removed in
 * another process than iOwnerProcess, so that a forked child leaves its parent's folders alone. Never throws.
 */
void RemoveFolders(KORListValKORUnicodeString& ioFolders, std::int32_t iOwnerProcess, const char* iWords,
                   const SourceSite& iSite) noexcept;

}  // namespace VYX::Internal
