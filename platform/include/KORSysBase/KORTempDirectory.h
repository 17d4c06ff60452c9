#pragma once

#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

/**
 * @file
 * The folder for temporary files.
 */

/**
 * The folder for temporary files: what the environment variable TMPDIR names, where that is the absolute path of a
 * folder that may be written; else the host's own folder for that, where it may be written.
 *
 * TMPDIR is not asked where the program runs with raised privileges. May be called from any thread while none changes
 * the environment.
 *
 * @param oPath a new text with the path, in the host's own spelling; the caller deletes it.
 * @return 0 on success; where there is no such folder a negative code and a pending error, and oPath is untouched.
 */
VYX_EXPORT long KORGetTempDirectory(KORUnicodeString** oPath);
