#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "KORSysBase/KORSysZipFile.h"
#include "platform/adapters/deflate.h"
#include "platform/adapters/zip_archive.h"
#include "zip_creation.h"
#include "zip_file_io.h"
#include "zip_layout.h"
#include "zip_names.h"

namespace VYX::Platform {

/// True where more comes out of so many bytes than the limits allow.
bool IsBomb(std::uint64_t iSize, std::uint64_t iCompressedSize, const KORSysZipLimits& iLimits) noexcept;

/// An archive that is open for reading.
class ZipArchive {
 public:
  explicit ZipArchive(const KORSysZipLimits& iLimits) : _limits(iLimits) {}

  ZipProblem Open(const std::string& iNativePath);

  const std::vector<ZipEntry>& Entries() const noexcept { return _layout.Entries(); }
  const KORSysZipLimits& Limits() const noexcept { return _limits; }
  const ZipLayout& Layout() const noexcept { return _layout; }
  ZipFileSource& Source() noexcept { return _source; }

  /// Makes entries readable. Not needed to list them, so that archives can be listed which nobody can read.
  ZipProblem PrepareReader();

  /// Refuses an entry that is encrypted, compressed in an unknown way, impossible or past the limits.
  ZipProblem CheckReadable(const ZipEntry& iEntry) const;

  /// True where the entry is decoded in one go.
  bool IsInMemory(const ZipEntry& iEntry) const noexcept;

  /// Decodes and verifies an entry that IsInMemory into a buffer of its size.
  ZipProblem ReadWhole(const ZipEntry& iEntry, char* oContent);

  /// Begins to decode an entry piece by piece.
  ZipProblem Begin(const ZipEntry& iEntry);

  /// Decodes the next bytes, at most iSize; fewer at the end only. The piece that ends the entry is given out when all
  /// of it is verified.
  ZipProblem Next(const ZipEntry& iEntry, char* oBuffer, std::size_t iSize, std::size_t& oRead);

  void End() noexcept { _reader.CloseEntry(); }

 private:
  ZipProblem ReadRaw(const ZipEntry& iEntry, char* oBuffer, std::size_t iSize);
  ZipProblem ReaderProblem(const ZipEntry& iEntry, Adapters::ZipFailure iFailure) const;

  KORSysZipLimits _limits;
  ZipFileSource _source;
  ZipLayout _layout;
  Adapters::ZipReader _reader;
  std::unique_ptr<Adapters::Inflater> _inflater;
  std::uint64_t _position = 0;
  bool _isPrepared = false;
};

/// Extracts all of an archive; see KORSysZipFile::ExtractAll.
ZipProblem ExtractZip(ZipArchive& ioArchive, const std::string& iNativeTarget, bool iIsUtf8Preferred);

/// The entry that is selected for reading.
struct ZipSelection {
  const ZipEntry* entry = nullptr;
  std::unique_ptr<char[]> content;  ///< decoded in one go, once it was asked for in pieces
  std::uint64_t position = 0;
  bool isBegun = false;
};

/// What stands behind a KORSysZipFile.
struct ZipSession {
  KORSysZipLimits limits;
  KORUnicodeString path;
  bool isUtf8Preferred = false;
  std::unique_ptr<ZipArchive> archive;
  std::unique_ptr<ZipCreation> creation;
  ZipSelection selection;
  std::unordered_map<std::string, const ZipEntry*> byName;  ///< null for names that stand for two entries
};

}  // namespace VYX::Platform
