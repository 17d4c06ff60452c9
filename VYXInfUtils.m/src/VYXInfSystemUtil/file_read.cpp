#include <memory>
#include <new>

#include "KORSysBase/KORError.h"
#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"
#include "open_file.h"

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::FailureReturn;
using VYX::Internal::LogUnlessFiltered;
using VYX::Internal::OpenFile;

namespace {

constexpr long kFileDoesNotExist = -1;

// Allocates without letting the want of memory out.
std::unique_ptr<char, QB::ReleaseFunction> AllocateBytes(std::size_t iSize) noexcept {
  char* data = nullptr;
  try {
    data = QB::allocateArrayChar(iSize);
  } catch (const std::bad_alloc&) {
  }
  return {data, &QB::deallocateArrayChar};
}

// Reads everything that the file holds by its size; false when it cannot be read or nothing arrives.
bool ReadContent(OpenFile& ioFile, QB::Binary& oContent) {
  unsigned int size = 0;
  if (KORFSize(ioFile.Get(), &size) < 0) {
    return false;
  }
  if (size == 0) {
    oContent = QB::Binary();
    return true;
  }
  auto data = AllocateBytes(size);
  unsigned int count = 0;
  if (data == nullptr || KORFRead(ioFile.Get(), data.get(), size, &count) < 0 || count == 0) {
    return false;
  }
  oContent = QB::Binary(data.release(), count, &QB::deallocateArrayChar);
  return true;
}

}  // namespace

long VYXInfSystemUtil::ReadFile(const KORUnicodeString& iPath, QB::Binary& oContent, bool iBinary) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    OpenFile file;
    const long code = file.Open(iPath, iBinary ? "rb" : "r");
    if (code < 0) {
      // What exists is asked only now: a file that opens does.
      if (!DoesFileExist(iPath)) {
        KORError::KORCleanLastError();
        LogUnlessFiltered(DEBUG, "File does not exist, cannot read: ", iPath);
        return kFileDoesNotExist;
      }
      LogUnlessFiltered(ERROR, "Error opening the file:     ", iPath);
      return code;
    }
    if (file.Get() == 0) {
      LogUnlessFiltered(ERROR, "Invalid fileDesc while KORFOpen for the file ", iPath);
      return E_UNEXPECTED;
    }
    QB::Binary content;
    if (!ReadContent(file, content)) {
      LogUnlessFiltered(ERROR, "Error reading the file:     ", iPath);
      return E_FAIL;
    }
    file.Close();
    LogUnlessFiltered(TRACE, "read ", content.GetSize(), " BYTEs .");
    oContent = std::move(content);
    LogUnlessFiltered(TRACE, "success reading ", oContent.GetSize(), " BYTEs from file:   ", iPath);
    return S_OK;
  });
}

long VYXInfSystemUtil::ReadFile(const KORUnicodeString& iPath, KORUnicodeString& oText) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    QB::Binary content;
    const long code = ReadFile(iPath, content, false);
    if (content.GetData() == nullptr && content.GetSize() != 0) {
      return FailureReturn(VYX_HERE, E_FAIL);
    }
    if (oText.BuildFromUTF8(content.GetData(), content.GetSize()) != 0) {
      LogUnlessFiltered(DEBUG, "Not a UTF8 text, read as an empty one:     ", iPath);
    }
    LogUnlessFiltered(TRACE, "Read a UTF8 string of ", oText.GetLengthInChar(), " chars   (", oText.GetLengthInByte(),
                      " BYTEs) from file:   ", iPath);
    return code;
  });
}
