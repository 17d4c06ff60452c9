#include "VYXInfStringUtil.h"

#include <cstddef>
#include <string_view>

#include "KORSysTS/text_bytes.h"

namespace {

bool IsCapital(char iChar) noexcept {
  return iChar >= 'A' && iChar <= 'Z';
}

bool IsWordCharacter(char iChar) noexcept {
  return IsCapital(iChar) || (iChar >= 'a' && iChar <= 'z') || (iChar >= '0' && iChar <= '9') || iChar == '_';
}

// A text parted behind its first character; neither part is there for the empty text.
struct Parted {
  KORUnicodeString first;
  std::string_view rest;
};

Parted PartFirst(const KORUnicodeString& iText) {
  const std::string_view text = iText.ToStringView();
  const std::size_t length = text.empty() ? 0 : VYX::Text::CharacterLength(text, 0);
  return {KORUnicodeString(text.substr(0, length)), text.substr(length)};
}

}  // namespace

KORUnicodeString VYXInfStringUtil::Capitalize(const KORUnicodeString& iText) {
  Parted parted = PartFirst(iText);
  parted.first.ToUpper();
  // A text of two characters loses its second one: that is the rule.
  if (iText.GetLengthInChar() > 2) {
    parted.first.Append(parted.rest);
  }
  return parted.first;
}

KORUnicodeString VYXInfStringUtil::ConvertCamelToSnake(const KORUnicodeString& iText) {
  const std::string_view text = iText.ToStringView();
  KORUnicodeString result;
  result.Reserve(text.size() + text.size() / 4);
  std::size_t copied = 0;
  for (std::size_t position = 1; position < text.size(); ++position) {
    // Where a word goes on with capitals, an underscore parts them off, once for each run of capitals.
    if (IsCapital(text[position]) && IsWordCharacter(text[position - 1])) {
      result.Append(text.substr(copied, position - copied)).Append("_");
      copied = position;
      while (position < text.size() && IsCapital(text[position])) {
        ++position;
      }
    }
  }
  result.Append(text.substr(copied));
  return result;
}

KORUnicodeString VYXInfStringUtil::ConvertSnakeToCamel(const KORUnicodeString& iText) {
  const KORListValKORUnicodeString pieces = Split(iText, "_");
  if (pieces.Size() == 0) {
    return {};
  }
  if (pieces.Size() == 1) {
    Parted parted = PartFirst(pieces[1]);
    parted.first.ToLower().Append(parted.rest);
    return parted.first;
  }
  KORUnicodeString result(pieces[1]);
  result.ToLower();
  for (int position = 2; position <= pieces.Size(); ++position) {
    Parted parted = PartFirst(pieces[position]);
    result.Append(parted.first.ToUpper()).Append(parted.rest);
  }
  return result;
}
