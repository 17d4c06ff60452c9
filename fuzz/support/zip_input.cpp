#include "fuzz/support/zip_input.h"

#include <string_view>

#include "tests/support/zip_builder.h"

namespace VYX::Fuzz {

namespace {

using Test::BuiltArchive;
using Test::BuiltEntry;

constexpr std::uint32_t kModes[] = {0, 0100644, 0100755, 0040755, 0120777, 0010644, 0020666};

// One of the things that an archive may lie about.
void Spoil(FuzzInput& ioInput, BuiltEntry& ioEntry) {
  const auto value = ioInput.Value<std::uint16_t>();
  switch (ioInput.Below(9)) {
    case 0:
      ioEntry.method = value;
      break;
    case 1:
      ioEntry.data = std::string(ioInput.Piece(40));
      break;
    case 2:
      ioEntry.crc = value;
      break;
    case 3:
      ioEntry.size = value;
      break;
    case 4:
      ioEntry.localName = std::string(ioInput.Piece(40));
      break;
    case 5:
      ioEntry.localSize = value;
      break;
    case 6:
      ioEntry.offset = value;
      break;
    case 7:
      ioEntry.extra = std::string(ioInput.Piece(40));
      break;
    default:
      ioEntry.flags = value;
      break;
  }
}

BuiltEntry MakeEntry(FuzzInput& ioInput) {
  BuiltEntry entry;
  const std::uint8_t traits = ioInput.Byte();
  entry.name = ioInput.Piece(40);
  entry.content = ioInput.Piece();
  entry.isDeflated = (traits & 1) != 0;
  entry.hasDescriptor = (traits & 2) != 0;
  entry.isDescriptorSigned = (traits & 4) != 0;
  entry.flags = (traits & 8) != 0 ? 0x800 : 0;
  entry.unixMode = kModes[(traits >> 4) % std::size(kModes)];
  if ((traits & 0x80) != 0) {
    Spoil(ioInput, entry);
  }
  return entry;
}

}  // namespace

std::string MakeZip(FuzzInput& ioInput) {
  // The signature of an archive, so that archives are inputs.
  if (FuzzInput(ioInput).Byte() == 'P') {
    return std::string(ioInput.Rest());
  }
  ioInput.Byte();
  BuiltArchive archive;
  archive.comment = ioInput.Piece(10);
  while (!ioInput.IsEmpty()) {
    archive.entries.push_back(MakeEntry(ioInput));
  }
  return archive.Bytes();
}

}  // namespace VYX::Fuzz
