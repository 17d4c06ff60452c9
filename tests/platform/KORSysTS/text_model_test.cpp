#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>

#include "KORSysTS/KORUnicodeString.h"

// Random edits on a text and on a plain sequence of its characters, which have to stay the same. Bytes of ill-formed
// text stand in the model as values behind the last code point.

namespace {

constexpr char32_t kFirstByte = 0x110000;

std::u32string Characters(std::string_view iBytes);

std::string Encoded(const std::u32string& iCharacters) {
  std::string bytes;
  for (const char32_t character : iCharacters) {
    bytes += character >= kFirstByte ? std::string(1, static_cast<char>(character - kFirstByte))
                                     : KORUnicodeChar(character).ConvertToChar();
  }
  return bytes;
}

int ContinuationCount(std::string_view iBytes, std::size_t iOffset) {
  const auto lead = static_cast<unsigned char>(iBytes[iOffset]);
  const int wanted = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
  if (iOffset + static_cast<std::size_t>(wanted) >= iBytes.size()) {
    return -1;
  }
  for (int index = 1; index <= wanted; ++index) {
    if ((static_cast<unsigned char>(iBytes[iOffset + static_cast<std::size_t>(index)]) & 0xC0) != 0x80) {
      return -1;
    }
  }
  return lead >= 0x80 && wanted == 0 ? -1 : wanted;
}

// The plain decoder: decode, encode again, and accept only what comes back the same.
std::u32string Characters(std::string_view iBytes) {
  std::u32string characters;
  for (std::size_t offset = 0; offset < iBytes.size();) {
    const auto lead = static_cast<unsigned char>(iBytes[offset]);
    const int count = ContinuationCount(iBytes, offset);
    if (count >= 0) {
      char32_t value = count == 0 ? lead : lead & (0x3FU >> count);
      for (int index = 1; index <= count; ++index) {
        value = value << 6 | (static_cast<unsigned char>(iBytes[offset + static_cast<std::size_t>(index)]) & 0x3FU);
      }
      const auto length = static_cast<std::size_t>(count) + 1;
      if (KORUnicodeChar(value).ConvertToChar() == iBytes.substr(offset, length)) {
        characters += value;
        offset += length;
        continue;
      }
    }
    characters += kFirstByte + lead;
    ++offset;
  }
  return characters;
}

class TextModel : public ::testing::TestWithParam<int> {
 protected:
  int Below(std::size_t iLimit) { return static_cast<int>(_random() % iLimit); }

  std::string Piece() {
    static const char* const kPieces[] = {
        "",     "a",    "bc",   "\xC3\xA9", "\xE2\x82\xAC", "\xE2\x82",          "\xAC", "\xF0\x9F\x98\x80", "\xF0\x9F",
        "\x98", "\x80", "\xFF", "\xED\xA0", "\xC3",         "plain text, longer"};
    std::string piece;
    for (int count = Below(4); count >= 0; --count) {
      piece += kPieces[static_cast<std::size_t>(Below(_isAscii ? 3 : std::size(kPieces)))];
    }
    return piece;
  }

  void Edit() {
    const std::string piece = Piece();
    const int start = Below(_model.size() + 1);
    const int count = Below(6);
    const auto from = static_cast<std::size_t>(start);
    const auto span = static_cast<std::size_t>(count);
    std::string bytes = Encoded(_model);
    switch (Below(8)) {
      case 0:
      case 1:
        _text.Append(std::string_view(piece));
        bytes += piece;
        break;
      case 2:
        _text.Insert(start, KORUnicodeString(piece));
        bytes = Encoded(_model.substr(0, from)) + piece + Encoded(_model.substr(from));
        break;
      case 3:
        _text.Remove(start, count);
        bytes = Encoded(_model.substr(0, from)) + Encoded(_model.substr(std::min(from + span, _model.size())));
        break;
      case 4:
        _text.ReplaceSubString(start, count, KORUnicodeString(piece));
        bytes = Encoded(_model.substr(0, from)) + piece + Encoded(_model.substr(std::min(from + span, _model.size())));
        break;
      case 5: {
        const KORUnicodeString copy(_text);
        _text = Below(2) == 0 ? copy : copy.SubString(0, copy.GetLengthInChar());
        break;
      }
      case 6:
        if (_model.size() > 200) {
          _text = _text.SubString(start, count);
          bytes = Encoded(_model.substr(from, span));
        }
        break;
      default:
        if (_model.size() < 100) {
          _text += _text;
          bytes += bytes;
        }
        break;
    }
    _model = Characters(bytes);
  }

  void Read() {
    const int position = Below(_model.size() + 2);
    const auto index = static_cast<std::size_t>(position);
    const KORUnicodeChar expected = index >= _model.size() ? KORUnicodeChar()
                                    : _model[index] >= kFirstByte
                                        ? KORUnicodeChar(static_cast<char>(_model[index] - kFirstByte))
                                        : KORUnicodeChar(_model[index]);
    ASSERT_TRUE(_text[position] == expected) << position;
    const int count = Below(8);
    const std::u32string part =
        index <= _model.size() ? _model.substr(index, static_cast<std::size_t>(count)) : std::u32string();
    ASSERT_EQ(_text.SubString(position, count).ConvertToChar(), Encoded(part));
    if (!part.empty() && Characters(Encoded(part)) == part) {
      ASSERT_EQ(_text.SearchSubString(KORUnicodeString(Encoded(part)), 0), static_cast<int>(_model.find(part)));
      ASSERT_EQ(_text.SearchSubString(KORUnicodeString(Encoded(part)), 0, KORUnicodeString::KORSearchMode::Backward),
                static_cast<int>(_model.rfind(part)));
    }
  }

  std::mt19937 _random;
  bool _isAscii = false;
  KORUnicodeString _text;
  std::u32string _model;
};

TEST_P(TextModel, StaysTheSame) {
  _random.seed(static_cast<unsigned>(GetParam()));
  _isAscii = GetParam() % 5 == 0;
  for (int step = 0; step < 2000; ++step) {
    Edit();
    if (Below(3) != 0) {
      Read();
    }
    ASSERT_EQ(_text.ConvertToChar(), Encoded(_model)) << "step " << step;
    ASSERT_EQ(_text.CastToCharPtr()[_text.GetLengthInByte()], '\0');
    if (Below(2) == 0) {
      ASSERT_EQ(_text.GetLengthInChar(), static_cast<int>(_model.size())) << "step " << step;
    }
    if (HasFatalFailure()) {
      return;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, TextModel, ::testing::Range(1, 21));

}  // namespace
