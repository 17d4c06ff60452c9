#include "VYXInfStringUtil.h"

#include <algorithm>
#include <string_view>

#include "KORSysTS/text_bytes.h"

namespace {

// Hands over the pieces between the separators; one that ends the text has no piece behind it. Without a separator the
// text is one piece.
template <class Consumer>
void ForEachPiece(std::string_view iText, std::string_view iSeparator, Consumer iConsume) {
  std::size_t position = 0;
  while (position < iText.size()) {
    const std::size_t cut = std::min(VYX::Text::Find(iText, iSeparator, position), iText.size());
    iConsume(iText.substr(position, cut - position));
    position = cut + std::max<std::size_t>(iSeparator.size(), 1);
  }
}

template <class Texts>
KORUnicodeString JoinTexts(const Texts& iTexts, const KORUnicodeString& iSeparator) {
  std::size_t size = 0;
  for (const KORUnicodeString& text : iTexts) {
    size += text.GetLengthInByte() + iSeparator.GetLengthInByte();
  }
  KORUnicodeString joined;
  joined.Reserve(size);
  bool isFirst = true;
  for (const KORUnicodeString& text : iTexts) {
    if (!isFirst) {
      joined.Append(iSeparator);
    }
    joined.Append(text);
    isFirst = false;
  }
  return joined;
}

}  // namespace

KORListValKORUnicodeString VYXInfStringUtil::Split(const KORUnicodeString& iText, const KORUnicodeString& iSeparator) {
  KORListValKORUnicodeString pieces;
  ForEachPiece(iText.ToStringView(), iSeparator.ToStringView(), [&pieces](std::string_view iPiece) {
    if (!iPiece.empty()) {
      pieces.Append(KORUnicodeString(iPiece));
    }
  });
  return pieces;
}

std::vector<KORUnicodeString> VYXInfStringUtil::SplitV(const KORUnicodeString& iText,
                                                       const KORUnicodeString& iSeparator, bool iSkipEmpty) {
  std::vector<KORUnicodeString> pieces;
  ForEachPiece(iText.ToStringView(), iSeparator.ToStringView(), [&pieces, iSkipEmpty](std::string_view iPiece) {
    if (!iPiece.empty() || !iSkipEmpty) {
      pieces.emplace_back(iPiece);
    }
  });
  return pieces;
}

KORUnicodeString VYXInfStringUtil::Join(const std::vector<KORUnicodeString>& iTexts,
                                        const KORUnicodeString& iSeparator) {
  return JoinTexts(iTexts, iSeparator);
}

KORUnicodeString VYXInfStringUtil::Join(const KORListValKORUnicodeString& iTexts, const KORUnicodeString& iSeparator) {
  return JoinTexts(iTexts, iSeparator);
}

KORUnicodeString VYXInfStringUtil::Concatenate(const std::vector<KORUnicodeString>& iTexts,
                                               const KORUnicodeString& iSeparator) {
  return Join(iTexts, iSeparator);
}
