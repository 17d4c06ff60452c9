#include "KORSysTS/text_characters.h"

#include "utf8.h"

namespace VYX::Text {

KORUnicodeChar Characters::Iterator::operator*() const noexcept {
  const std::string_view rest = _text.substr(_offset);
  const std::size_t length = Platform::SequenceLength(rest.data(), rest.size());
  return length == 0 ? KORUnicodeChar(rest.front()) : KORUnicodeChar(Platform::DecodeSequence(rest.data(), length));
}

Characters::Iterator& Characters::Iterator::operator++() noexcept {
  _offset += Platform::CharacterLength(_text.data() + _offset, _text.size() - _offset);
  return *this;
}

Characters::Iterator& Characters::Iterator::operator--() noexcept {
  _offset = Platform::PreviousCharacter(_text, _offset);
  return *this;
}

}  // namespace VYX::Text
