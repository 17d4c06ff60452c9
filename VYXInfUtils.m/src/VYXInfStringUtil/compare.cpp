#include "VYXInfStringUtil.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "KORSysTS/text_bytes.h"

namespace {

bool IsAscii(char iChar) noexcept {
  return static_cast<unsigned char>(iChar) < 0x80;
}

char LowerAscii(char iChar) noexcept {
  return iChar >= 'A' && iChar <= 'Z' ? static_cast<char>(iChar - 'A' + 'a') : iChar;
}

// The first place where two runs of ASCII differ but for case, read with iterators, decides a comparison; at a
// character outside ASCII, which may have a case form inside it, the answer is open.
enum class AsciiOutcome { Equal, LeftEnds, RightEnds, Less, Greater, Open };

template <class Iterator>
AsciiOutcome CompareAsciiIgnoringCase(Iterator iLeft, Iterator iLeftEnd, Iterator iRight, Iterator iRightEnd) noexcept {
  for (; iLeft != iLeftEnd && iRight != iRightEnd; ++iLeft, ++iRight) {
    if (!IsAscii(*iLeft) || !IsAscii(*iRight)) {
      return AsciiOutcome::Open;
    }
    const char left = LowerAscii(*iLeft);
    const char right = LowerAscii(*iRight);
    if (left != right) {
      return left < right ? AsciiOutcome::Less : AsciiOutcome::Greater;
    }
  }
  if (iLeft == iLeftEnd) {
    return iRight == iRightEnd ? AsciiOutcome::Equal : AsciiOutcome::LeftEnds;
  }
  return AsciiOutcome::RightEnds;
}

// Whether a text begins with a part, going by the comparison of the two from the outer end inwards.
std::optional<bool> HoldsPart(AsciiOutcome iOutcome) noexcept {
  if (iOutcome == AsciiOutcome::Open) {
    return std::nullopt;
  }
  return iOutcome == AsciiOutcome::Equal || iOutcome == AsciiOutcome::RightEnds;
}

}  // namespace

bool VYXInfStringUtil::Compare(const KORUnicodeString& iLeft, const KORUnicodeString& iRight, bool iCaseSensitive) {
  return iCaseSensitive ? iLeft == iRight : iLeft.Compare(iRight) >= 1;
}

bool VYXInfStringUtil::VYXStringLessIgnoreCase::operator()(const KORUnicodeString& iLeft,
                                                           const KORUnicodeString& iRight) const {
  const std::string_view left = iLeft.ToStringView();
  const std::string_view right = iRight.ToStringView();
  const AsciiOutcome outcome = CompareAsciiIgnoringCase(left.begin(), left.end(), right.begin(), right.end());
  if (outcome != AsciiOutcome::Open) {
    return outcome == AsciiOutcome::Less || outcome == AsciiOutcome::LeftEnds;
  }
  KORUnicodeString lowerLeft(iLeft);
  KORUnicodeString lowerRight(iRight);
  return lowerLeft.ToLower() < lowerRight.ToLower();
}

bool VYXInfStringUtil::StartsWith(const KORUnicodeString& iText, const KORUnicodeString& iPrefix, bool iCaseSensitive) {
  const std::string_view text = iText.ToStringView();
  const std::string_view prefix = iPrefix.ToStringView();
  if (text.empty() || prefix.empty()) {
    return false;
  }
  if (iCaseSensitive) {
    return text.starts_with(prefix) && VYX::Text::IsCharacterBoundary(text, prefix.size());
  }
  if (const auto answer = HoldsPart(CompareAsciiIgnoringCase(text.begin(), text.end(), prefix.begin(), prefix.end()))) {
    return *answer;
  }
  const int length = iPrefix.GetLengthInChar();
  return iText.GetLengthInChar() >= length && iText.SubString(0, length).Compare(iPrefix) >= 1;
}

bool VYXInfStringUtil::EndsWith(const KORUnicodeString& iText, const KORUnicodeString& iSuffix, bool iCaseSensitive) {
  const std::string_view text = iText.ToStringView();
  const std::string_view suffix = iSuffix.ToStringView();
  if (text.empty() || suffix.empty()) {
    return false;
  }
  if (iCaseSensitive) {
    return text.ends_with(suffix) && VYX::Text::IsCharacterBoundary(text, text.size() - suffix.size());
  }
  if (const auto answer =
          HoldsPart(CompareAsciiIgnoringCase(text.rbegin(), text.rend(), suffix.rbegin(), suffix.rend()))) {
    return *answer;
  }
  const int start = iText.GetLengthInChar() - iSuffix.GetLengthInChar();
  return start >= 0 && iText.SubString(start, iSuffix.GetLengthInChar()).Compare(iSuffix) >= 1;
}

bool VYXInfStringUtil::EndsWith(const KORUnicodeString& iText, const KORListValKORUnicodeString& iSuffixes,
                                bool iCaseSensitive) {
  return std::any_of(iSuffixes.begin(), iSuffixes.end(), [&iText, iCaseSensitive](const KORUnicodeString& iSuffix) {
    return EndsWith(iText, iSuffix, iCaseSensitive);
  });
}
