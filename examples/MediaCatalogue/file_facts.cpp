#include "file_facts.h"

#include <string>
#include <string_view>

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORResult.h"
#include "KORSysTS/KORSysCRC32.h"
#include "KORSysTS/QRMSysHash.h"
#include "Quillbase/Binary.h"
#include "VYXInfSystemUtil.h"
#include "media_type.h"

namespace MediaCatalogue {

namespace {

constexpr std::uint32_t kSha256 = 2;

std::string HexOf(std::string_view iBytes) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  text.reserve(iBytes.size() * 2);
  for (const char byte : iBytes) {
    const auto value = static_cast<unsigned char>(byte);
    text += kDigits[value >> 4];
    text += kDigits[value & 15];
  }
  return text;
}

std::string Crc32Of(const QB::Binary& iContent) {
  const std::uint32_t crc = KORSysCRC32(iContent.GetData(), iContent.GetSize());
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) {
    bytes += static_cast<char>(crc >> shift & 0xFF);
  }
  return HexOf(bytes);
}

bool Sha256Of(const QB::Binary& iContent, std::string& oDigest) {
  QRMSysHashContext context;
  char* bytes = nullptr;
  std::uint64_t size = 0;
  if (QRMSysHash_Init(kSha256, context) < 0 || QRMSysHash_Update(context, iContent.GetData(), iContent.GetSize()) < 0 ||
      QRMSysHash_Final(context, bytes, size) < 0) {
    return false;
  }
  const QB::Binary owner(bytes, size, &QB::deallocateArrayChar);
  oDigest = HexOf({bytes, size});
  return true;
}

}  // namespace

bool ReadFacts(const KORUnicodeString& iPath, FileFacts& oFacts, KORUnicodeString& oReason) {
  KORUnicodeString copy;
  if (copy.BuildFromUTF8(iPath, iPath.GetLengthInByte()) != 0) {
    oReason = "The name is no UTF-8 and has no place in a JSON text";
    return false;
  }
  // Starts at "." so that the platform never takes the first component for anything but a name.
  const KORUnicodeString here = KORUnicodeString(".\\") + iPath;
  KORError::KORCleanLastError();
  QB::Binary content;
  std::int64_t lastWriteTime = 0;
  std::string digest;
  if (VYXInfSystemUtil::ReadFile(here, content, true) < 0) {
    oReason = TakePendingMessage("The file could not be read");
    return false;
  }
  if (VYXInfSystemUtil::GetFileLastWriteTimeInSecondsSinceUnixEpoch(here, lastWriteTime) < 0) {
    oReason = TakePendingMessage("The time of the last write could not be read");
    return false;
  }
  if (!Sha256Of(content, digest)) {
    oReason = TakePendingMessage("The digest could not be computed");
    return false;
  }
  oFacts = {static_cast<std::int64_t>(content.GetSize()), lastWriteTime, KORUnicodeString(Crc32Of(content)),
            KORUnicodeString(digest), MediaTypeOf(iPath)};
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
