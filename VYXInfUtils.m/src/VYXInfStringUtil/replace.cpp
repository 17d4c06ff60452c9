#include "VYXInfStringUtil.h"

#include <bitset>
#include <cstddef>
#include <string_view>
#include <unordered_set>

#include "KORSysTS/text_bytes.h"

namespace {

// The characters of a text as a set; it keeps views of the text.
class CharacterSet {
 public:
  explicit CharacterSet(std::string_view iCharacters) {
    for (std::size_t offset = 0; offset < iCharacters.size();) {
      const std::size_t length = VYX::Text::CharacterLength(iCharacters, offset);
      if (length == 1) {
        _bytes.set(static_cast<unsigned char>(iCharacters[offset]));
      } else {
        _sequences.insert(iCharacters.substr(offset, length));
      }
      offset += length;
    }
  }

  bool Contains(std::string_view iCharacter) const {
    return iCharacter.size() == 1 ? _bytes.test(static_cast<unsigned char>(iCharacter.front()))
                                  : _sequences.contains(iCharacter);
  }

 private:
  std::bitset<256> _bytes;  // ASCII, and bytes of ill-formed text
  std::unordered_set<std::string_view> _sequences;
};

}  // namespace

KORUnicodeString VYXInfStringUtil::Trim(const KORUnicodeString& iText) {
  KORUnicodeString trimmed(iText);
  trimmed.ReplaceAll(" ", "");
  return trimmed;
}

KORUnicodeString VYXInfStringUtil::ReplaceCharacters(const KORUnicodeString& iText, const KORUnicodeString& iCharacters,
                                                     const KORUnicodeString& iReplacement) {
  const std::string_view text = iText.ToStringView();
  const CharacterSet replaced(iCharacters.ToStringView());
  KORUnicodeString result;
  result.Reserve(text.size());
  std::size_t copied = 0;
  for (std::size_t offset = 0; offset < text.size();) {
    const std::size_t length = VYX::Text::CharacterLength(text, offset);
    if (replaced.Contains(text.substr(offset, length))) {
      result.Append(text.substr(copied, offset - copied)).Append(iReplacement);
      copied = offset + length;
    }
    offset += length;
  }
  result.Append(text.substr(copied));
  return result;
}
