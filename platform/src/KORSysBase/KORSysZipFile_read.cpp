#include <algorithm>
#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "KORSysBase/KORSysZipFile.h"
#include "platform/os/native_path.h"
#include "zip_guard.h"
#include "zip_session.h"

namespace {

namespace Os = VYX::Os;
using VYX::Platform::RunZipWork;
using VYX::Platform::WrongArgument;
using VYX::Platform::ZipArchive;
using VYX::Platform::ZipEntry;
using VYX::Platform::ZipProblem;
using VYX::Platform::ZipSelection;
using VYX::Platform::ZipSession;

ZipProblem NothingOpen(const char* iWhat) {
  return {KORSysZipFile::kWrongState, {}, std::string("no ") + iWhat + " is open for reading"};
}

std::string WithSlashes(std::string iName) {
  std::replace(iName.begin(), iName.end(), '\\', '/');
  return iName;
}

void IndexNames(ZipSession& ioSession) {
  if (!ioSession.byName.empty()) {
    return;
  }
  for (const ZipEntry& entry : ioSession.archive->Entries()) {
    const auto [place, isNew] =
        ioSession.byName.try_emplace(WithSlashes(DecodeName(entry, ioSession.isUtf8Preferred)), &entry);
    if (!isNew) {
      place->second = nullptr;
    }
  }
}

ZipProblem Select(ZipSession& ioSession, const KORUnicodeString& iName) {
  IndexNames(ioSession);
  const auto found = ioSession.byName.find(WithSlashes(iName.ConvertToChar()));
  if (found == ioSession.byName.end()) {
    return {KORSysZipFile::kEntryNotFound, iName.ConvertToChar(), "there is no such entry"};
  }
  if (found->second == nullptr) {
    return {KORSysZipFile::kDuplicateEntry, iName.ConvertToChar(), "there are several entries of this name"};
  }
  const ZipEntry& entry = *found->second;
  ZipArchive& archive = *ioSession.archive;
  ZipProblem problem = archive.CheckReadable(entry);
  std::uint64_t end = 0;
  if (problem.IsNone()) {
    problem = archive.Layout().CheckLocal(archive.Source(), entry, end);
  }
  if (problem.IsNone()) {
    problem = archive.PrepareReader();
  }
  if (problem.IsNone()) {
    ioSession.selection.entry = &entry;
  }
  return problem;
}

// In one go into the caller's buffer; else in one go into memory, if it is small; else piece by piece.
ZipProblem ReadSelection(ZipArchive& ioArchive, ZipSelection& ioSelection, char* oBuffer, std::uint64_t iSize,
                         std::uint64_t& oRead) {
  const ZipEntry& entry = *ioSelection.entry;
  const bool isStart = ioSelection.position == 0 && !ioSelection.isBegun && ioSelection.content == nullptr;
  const std::uint64_t wanted = std::min(iSize, entry.size - ioSelection.position);
  if (isStart && iSize >= entry.size && entry.compressedSize <= ioArchive.Limits().maxInMemory) {
    char none = 0;
    if (ZipProblem problem = ioArchive.ReadWhole(entry, entry.size == 0 ? &none : oBuffer); !problem.IsNone()) {
      return problem;
    }
  } else if (ioArchive.IsInMemory(entry)) {
    if (ioSelection.content == nullptr) {
      auto content = std::make_unique_for_overwrite<char[]>(static_cast<std::size_t>(entry.size) + 1);
      if (ZipProblem problem = ioArchive.ReadWhole(entry, content.get()); !problem.IsNone()) {
        return problem;
      }
      ioSelection.content = std::move(content);
    }
    std::copy_n(ioSelection.content.get() + ioSelection.position, wanted, oBuffer);
  } else {
    ZipProblem problem = ioSelection.isBegun ? ZipProblem() : ioArchive.Begin(entry);
    ioSelection.isBegun = true;
    std::size_t read = 0;
    if (problem.IsNone()) {
      problem = ioArchive.Next(entry, oBuffer, static_cast<std::size_t>(wanted), read);
    }
    if (!problem.IsNone()) {
      return problem;
    }
  }
  ioSelection.position += wanted;
  oRead = wanted;
  return {};
}

}  // namespace

long KORSysZipFile::BrowseZip(KORUnicodeString** oNames, unsigned int* oCount, std::uint64_t** oSizes,
                              std::uint64_t** oCompressedSizes, std::uint32_t** oChecksums) {
  return RunZipWork("list", "in", _session->path, [&] {
    if (_session->archive == nullptr) {
      return NothingOpen("archive");
    }
    const auto& entries = _session->archive->Entries();
    if (oNames == nullptr || oCount == nullptr || entries.size() > std::numeric_limits<unsigned int>::max()) {
      return WrongArgument("there is no room for its names");
    }
    auto names = std::make_unique<KORUnicodeString[]>(entries.size());
    auto sizes = std::make_unique<std::uint64_t[]>(oSizes == nullptr ? 0 : entries.size());
    auto compressedSizes = std::make_unique<std::uint64_t[]>(oCompressedSizes == nullptr ? 0 : entries.size());
    auto checksums = std::make_unique<std::uint32_t[]>(oChecksums == nullptr ? 0 : entries.size());
    for (const ZipEntry& entry : entries) {
      names[entry.index] = KORUnicodeString(std::string_view(DecodeName(entry, _session->isUtf8Preferred)));
      if (oSizes != nullptr) {
        sizes[entry.index] = entry.size;
      }
      if (oCompressedSizes != nullptr) {
        compressedSizes[entry.index] = entry.compressedSize;
      }
      if (oChecksums != nullptr) {
        checksums[entry.index] = entry.crc;
      }
    }
    *oNames = names.release();
    *oCount = static_cast<unsigned int>(entries.size());
    const auto give = [](auto** oArray, auto& ioArray) {
      if (oArray != nullptr) {
        *oArray = ioArray.release();
      }
    };
    give(oSizes, sizes);
    give(oCompressedSizes, compressedSizes);
    give(oChecksums, checksums);
    return ZipProblem();
  });
}

long KORSysZipFile::ExtractAll(const KORUnicodeString& iTargetFolder, unsigned long iOptions, unsigned int* oCount) {
  return RunZipWork("extract", "from", _session->path, [&] {
    if (_session->archive == nullptr) {
      return NothingOpen("archive");
    }
    if (iOptions != 0 && iOptions != kUtf8Names) {
      return WrongArgument("the options are unknown");
    }
    std::string target;
    if (const Os::Status status = Os::ToNativePath(iTargetFolder.ToStringView(), target); !status.IsOk()) {
      return VYX::Platform::ToProblem(status);
    }
    _session->selection = {};
    if (_session->isUtf8Preferred != (iOptions != 0)) {
      _session->isUtf8Preferred = iOptions != 0;
      _session->byName.clear();
    }
    ZipProblem problem = ExtractZip(*_session->archive, target, _session->isUtf8Preferred);
    if (problem.IsNone() && oCount != nullptr) {
      *oCount = static_cast<unsigned int>(_session->archive->Entries().size());
    }
    return problem;
  });
}

long KORSysZipFile::OpenFileInZip(const KORUnicodeString& iName, int iReserved, unsigned long iOptions) {
  return RunZipWork("open", "in", _session->path, [&] {
    if (_session->archive == nullptr) {
      return NothingOpen("archive");
    }
    if (iReserved != 0 || iOptions != 0) {
      return WrongArgument("the options are unknown");
    }
    _session->archive->End();
    _session->selection = {};
    return Select(*_session, iName);
  });
}

long KORSysZipFile::GetCurrentInfo(KORSysZipEntryInfo* oInfo) {
  return RunZipWork("describe", "in", _session->path, [&] {
    const ZipEntry* const entry = _session->selection.entry;
    if (entry == nullptr) {
      return NothingOpen("entry");
    }
    if (oInfo == nullptr) {
      return WrongArgument("there is no room for the answer");
    }
    *oInfo = {entry->size, entry->compressedSize, entry->crc, entry->method};
    return ZipProblem();
  });
}

long KORSysZipFile::ReadBufferInZip(char* oBuffer, std::uint64_t iSize, std::uint64_t* oRead) {
  return RunZipWork("read", "from", _session->path, [&] {
    if (_session->selection.entry == nullptr) {
      return NothingOpen("entry");
    }
    if (oRead == nullptr || (oBuffer == nullptr && iSize != 0)) {
      return WrongArgument("there is no room for the content");
    }
    return ReadSelection(*_session->archive, _session->selection, oBuffer, iSize, *oRead);
  });
}

long KORSysZipFile::CloseFileInZip() {
  return RunZipWork("close", "in", _session->path, [&] {
    if (_session->selection.entry == nullptr) {
      return NothingOpen("entry");
    }
    _session->archive->End();
    _session->selection = {};
    return ZipProblem();
  });
}
