#include "file_facts.h"

#include <string>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORResult.h"
#include "KORSysTS/KORSysCRC32.h"
#include "Quillbase/Binary.h"
#include "VYXInfSystemUtil.h"
#include "digest.h"
#include "media_type.h"

namespace MediaCatalogue {

KORUnicodeString FromHere(const KORUnicodeString& iPath) {
  return KORUnicodeString(".\\") + iPath;
}

bool ReadFacts(const KORUnicodeString& iPath, FileFacts& oFacts, KORUnicodeString& oReason) {
  KORUnicodeString copy;
  if (copy.BuildFromUTF8(iPath, iPath.GetLengthInByte()) != 0) {
    oReason = "The name is no UTF-8 and has no place in a JSON text";
    return false;
  }
  const KORUnicodeString here = FromHere(iPath);
  KORError::KORCleanLastError();
  QB::Binary content;
  std::int64_t lastWriteTime = 0;
  KORUnicodeString digest;
  if (VYXInfSystemUtil::ReadFile(here, content, true) < 0) {
    oReason = TakePendingMessage("The file could not be read");
    return false;
  }
  if (VYXInfSystemUtil::GetFileLastWriteTimeInSecondsSinceUnixEpoch(here, lastWriteTime) < 0) {
    oReason = TakePendingMessage("The time of the last write could not be read");
    return false;
  }
  if (!Sha256Of(content.GetData(), content.GetSize(), digest)) {
    oReason = TakePendingMessage("The digest could not be computed");
    return false;
  }
  const KORUnicodeString crc32 = Crc32Digits(KORSysCRC32(content.GetData(), content.GetSize()));
  const auto size = static_cast<std::int64_t>(content.GetSize());
  oFacts = {size, lastWriteTime, crc32, digest, MediaTypeOf(iPath), size <= kInlineLimit ? content : QB::Binary()};
  return true;
}

KORUnicodeString Readable(const KORUnicodeString& iPath) {
  std::wstring wide(static_cast<std::size_t>(iPath.ConvertToWChar(nullptr)) + 1, L'\0');
  iPath.ConvertToWChar(wide.data());
  KORUnicodeString text;
  text.BuildFromWChar(wide.c_str());
  return text;
}

KORUnicodeString TakePendingMessage(const char* iDefault) {
  KORError* const error = KORError::KORGetLastError(E_FAIL, nullptr);
  if (error == nullptr) {
    return iDefault;
  }
  KORUnicodeString message = Readable(error->GetMessageText());
  error->Release();
  KORError::KORCleanLastError();
  return message;
}

}  // namespace MediaCatalogue
