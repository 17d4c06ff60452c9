#include <cstdint>
#include <memory>
#include <utility>

#include "KORSysBase/KORSysZipFile.h"
#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::FailureReturn;
using VYX::Internal::LogPendingError;
using VYX::Internal::LogUnlessFiltered;

namespace {

// An archive that is open for reading; it is closed on every way out, and so is the entry that was opened last.
class OpenArchive {
 public:
  long Open(const KORUnicodeString& iPath, KORSysZipOpenMode iMode, int iOptions) {
    return _zip.OpenZip(iPath, iMode, iOptions);
  }
  KORSysZipFile& Get() noexcept { return _zip; }

  // Replaces a list by the names of the entries.
  long List(KORListValKORUnicodeString& oEntries) {
    KORUnicodeString* names = nullptr;
    unsigned int count = 0;
    const long code = _zip.BrowseZip(&names, &count, nullptr, nullptr, nullptr);
    const std::unique_ptr<KORUnicodeString[]> owner(names);
    if (code >= 0) {
      KORListValKORUnicodeString entries(static_cast<int>(count));
      for (unsigned int entry = 0; entry < count; ++entry) {
        entries.Append(std::move(names[entry]));
      }
      oEntries = std::move(entries);
    }
    return code;
  }

 private:
  KORSysZipFile _zip{0};
};

long ReadEntry(OpenArchive& ioArchive, const KORUnicodeString& iEntryName, QB::Binary& oContent) {
  KORSysZipFile& zip = ioArchive.Get();
  if (const long code = zip.OpenFileInZip(iEntryName, 0, 0); code < 0) {
    return FailureReturn(VYX_HERE, LogPendingError(code));
  }
  KORSysZipEntryInfo info;
  if (const long code = zip.GetCurrentInfo(&info); code < 0) {
    return FailureReturn(VYX_HERE, LogPendingError(code));
  }
  LogUnlessFiltered(TRACE, "FileInfo: size=", info.uncompressedSize, " zipsize=", info.compressedSize);
  if (info.uncompressedSize == 0) {
    return S_OK;
  }
  std::unique_ptr<char, QB::ReleaseFunction> data(
      QB::allocateArrayChar(static_cast<std::size_t>(info.uncompressedSize)), &QB::deallocateArrayChar);
  std::uint64_t count = 0;
  if (const long code = zip.ReadBufferInZip(data.get(), info.uncompressedSize, &count); code < 0) {
    return FailureReturn(VYX_HERE, LogPendingError(code));
  }
  LogUnlessFiltered(TRACE, "Read ", count, " bytes .");
  oContent = QB::Binary(data.release(), count, &QB::deallocateArrayChar);
  return S_OK;
}

}  // namespace

long VYXInfSystemUtil::BrowseZipArchive(const KORUnicodeString& iZipPath, KORListValKORUnicodeString& oEntries) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    OpenArchive archive;
    if (const long code = archive.Open(iZipPath, KORSysZipOpenMode::Browse, 0); code < 0) {
      LogPendingError(code);
      return FailureReturn(VYX_HERE, E_FAIL, iZipPath);
    }
    if (const long code = archive.List(oEntries); code < 0) {
      return FailureReturn(VYX_HERE, LogPendingError(code));
    }
    return S_OK;
  });
}

long VYXInfSystemUtil::UnzipArchive(const KORUnicodeString& iZipPath, const KORUnicodeString& iTargetFolder,
                                    KORListValKORUnicodeString& oEntries) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    OpenArchive archive;
    if (const long code = archive.Open(iZipPath, KORSysZipOpenMode::Browse, 0); code < 0) {
      return FailureReturn(VYX_HERE, LogPendingError(code));
    }
    if (const long code = archive.Get().ExtractAll(iTargetFolder, KORSysZipFile::kUtf8Names, nullptr); code < 0) {
      return FailureReturn(VYX_HERE, LogPendingError(code));
    }
    if (const long code = archive.List(oEntries); code < 0) {
      return FailureReturn(VYX_HERE, LogPendingError(code));
    }
    return S_OK;
  });
}

long VYXInfSystemUtil::ReadFileFromZipArchive(const KORUnicodeString& iZipPath, const KORUnicodeString& iEntryName,
                                              QB::Binary& oContent, bool iOption) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    LogUnlessFiltered(DEBUG, "Reading zip content as Binary: [", iZipPath, "] / [", iEntryName, "] ");
    OpenArchive archive;
    const int options = iOption ? static_cast<int>(KORSysZipFile::kUtf8Names) : 0;
    if (const long code = archive.Open(iZipPath, KORSysZipOpenMode::Read, options); code < 0) {
      return FailureReturn(VYX_HERE, LogPendingError(code));
    }
    if (const long code = ReadEntry(archive, iEntryName, oContent); code < 0) {
      return code;
    }
    LogUnlessFiltered(TRACE, "Success reading ", oContent.GetSize(), " bytes from file: ", iEntryName, " in ",
                      iZipPath);
    return S_OK;
  });
}
