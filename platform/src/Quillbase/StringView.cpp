#include "Quillbase/StringView.h"

#include <new>
#include <ostream>

namespace QB {

StringView& StringView::operator=(const StringView& iOther) noexcept {
  const std::string_view text = iOther.ToStringView();
  new (&_text) KORUnicodeString(KORUnicodeString::Borrowed(), text.data(), text.size());
  return *this;
}

std::ostream& operator<<(std::ostream& ioStream, const StringView& iText) {
  return ioStream << iText.ToStringView();
}

}  // namespace QB
