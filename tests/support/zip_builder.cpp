#include "support/zip_builder.h"

#include "platform/adapters/crc32.h"
#include "platform/adapters/deflate.h"

namespace VYX::Test {

namespace {

constexpr std::uint16_t kDescriptorFlag = 8;

std::string Le(std::uint64_t iValue, int iCount) {
  std::string bytes;
  for (int byte = 0; byte < iCount; ++byte) {
    bytes += static_cast<char>(iValue >> (8 * byte) & 0xFF);
  }
  return bytes;
}

struct Figures {
  std::string data;
  std::uint16_t flags;
  std::uint16_t method;
  std::uint32_t crc;
  std::uint64_t size;
};

Figures FiguresOf(const BuiltEntry& iEntry) {
  Figures figures;
  figures.data = iEntry.data.value_or(iEntry.isDeflated ? Deflated(iEntry.content) : iEntry.content);
  figures.flags = static_cast<std::uint16_t>(iEntry.flags | (iEntry.hasDescriptor ? kDescriptorFlag : 0));
  figures.method = iEntry.method.value_or(static_cast<std::uint16_t>(iEntry.isDeflated ? 8 : 0));
  figures.crc = iEntry.crc.value_or(Adapters::Crc32(0, iEntry.content.data(), iEntry.content.size()));
  figures.size = iEntry.size.value_or(static_cast<std::uint32_t>(iEntry.content.size()));
  return figures;
}

std::string LocalPart(const BuiltEntry& iEntry, const Figures& iFigures) {
  constexpr std::uint64_t kDosTime = 0x21'0000;  // 1980-01-01 00:00
  const std::string name = iEntry.localName.value_or(iEntry.name);
  const std::string sizes = Le32(iFigures.crc) + Le32(iFigures.data.size()) + Le32(iFigures.size);
  std::string part =
      "PK\3\4" + Le16(20) + Le16(iFigures.flags) + Le16(iEntry.localMethod.value_or(iFigures.method)) + Le32(kDosTime);
  part += iEntry.hasDescriptor ? std::string(12, '\0')
                               : Le32(iEntry.localCrc.value_or(iFigures.crc)) + Le32(iFigures.data.size()) +
                                     Le32(iEntry.localSize.value_or(static_cast<std::uint32_t>(iFigures.size)));
  part += Le16(name.size()) + Le16(0) + name + iFigures.data;
  if (iEntry.hasDescriptor) {
    part += (iEntry.isDescriptorSigned ? "PK\7\10" : "") + sizes;
  }
  return part;
}

std::string DirectoryPart(const BuiltEntry& iEntry, const Figures& iFigures, std::uint64_t iOffset) {
  constexpr std::uint64_t kMadeByUnix = 3 << 8 | 20;
  constexpr std::uint64_t kDosTime = 0x21'0000;
  return "PK\1\2" + Le16(kMadeByUnix) + Le16(20) + Le16(iFigures.flags) + Le16(iFigures.method) + Le32(kDosTime) +
         Le32(iFigures.crc) + Le32(iFigures.data.size()) + Le32(iFigures.size) + Le16(iEntry.name.size()) +
         Le16(iEntry.extra.size()) + Le16(0) + Le16(0) + Le16(0) +
         Le32(static_cast<std::uint64_t>(iEntry.unixMode) << 16U) +
         Le32(iEntry.offset.value_or(static_cast<std::uint32_t>(iOffset))) + iEntry.name + iEntry.extra;
}

}  // namespace

std::string Le16(std::uint64_t iValue) {
  return Le(iValue, 2);
}
std::string Le32(std::uint64_t iValue) {
  return Le(iValue, 4);
}
std::string Le64(std::uint64_t iValue) {
  return Le(iValue, 8);
}

std::string Deflated(const std::string& iContent) {
  const Adapters::ByteArray packed = Adapters::Deflater().Deflate(iContent.data(), iContent.size());
  return std::string(packed.data.get(), packed.size);
}

std::string BuiltArchive::Bytes() const {
  std::string bytes = prefix;
  std::string directory;
  for (const BuiltEntry& entry : entries) {
    const Figures figures = FiguresOf(entry);
    directory += DirectoryPart(entry, figures, bytes.size());
    bytes += LocalPart(entry, figures);
  }
  const std::uint64_t number = count.value_or(static_cast<std::uint16_t>(entries.size()));
  const std::string end = "PK\5\6" + Le32(0) + Le16(number) + Le16(number) + Le32(directory.size()) +
                          Le32(bytes.size()) + Le16(comment.size()) + comment;
  return bytes + directory + end;
}

}  // namespace VYX::Test
