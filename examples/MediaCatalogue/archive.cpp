#include "archive.h"

#include <limits>
#include <memory>
#include <stdexcept>
#include <string>

#include "KORSysBase/KORSysZipFile.h"
#include "digest.h"
#include "file_facts.h"

namespace MediaCatalogue {

namespace {

constexpr std::uint64_t kPieceSize = std::uint64_t{1} << 20U;

[[noreturn]] void Fail(const char* iWhat) {
  throw std::runtime_error(TakePendingMessage(iWhat).ConvertToChar());
}

// Answers the files that the archive holds.
std::vector<const CataloguedFile*> Pack(const std::vector<CataloguedFile>& iFiles, const KORUnicodeString& iArchive,
                                        ArchiveResult& ioResult) {
  KORSysZipFile zip;
  if (zip.OpenZip(iArchive, KORSysZipOpenMode::Create, 0) < 0) {
    Fail("The archive cannot be created");
  }
  const KORUnicodeString base(".");
  std::vector<const CataloguedFile*> packed;
  for (const CataloguedFile& file : iFiles) {
    const KORUnicodeString path = FromHere(file.path);
    if (zip.AddFile(&path, 1, 0, &base, 0) >= 0) {
      packed.push_back(&file);
    } else {
      ioResult.leftOut.push_back(file.path + ": " + TakePendingMessage("the archive does not take the file"));
    }
  }
  if (zip.Close(0) < 0) {
    Fail("The archive cannot be written");
  }
  return packed;
}

// The archive is our own: it may hold as much as the folder did, under the names that this host allows.
KORSysZipLimits LimitsForOwnArchive() {
  constexpr std::uint64_t kUnlimited = std::numeric_limits<std::uint64_t>::max();
  KORSysZipLimits limits;
  limits.maxEntries = kUnlimited;
  limits.maxTotalSize = kUnlimited;
  limits.maxRatio = kUnlimited;
  limits.arePortableNamesRequired = false;
  return limits;
}

bool DigestEntry(KORSysZipFile& ioZip, std::uint64_t iSize, char* ioPiece, KORUnicodeString& oSha256) {
  Sha256 digest;
  std::uint64_t done = 0;
  do {
    std::uint64_t read = 0;
    if (ioZip.ReadBufferInZip(ioPiece, kPieceSize, &read) < 0) {
      return false;
    }
    digest.Add(ioPiece, read);
    done += read;
  } while (done < iSize);
  return digest.Finish(oSha256);
}

// Empty when the entry is what the catalogue says.
KORUnicodeString DifferenceOf(KORSysZipFile& ioZip, const CataloguedFile& iFile, char* ioPiece) {
  KORSysZipEntryInfo info;
  KORUnicodeString sha256;
  if (ioZip.OpenFileInZip(iFile.path, 0, 0) < 0 || ioZip.GetCurrentInfo(&info) < 0 ||
      !DigestEntry(ioZip, info.uncompressedSize, ioPiece, sha256) || ioZip.CloseFileInZip() < 0) {
    return TakePendingMessage("the entry cannot be read");
  }
  if (info.uncompressedSize != static_cast<std::uint64_t>(iFile.facts.size)) {
    return KORUnicodeString(std::to_string(info.uncompressedSize) + " bytes in the archive, catalogued " +
                            std::to_string(iFile.facts.size));
  }
  // Reading held the content against the archive's CRC-32, so it is enough to compare that one.
  const KORUnicodeString crc32 = Crc32Digits(info.crc32);
  if (crc32 != iFile.facts.crc32) {
    return "CRC-32 " + crc32 + " in the archive, catalogued " + iFile.facts.crc32;
  }
  return sha256 == iFile.facts.sha256 ? KORUnicodeString()
                                      : "SHA-256 " + sha256 + " in the archive, catalogued " + iFile.facts.sha256;
}

void Verify(const std::vector<const CataloguedFile*>& iPacked, const KORUnicodeString& iArchive,
            ArchiveResult& ioResult) {
  KORSysZipFile zip;
  zip.SetLimits(LimitsForOwnArchive());
  if (zip.OpenZip(iArchive, KORSysZipOpenMode::Read, KORSysZipFile::kUtf8Names) < 0) {
    Fail("The archive cannot be opened");
  }
  KORUnicodeString* names = nullptr;
  unsigned int count = 0;
  if (zip.BrowseZip(&names, &count) < 0) {
    Fail("The archive cannot be listed");
  }
  const std::unique_ptr<KORUnicodeString[]> owner(names);
  if (count != iPacked.size()) {
    ioResult.differences.emplace_back(
        KORUnicodeString(std::to_string(count) + " entries, but " + std::to_string(iPacked.size()) + " files packed"));
  }
  const auto piece = std::make_unique_for_overwrite<char[]>(kPieceSize);
  for (const CataloguedFile* const file : iPacked) {
    const KORUnicodeString difference = DifferenceOf(zip, *file, piece.get());
    if (!difference.IsEmpty()) {
      ioResult.differences.push_back(file->path + ": " + difference);
    }
  }
}

}  // namespace

ArchiveResult PackAndVerify(const std::vector<CataloguedFile>& iFiles, const KORUnicodeString& iArchive) {
  ArchiveResult result;
  const std::vector<const CataloguedFile*> packed = Pack(iFiles, iArchive, result);
  result.packed = packed.size();
  Verify(packed, iArchive, result);
  return result;
}

}  // namespace MediaCatalogue
