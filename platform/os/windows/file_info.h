#pragma once

#include <string>

#include "platform/os/files.h"
#include "platform/os/windows/file_handle.h"

namespace VYX::Os::Windows {

/// What an open file or folder is.
Status Describe(void* iFile, FileInfo& oInfo);

/// Opens a file or folder for a look at it, links followed unless iIsLinkItself.
Status OpenForQuery(const std::wstring& iPath, bool iIsLinkItself, FileHandle& oFile);

/// True for a link or another reparse point, by attributes.
bool IsLink(std::uint32_t iAttributes) noexcept;

/// True for a folder that is no link, by attributes.
bool IsRealFolder(std::uint32_t iAttributes) noexcept;

}  // namespace VYX::Os::Windows
