#include "VYXInfStringUtil.h"

#include <cstddef>
#include <string>
#include <string_view>

#include "KORSysTS/text_bytes.h"
#include "internal/escape_js.h"

namespace {

// Whether the character that ends at an offset is the one of these bytes.
bool FollowsCharacter(std::string_view iText, std::size_t iOffset, std::string_view iCharacter) noexcept {
  return iText.substr(0, iOffset).ends_with(iCharacter) &&
         VYX::Text::IsCharacterBoundary(iText, iOffset - iCharacter.size());
}

}  // namespace

KORUnicodeString VYXInfStringUtil::EscapeStringForJS(const KORUnicodeString& iText) {
  const std::string_view text = iText.ToStringView();
  if (VYX::Internal::FindEscapedForJS(text) == text.size()) {
    return iText;
  }
  std::string escaped;
  escaped.reserve(text.size() + text.size() / 8 + 16);
  VYX::Internal::AppendEscapedForJS(escaped, text);
  return KORUnicodeString(std::string_view(escaped));
}

KORUnicodeString VYXInfStringUtil::EscapeChar(const KORUnicodeString& iText, const KORUnicodeChar& iCharacter,
                                              const KORUnicodeChar& iEscapeCharacter) {
  const std::string_view text = iText.ToStringView();
  const std::string character = iCharacter.ConvertToChar();
  const std::string escape = iEscapeCharacter.ConvertToChar();
  KORUnicodeString result;
  result.Reserve(text.size() + text.size() / 8);
  std::size_t copied = 0;
  std::size_t found = VYX::Text::Find(text, character);
  while (found != std::string_view::npos) {
    if (!FollowsCharacter(text, found, escape)) {
      result.Append(text.substr(copied, found - copied)).Append(std::string_view(escape));
      copied = found;
    }
    found = VYX::Text::Find(text, character, found + character.size());
  }
  result.Append(text.substr(copied));
  return result;
}
