#pragma once

#include <cstddef>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

/**
 * @file
 * Files by descriptor.
 *
 * ```cpp
 * unsigned int file = 0;
 * unsigned int count = 0;
 * if (KORFOpen("notes.txt", "wb", &file) >= 0) {
 *   KORFWrite(file, "one line", 8, &count);
 *   KORFClose(file);
 * }
 * count;  // 8
 * ```
 *
 * Paths take both separators, on every host; a text with a zero byte inside is refused. Descriptors are never 0 and are
 * not inherited by other programs. All functions may be called from any thread; one descriptor belongs to one thread at
 * a time.
 *
 * Every function answers S_OK or a negative code (0x8007xxxx with the Windows error number), leaves a pending error
 * that names file and cause when it fails, and touches its outputs on success only.
 */

/**
 * Opens a file. Nothing waits for the other end of a pipe; a folder is refused.
 *
 * @param iPath the file.
 * @param iMode as of the C library: "r" an existing file, "w" emptied or created, "a" created if needed and always
 * written at its end; then, in any order, "b" or "t" for binary or text mode (the same bytes where the host knows no
 * text mode) and, after "w" or "a", "x" to fail where the name is taken.
 * @param oDescriptor the open file, to be closed with KORFClose.
 */
VYX_EXPORT long KORFOpen(const KORUnicodeString& iPath, const char* iMode, unsigned int* oDescriptor);

/**
 * Reads bytes from where the last read ended.
 *
 * @param iDescriptor an open file.
 * @param oBuffer room for iSize bytes.
 * @param iSize number of bytes wanted; all of them arrive unless the file ends before.
 * @param oRead number of bytes that arrived, 0 at the end of the file.
 */
VYX_EXPORT long KORFRead(unsigned int iDescriptor, void* oBuffer, unsigned int iSize, unsigned int* oRead);

/**
 * Writes bytes; a short write of the host is completed.
 *
 * @param iDescriptor an open file.
 * @param iData the bytes.
 * @param iSize number of bytes.
 * @param oWritten number of bytes written, which is iSize.
 */
VYX_EXPORT long KORFWrite(unsigned int iDescriptor, const void* iData, unsigned int iSize, unsigned int* oWritten);

/**
 * The size of an open regular file in bytes. Anything else (a pipe, a device) has no size and is refused, as is a size
 * beyond 4,294,967,295 bytes: it is never cut.
 */
VYX_EXPORT long KORFSize(unsigned int iDescriptor, unsigned int* oSize);

/// Closes a file. S_OK, or a negative code with a pending error. The descriptor is gone afterwards, also when the host
/// reports that earlier writing failed.
VYX_EXPORT long KORFClose(unsigned int iDescriptor);

/**
 * Tests a path, links followed; folders count as existing.
 *
 * @param iPath the file or folder.
 * @param iMode 0 tests existence, 2 the permission to write; any other mode is refused.
 * @param iReserved 0.
 * @return S_OK, or a negative code when the test fails.
 */
VYX_EXPORT long _KORFileAccess(const KORUnicodeString& iPath, int iMode, int iReserved = 0);

/// Deletes a file or a link, never a folder. S_OK, or a negative code with a pending error.
VYX_EXPORT long _KORDeleteFile(const KORUnicodeString& iPath);
