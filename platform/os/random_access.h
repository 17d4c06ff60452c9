#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/os/files.h"

/// Reading and writing an open file at any place, without a position that calls share. The rules of files.h hold.
namespace VYX::Os {

/// Reads iSize bytes from an offset, fewer only at the end of the file or on failure; oRead says how many arrived.
Status ReadAt(FileDescriptor iFile, std::uint64_t iOffset, void* oBuffer, std::size_t iSize, std::size_t& oRead);

/// Writes all bytes at an offset, which may lie behind the end.
Status WriteAt(FileDescriptor iFile, std::uint64_t iOffset, const void* iData, std::size_t iSize);

}  // namespace VYX::Os
