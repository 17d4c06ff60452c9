#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace VYX::Test {

/// An entry of an archive that is put together byte by byte. What is not set says the truth about the content.
struct BuiltEntry {
  std::string name;
  std::string content = {};
  bool isDeflated = false;
  std::uint16_t flags = 0;
  std::uint32_t unixMode = 0;
  std::string extra = {};                     ///< extra fields, in the directory only
  std::optional<std::uint16_t> method = {};   ///< instead of 0 or 8
  std::optional<std::string> data = {};       ///< instead of the coded content
  std::optional<std::uint32_t> crc = {};      ///< in both headers
  std::optional<std::uint32_t> size = {};     ///< in both headers
  std::optional<std::string> localName = {};  ///< in the local header
  std::optional<std::uint16_t> localMethod = {};
  std::optional<std::uint32_t> localCrc = {};
  std::optional<std::uint32_t> localSize = {};
  std::optional<std::uint32_t> offset = {};  ///< in the directory
  bool hasDescriptor = false;                ///< sizes and checksum follow the data
  bool isDescriptorSigned = true;
};

/// An archive of entries, with what its end record says.
struct BuiltArchive {
  std::vector<BuiltEntry> entries;
  std::string comment = {};
  std::optional<std::uint16_t> count = {};
  std::string prefix = {};

  std::string Bytes() const;
};

/// Little-endian numbers, for extra fields.
std::string Le16(std::uint64_t iValue);
std::string Le32(std::uint64_t iValue);
std::string Le64(std::uint64_t iValue);

/// A raw deflate stream of a content.
std::string Deflated(const std::string& iContent);

}  // namespace VYX::Test
