#include <algorithm>
#include <string>
#include <string_view>

#include "VYXInfStringUtil.h"
#include "VYXInfSystemUtil.h"
#include "atomic_save.h"
#include "file_content.h"
#include "internal/FailureTrace.h"
#include "open_file.h"
#include "platform/os/files.h"
#include "platform/os/native_path.h"

using VYX::Internal::AtomicSaveStep;
using VYX::Internal::CatchAtBoundary;
using VYX::Internal::FailureReturn;
using VYX::Internal::FileContent;
using VYX::Internal::IsFiltered;
using VYX::Internal::kEmptyText;
using VYX::Internal::LogUnlessFiltered;
using VYX::Internal::OpenFile;

namespace {

struct SaveRequest {
  const KORUnicodeString& path;
  const QB::Binary& binary;
  FileContent content;
  int flags;
  bool isText;

  bool Has(int iFlag) const noexcept { return (flags & iFlag) != 0; }
};

bool IsWritable(const KORUnicodeString& iPath) {
  std::string path;
  return VYX::Os::ToNativePath(iPath.ToStringView(), path).IsOk() && VYX::Os::TestWritability(path).IsOk();
}

// Argument errors, found before anything is touched.
long CheckArguments(const SaveRequest& iRequest) {
  if (iRequest.path.IsEmpty()) {
    LogUnlessFiltered(DEBUG, "Argument error: iFilePath is null. ");
    return E_INVALIDARG;
  }
  if (iRequest.Has(VYXInfSystemUtil::ONLY_EXISTENT) && iRequest.Has(VYXInfSystemUtil::ONLY_NEW)) {
    LogUnlessFiltered(DEBUG, "Argument error: iSaveFlag contains both ONLY_EXISTENT and ONLY_NEW. ");
    return E_INVALIDARG;
  }
  return S_OK;
}

// The state of the file is asked for only where the log or a flag wants to know it.
long CheckState(const SaveRequest& iRequest) {
  const bool isLogged = !IsFiltered(TRACE);
  const bool isDecisive = iRequest.Has(VYXInfSystemUtil::ONLY_EXISTENT | VYXInfSystemUtil::ONLY_NEW);
  if (!isLogged && !isDecisive) {
    return S_OK;
  }
  const bool isThere = VYXInfSystemUtil::DoesFileExist(iRequest.path);
  if (isLogged) {
    LogUnlessFiltered(TRACE, "Initial state of output file: ", " does [", isThere ? "EXIST" : "NOT EXIST", "] ",
                      " & is [", IsWritable(iRequest.path) ? "WRITABLE" : "NOT WRITABLE", "] ", ":     ",
                      iRequest.path);
  }
  if (iRequest.Has(VYXInfSystemUtil::ONLY_NEW) && isThere) {
    LogUnlessFiltered(DEBUG, "File does already exist and this is not acceptable:      ", iRequest.path);
    return E_FAIL;
  }
  if (iRequest.Has(VYXInfSystemUtil::ONLY_EXISTENT) && !isThere) {
    LogUnlessFiltered(DEBUG, "File does not exist and this is not acceptable:\t\t\t", iRequest.path);
    return E_FAIL;
  }
  return S_OK;
}

long FailToWrite(const SaveRequest& iRequest) {
  LogUnlessFiltered(ERROR, "Error writing ", iRequest.content.size, " BYTEs to file:     ", iRequest.path);
  return E_FAIL;
}

long Succeed(const SaveRequest& iRequest) {
  LogUnlessFiltered(TRACE, "success writing to file ", iRequest.binary.GetSize(),
                    " BYTEs to file:     ", iRequest.path);
  return S_OK;
}

bool WriteContent(OpenFile& ioFile, FileContent iContent) {
  constexpr std::uint64_t kMostAtOnce = 1U << 30;
  while (!iContent.IsEmpty()) {
    const auto size = static_cast<unsigned int>(std::min(iContent.size, kMostAtOnce));
    unsigned int written = 0;
    if (KORFWrite(ioFile.Get(), iContent.data, size, &written) < 0 || written != size) {
      return false;
    }
    iContent.data += size;
    iContent.size -= size;
  }
  return true;
}

// A failing close is a failure of the write before, reported late.
long WriteEmptyText(OpenFile& ioFile) {
  unsigned int written = 0;
  const long code = KORFWrite(ioFile.Get(), kEmptyText.data, 1, &written);
  const long closed = ioFile.Close();
  return code < 0 ? code : closed;
}

const char* ModeOf(const SaveRequest& iRequest) {
  const bool isOverwritten = iRequest.Has(VYXInfSystemUtil::OVERWRITE);
  // The name that was free a moment ago must still be.
  if (iRequest.Has(VYXInfSystemUtil::ONLY_NEW)) {
    return isOverwritten ? (iRequest.isText ? "wx" : "wbx") : (iRequest.isText ? "ax" : "abx");
  }
  return isOverwritten ? (iRequest.isText ? "w" : "wb") : (iRequest.isText ? "a" : "ab");
}

long SaveInPlace(const SaveRequest& iRequest) {
  OpenFile file;
  if (const long code = file.Open(iRequest.path, ModeOf(iRequest)); code < 0) {
    LogUnlessFiltered(ERROR, "Error opening the file:     ", iRequest.path);
    return code;
  }
  if (file.Get() == 0) {
    LogUnlessFiltered(ERROR, "Invalid fileDesc while KORFOpen for the file", iRequest.path);
    return E_UNEXPECTED;
  }
  if (iRequest.content.data == nullptr && iRequest.content.size != 0) {
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  if (iRequest.content.IsEmpty() && iRequest.isText) {
    return WriteEmptyText(file);
  }
  const bool isWritten = WriteContent(file, iRequest.content);
  const bool isClosed = file.Close() >= 0;
  return isWritten && isClosed ? Succeed(iRequest) : FailToWrite(iRequest);
}

long SaveBeside(const SaveRequest& iRequest) {
  if (iRequest.content.data == nullptr && iRequest.content.size != 0) {
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  const bool isEmptyText = iRequest.content.IsEmpty() && iRequest.isText;
  AtomicSaveStep step = AtomicSaveStep::Open;
  const long code = SaveAtomically(
      iRequest.path, isEmptyText ? kEmptyText : iRequest.content,
      {.isAppended = !iRequest.Has(VYXInfSystemUtil::OVERWRITE), .isNew = iRequest.Has(VYXInfSystemUtil::ONLY_NEW)},
      step);
  if (code >= 0) {
    return isEmptyText ? code : Succeed(iRequest);
  }
  if (step == AtomicSaveStep::Open) {
    LogUnlessFiltered(ERROR, "Error opening the file:     ", iRequest.path);
    return code;
  }
  return FailToWrite(iRequest);
}

}  // namespace

long VYXInfSystemUtil::SaveToFile(const KORUnicodeString& iFilePath, const QB::Binary& iContent, int iSaveFlag,
                                  bool iBinary) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    const SaveRequest request{iFilePath, iContent, FileContent::Of(iContent, !iBinary), iSaveFlag, !iBinary};
    if (const long code = CheckArguments(request); code < 0) {
      return code;
    }
    if (const long code = CheckState(request); code < 0) {
      return code;
    }
    return request.Has(ATOMIC) ? SaveBeside(request) : SaveInPlace(request);
  });
}

long VYXInfSystemUtil::SaveToFile(const KORUnicodeString& iFilePath, const KORUnicodeString& iText, int iSaveFlag) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    QB::Binary content;
    if (iText.IsEmpty()) {
      // The conversion is what warns of an empty text.
      VYXInfStringUtil::ConvertToUTF8(iText, &content);
    } else {
      // Any other text is UTF-8 as it stands: the buffer borrows its bytes, which are only read.
      const std::string_view bytes = iText.ToStringView();
      content = QB::Binary(const_cast<char*>(bytes.data()), bytes.size(), nullptr);
    }
    return SaveToFile(iFilePath, content, iSaveFlag, false);
  });
}
