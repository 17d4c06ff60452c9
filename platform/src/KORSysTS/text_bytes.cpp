#include "KORSysTS/text_bytes.h"

#include "byte_search.h"
#include "utf8.h"

namespace VYX::Text {

std::size_t CharacterLength(std::string_view iText, std::size_t iOffset) noexcept {
  return Platform::CharacterLength(iText.data() + iOffset, iText.size() - iOffset);
}

bool IsCharacterBoundary(std::string_view iText, std::size_t iOffset) noexcept {
  return Platform::IsCharacterBoundary(iText, iOffset);
}

bool IsWellFormed(std::string_view iText) noexcept {
  return Platform::IsWellFormed(iText);
}

std::size_t Find(std::string_view iText, std::string_view iWhat, std::size_t iFrom) noexcept {
  if (iWhat.empty() || iFrom > iText.size()) {
    return std::string_view::npos;
  }
  std::size_t found = Platform::FindFirst(iText, iWhat, iFrom);
  while (found != std::string_view::npos &&
         !(Platform::IsCharacterBoundary(iText, found) && Platform::IsCharacterBoundary(iText, found + iWhat.size()))) {
    found = Platform::FindFirst(iText, iWhat, found + 1);
  }
  return found;
}

}  // namespace VYX::Text
