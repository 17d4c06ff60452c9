#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORSysZipFile.h"
#include "KORSysTS/KORUnicodeString.h"
#include "fuzz/support/fuzz_input.h"
#include "fuzz/support/memory_file.h"
#include "fuzz/support/require.h"
#include "fuzz/support/zip_input.h"
#include "platform/adapters/crc32.h"

// Any archive: listing it, and reading every entry in one go and in pieces, in memory and piece by piece.

namespace {

using namespace VYX::Fuzz;

constexpr std::uint64_t kLargestTotal = 1 << 18;
constexpr std::size_t kMostPieces = 50;

KORSysZipLimits SmallLimits(std::uint64_t iMaxInMemory) {
  KORSysZipLimits limits;
  limits.maxEntries = 100;
  limits.maxTotalSize = kLargestTotal;
  limits.maxInMemory = iMaxInMemory;
  return limits;
}

struct Reading {
  bool isRead = false;
  std::string content;
};

Reading ReadEntry(KORSysZipFile& ioZip, const KORUnicodeString& iName, std::size_t iPieces) {
  Reading reading;
  KORSysZipEntryInfo info;
  if (ioZip.OpenFileInZip(iName, 0, 0) < 0 || ioZip.GetCurrentInfo(&info) < 0) {
    return reading;
  }
  Require(info.uncompressedSize <= kLargestTotal, "an entry beyond the limits is refused");
  std::string piece(static_cast<std::size_t>(info.uncompressedSize) / iPieces + 1, '\0');
  for (;;) {
    std::uint64_t read = 0;
    if (ioZip.ReadBufferInZip(piece.data(), piece.size(), &read) < 0) {
      return reading;
    }
    Require(read <= piece.size(), "no more is read than there is room for");
    reading.content.append(piece, 0, static_cast<std::size_t>(read));
    if (read == 0 || reading.content.size() == info.uncompressedSize) {
      break;
    }
  }
  Require(reading.content.size() == info.uncompressedSize, "the content has the size that was told");
  const std::uint32_t checksum = VYX::Adapters::Crc32(0, reading.content.data(), reading.content.size());
  Require(checksum == info.crc32, "the content has the checksum that was told");
  reading.isRead = true;
  static_cast<void>(ioZip.CloseFileInZip());
  return reading;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  static MemoryFile file;
  FuzzInput input(iData, iSize);
  file.Write(MakeZip(input));
  const KORUnicodeString path{std::string_view(file.Path())};
  KORSysZipFile whole(0);
  KORSysZipFile pieces(0);
  whole.SetLimits(SmallLimits(kLargestTotal));
  pieces.SetLimits(SmallLimits(1));
  const bool isOpen = whole.OpenZip(path, KORSysZipOpenMode::Browse, 0) >= 0;
  Require((pieces.OpenZip(path, KORSysZipOpenMode::Browse, 0) >= 0) == isOpen, "memory does not decide what is opened");
  KORUnicodeString* names = nullptr;
  unsigned int count = 0;
  if (isOpen && whole.BrowseZip(&names, &count) >= 0) {
    const std::unique_ptr<KORUnicodeString[]> owner(names);
    Require(count <= 100, "an archive of too many entries is refused");
    for (unsigned int entry = 0; entry < count; ++entry) {
      const Reading first = ReadEntry(whole, names[entry], 1);
      const Reading second = ReadEntry(pieces, names[entry], kMostPieces);
      Require(first.isRead == second.isRead, "memory does not decide what is read");
      Require(!first.isRead || first.content == second.content, "memory does not decide the content");
    }
  }
  KORError::KORCleanLastError();
  return 0;
}
