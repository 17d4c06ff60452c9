#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "KORSysTS/KORUnicodeString.h"
#include "fuzz/support/characters.h"
#include "fuzz/support/require.h"
#include "platform/src/KORSysTS/utf8.h"

// Any bytes into a text and out again, as UTF-8 and as wide characters, against a plain decoder.

namespace {

using namespace VYX::Fuzz;

void CheckBuilding(std::string_view iBytes, const std::u32string& iModel) {
  KORUnicodeString built("what was there");
  const bool isTaken = built.BuildFromUTF8(iBytes.data(), iBytes.size()) == 0;
  Require(isTaken == AreWellFormed(iModel), "UTF-8 is taken exactly when it is well-formed");
  RequireEqual(built.ToStringView(), isTaken ? iBytes : std::string_view(), "what was built");
}

void CheckWide(const KORUnicodeString& iText, const std::u32string& iModel) {
  std::vector<wchar_t> wide(static_cast<std::size_t>(iText.ConvertToWChar(nullptr)) + 1, L'?');
  Require(iText.ConvertToWChar(wide.data()) + 1 == static_cast<int>(wide.size()), "the wide length");
  Require(wide.back() == L'\0', "the wide text ends with a zero");
  if (!AreWellFormed(iModel)) {
    return;
  }
  KORUnicodeString back;
  Require(back.BuildFromWChar(wide.data()) == 0, "a wide text that was written can be read");
  RequireEqual(back.ToStringView(), iText.ToStringView().substr(0, iText.ToStringView().find('\0')), "wide and back");
}

void CheckBoundaries(std::string_view iBytes, const std::u32string& iModel) {
  namespace Platform = VYX::Platform;
  Require(Platform::IsWellFormed(iBytes) == AreWellFormed(iModel), "well-formedness");
  Require(Platform::CountCharacters(iBytes) == iModel.size(), "the count of characters");
  std::size_t offset = 0;
  for (std::size_t index = 0; index < iModel.size(); ++index) {
    const std::size_t length = Encoded({&iModel[index], 1}).size();
    Require(Platform::CharacterLength(iBytes.data() + offset, iBytes.size() - offset) == length,
            "a character's length");
    Require(Platform::IsCharacterBoundary(iBytes, offset), "a boundary");
    for (std::size_t inside = 1; inside < length; ++inside) {
      Require(!Platform::IsCharacterBoundary(iBytes, offset + inside), "no boundary inside a character");
    }
    offset += length;
    Require(Platform::PreviousCharacter(iBytes, offset) == offset - length, "the character before");
  }
}

void CheckCase(const KORUnicodeString& iText, const std::u32string& iModel) {
  KORUnicodeString lower(iText);
  KORUnicodeString upper(iText);
  lower.ToLower();
  upper.ToUpper();
  Require(lower.GetLengthInChar() == static_cast<int>(iModel.size()), "lower case keeps the number of characters");
  Require(upper.GetLengthInChar() == static_cast<int>(iModel.size()), "upper case keeps the number of characters");
  Require(iText.Compare(upper) == upper.Compare(iText), "comparison is symmetric");
  Require(iText.Compare(iText) == 2, "a text is identical to itself");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  const std::string_view bytes(reinterpret_cast<const char*>(iData), iSize);
  const std::u32string model = Characters(bytes);
  const KORUnicodeString text(bytes);
  CheckBuilding(bytes, model);
  CheckWide(text, model);
  CheckBoundaries(bytes, model);
  CheckCase(text, model);
  return 0;
}
