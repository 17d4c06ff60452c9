#include "Quillbase/StringView.h"

#include <new>

namespace QB {

StringView& StringView::operator=(const StringView& iOther) noexcept {
  const std::string_view text = iOther.ToStringView();
  new (&_text) KORUnicodeString(KORUnicodeString::Borrowed(), text.data(), text.size());
  return *this;
}

}  // namespace QB
