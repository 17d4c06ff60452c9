#pragma once

#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

/**
 * @file
 * Paths. Both separators, `\` and `/`, are understood on every host. All functions may be called from any thread.
 *
 * ```cpp
 * const KORUnicodeString path("C:\\photos/fjord.jpg");
 * KORUnicodeString folder;
 * KORUnicodeString name;
 * KORSplitPathEx(&path, &folder, &name);
 * folder;  // "C:\\photos"
 * name;    // "fjord.jpg"
 * ```
 */

/**
 * Splits a path behind its last separator into folder and file name, by its text alone.
 *
 * The separator between the two belongs to neither, unless the folder is a root: `C:\a\b` gives `C:\a` and `b`, `C:\a`
 * gives `C:\` and `a`, `\a` gives `\` and `a`. A path that ends in a separator has an empty file name; one without a
 * separator an empty folder, or its drive (`C:a` gives `C:` and `a`). The folder `\\server\share` of a network path is
 * a root as well.
 *
 * @param iPath the path; may be the object of an output.
 * @param oDirectory, oFileName the parts; null for a part that is not wanted.
 * @return S_OK, or a negative code and a pending error for null, an empty path and one with a zero byte inside; the
 * outputs are then untouched.
 */
VYX_EXPORT long KORSplitPathEx(const KORUnicodeString* iPath, KORUnicodeString* oDirectory,
                               KORUnicodeString* oFileName);

/**
 * Looks for a file or folder in a list of folders, in order.
 *
 * @param iRelativePath what to look for, relative to each folder.
 * @param iSearchPaths the folders, a list as QB::Paths reads it; null is an empty list.
 * @return the absolute path of the first that exists, in the host's own spelling; empty when there is none.
 */
VYX_EXPORT KORUnicodeString KORFindPath(const char* iRelativePath, const char* iSearchPaths);

/**
 * The host's own spelling of a path, for callers that hand it to other software.
 *
 * Backslashes become slashes where the host separates by slashes. Whether the path exists is not asked.
 *
 * @param iPath the path in either spelling.
 * @param oNativePath the same path as the host spells it.
 * @return S_OK, or a negative code and a pending error for a text with a zero byte inside and, where the host has no
 * drives, for a drive prefix (0x80070003, path not found); the output is then untouched.
 */
VYX_EXPORT long KORNativePath(const KORUnicodeString& iPath, KORUnicodeString& oNativePath);
