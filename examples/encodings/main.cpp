// A picture inside a document: bytes as Base64, a digest to recognise them, and a text inside an address.

#include <iostream>

#include "KORSysTS/KORSysCRC32.h"
#include "Quillbase/Binary.h"
#include "VYXInfStringUtil.h"

int main() {
  char pixels[] = {'\x89', 'P', 'N', 'G', '\r', '\n'};
  const QB::Binary picture(pixels, sizeof pixels, nullptr);  // the array stays ours

  KORUnicodeString encoded;
  if (VYXInfStringUtil::EncodeToBase64(picture, &encoded) < 0) {
    return 1;
  }
  std::cout << "data:image/png;base64," << encoded << "\n";

  QB::Binary decoded;
  if (VYXInfStringUtil::DecodeFromBase64(encoded, &decoded) < 0) {
    return 1;
  }
  const bool isSame = KORSysCRC32(decoded.GetData(), decoded.GetSize()) == KORSysCRC32(pixels, sizeof pixels);
  std::cout << decoded.GetSize() << " bytes, " << (isSame ? "the same\n" : "others\n");

  KORUnicodeString digest;
  if (VYXInfStringUtil::Base64Hash("fjord.jpg", VYXInfStringUtil::HashAlgo::SHA256, digest) < 0) {
    return 1;
  }
  std::cout << digest << "\n";

  const KORUnicodeString title("ice & snow: \"100%\"");
  const KORUnicodeString address = "search?q=" + VYXInfStringUtil::EncodeURIComponent(title);
  std::cout << address << "\n"
            << "const title = \"" << VYXInfStringUtil::EscapeStringForJS(title) << "\";\n";

  if (VYXInfStringUtil::DecodeFromBase64("no Base64!", &decoded) < 0) {
    std::cout << "refused, and " << decoded.GetSize() << " bytes are left\n";
  }
  return 0;
}
