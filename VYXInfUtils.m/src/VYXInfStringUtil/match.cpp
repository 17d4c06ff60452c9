#include "VYXInfStringUtil.h"

#include <bitset>
#include <cstddef>
#include <string_view>

#include "KORSysTS/text_bytes.h"
#include "internal/FailureTrace.h"

namespace {

bool MatchesPattern(const KORUnicodeString& iText, const KORUnicodeString& iPattern) {
  return iText.WildMatch(iPattern, KORUnicodeChar('*'), KORUnicodeChar('\\')) == 1;
}

const std::unordered_set<char>& XssUnsafeCharacters() {
  static const std::unordered_set<char> characters = {'|', ';', '&', '$', '>', '<', '\'', '"', '\\', '!', '#'};
  return characters;
}

}  // namespace

bool VYXInfStringUtil::StringContainsAnyOf(const KORUnicodeString& iText, const std::unordered_set<char>& iCharacters) {
  std::bitset<256> wanted;
  for (const char character : iCharacters) {
    wanted.set(static_cast<unsigned char>(character));
  }
  const std::string_view text = iText.ToStringView();
  for (std::size_t offset = 0; offset < text.size();) {
    const auto byte = static_cast<unsigned char>(text[offset]);
    const std::size_t length = byte < 0x80 ? 1 : VYX::Text::CharacterLength(text, offset);
    const char narrow = length == 1 ? text[offset] : static_cast<char>(KORUnicodeChar(U'\uFFFD'));
    if (wanted.test(static_cast<unsigned char>(narrow))) {
      return true;
    }
    offset += length;
  }
  return false;
}

bool VYXInfStringUtil::StringMatchesByCriterion(CompareStringCondition iCondition, const KORUnicodeString& iCriterion,
                                                const KORUnicodeString& iExamined) {
  switch (iCondition) {
    case CompareStringCondition::Contains:
      return MatchesPattern(iExamined, "*" + iCriterion + "*");
    case CompareStringCondition::StartsWith:
      return StartsWith(iExamined, iCriterion, true);
    case CompareStringCondition::EndsWith:
      return EndsWith(iExamined, iCriterion, true);
    case CompareStringCondition::Equal:
      return iExamined == iCriterion;
    case CompareStringCondition::WildMatch:
      return MatchesPattern(iExamined, iCriterion);
  }
  VYX::Internal::LogUnlessFiltered(ERROR, "Unknown condition.");
  return false;
}

bool VYXInfStringUtil::IsXssSafe(const KORUnicodeString& iText) {
  return !StringContainsAnyOf(iText, XssUnsafeCharacters());
}
