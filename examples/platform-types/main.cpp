// The types below the library: lists that count from 1, buffers that share, texts that borrow.

#include <cstring>
#include <iostream>

#include "KORSysBase/KORListValKORUnicodeString.h"
#include "KORSysTS/QRMSysHash.h"
#include "Quillbase/Binary.h"
#include "Quillbase/JSON/JIStream.h"
#include "Quillbase/Paths.h"

/// Hashes a buffer piece by piece; the digest frees itself.
static QB::Binary Sha256(const QB::Binary& iContent) {
  QRMSysHashContext context;
  char* digest = nullptr;
  std::uint64_t size = 0;
  const std::uint64_t half = iContent.GetSize() / 2;
  if (QRMSysHash_Init(2, context) < 0 || QRMSysHash_Update(context, iContent.GetData(), half) < 0 ||
      QRMSysHash_Update(context, iContent.GetData() + half, iContent.GetSize() - half) < 0 ||
      QRMSysHash_Final(context, digest, size) < 0) {
    return QB::Binary();
  }
  return QB::Binary(digest, size, &QB::deallocateArrayChar);
}

int main() {
  KORListValKORUnicodeString names;
  names.Append("Bergen");
  names.Append("Oslo");
  std::cout << names[1] << " is the first of " << names.Size() << ", Oslo stands at " << names.Locate("Oslo") << "\n";

  char* const data = QB::allocateArrayChar(5);
  std::memcpy(data, "fjord", 5);
  const QB::Binary owner(data, 5, &QB::deallocateArrayChar);
  QB::Binary sharer;
  sharer = owner;
  std::cout << (sharer.GetData() == owner.GetData() ? "shared" : "copied") << ", with a digest of "
            << Sha256(sharer).GetSize() << " bytes\n";

  for (const QB::StringView folder : QB::Paths("/opt/app;/usr/share/app")) {
    std::cout << folder.ToUnicode() << "\n";
  }

  JSON::JIStream stream;
  if (!stream.Parse("{\"width\": 1920, \"name\": \"Fjord\"}", false)) {
    return 1;
  }
  for (JSON::JCursor cursor(stream); cursor.Next();) {
    std::cout << cursor.Key().ToUnicode()
              << (cursor.Value().Kind() == JSON::JKind::Number ? " is a number\n" : " is none\n");
  }
  return 0;
}
