#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "KORSysTS/KORUnicodeString.h"
#include "fuzz/support/characters.h"
#include "fuzz/support/fuzz_input.h"
#include "fuzz/support/require.h"

// A sequence of edits on a text and on the plain row of its characters, which have to stay the same.

namespace {

using namespace VYX::Fuzz;

constexpr std::size_t kLargestText = 2000;

class Texts {
 public:
  void Edit(FuzzInput& ioInput) {
    const std::size_t kind = ioInput.Below(9);
    const auto start = static_cast<int>(ioInput.Below(_model.size() + 3)) - 1;
    const auto count = static_cast<int>(ioInput.Below(10)) - 1;
    const std::string piece(ioInput.Piece(40));
    const KORUnicodeString text{std::string_view(piece)};
    switch (kind) {
      case 0:
        _text.Append(std::string_view(piece));
        Become(Encoded(_model) + piece);
        break;
      case 1:
        _text.Insert(start, text);
        Replace(start, 0, piece);
        break;
      case 2:
        _text.Remove(start, count);
        Replace(start, count, "");
        break;
      case 3:
        _text.ReplaceSubString(start, count, text);
        Replace(start, count, piece);
        break;
      case 4:
        _text += _text;
        Become(Encoded(_model) + Encoded(_model));
        break;
      case 5:
        _text = _text.SubString(start, count);
        Become(Encoded(Part(start, count)));
        break;
      case 6:
        ReplaceAll(text, KORUnicodeString(ioInput.Piece(8)));
        break;
      case 7:
        _text.Insert(start, _text);
        Replace(start, 0, Encoded(_model));
        break;
      default:
        AppendBytes(piece);
        break;
    }
    if (_model.size() > kLargestText) {
      _text = _text.SubString(0, 50);
      Become(Encoded(_model.substr(0, 50)));
    }
  }

  void Check(FuzzInput& ioInput) const {
    RequireEqual(_text.ToStringView(), Encoded(_model), "the text is its model");
    Require(_text.CastToCharPtr()[_text.GetLengthInByte()] == '\0', "a zero stands behind the text");
    const std::size_t position = ioInput.Below(_model.size() + 2);
    const char32_t expected = position < _model.size() ? _model[position] : 0;
    const KORUnicodeChar character = _text[position];
    Require(character.IsByte() == (expected >= kFirstByte), "a byte of ill-formed text is known as one");
    Require(expected >= kFirstByte || character.GetCodePoint() == expected, "the character at a position");
    const auto count = static_cast<int>(ioInput.Below(8));
    const std::u32string part = Part(static_cast<int>(position), count);
    RequireEqual(_text.SubString(static_cast<int>(position), count).ToStringView(), Encoded(part), "a part");
    CheckSearch(part);
    if (ioInput.Flag()) {
      Require(_text.GetLengthInChar() == static_cast<int>(_model.size()), "the number of characters");
    }
  }

 private:
  void Become(std::string_view iBytes) { _model = Characters(iBytes); }

  std::u32string Part(int iStart, int iCount) const {
    const auto start = static_cast<std::size_t>(iStart);
    return iStart < 0 || iCount < 0 || start >= _model.size() ? std::u32string()
                                                              : _model.substr(start, static_cast<std::size_t>(iCount));
  }

  void Replace(int iStart, int iCount, const std::string& iPiece) {
    const auto start = static_cast<std::size_t>(iStart);
    if (iStart < 0 || iCount < 0 || start > _model.size()) {
      return;
    }
    const std::size_t end = std::min(start + static_cast<std::size_t>(iCount), _model.size());
    Become(Encoded(_model.substr(0, start)) + iPiece + Encoded(_model.substr(end)));
  }

  // The model replaces characters: bytes that are a part of one are not found inside it.
  void ReplaceAll(const KORUnicodeString& iWhat, const KORUnicodeString& iWith) {
    _text.ReplaceAll(iWhat, iWith);
    const std::u32string what = Characters(iWhat.ToStringView());
    std::string bytes;
    for (std::size_t at = 0; at < _model.size();) {
      if (!what.empty() && _model.compare(at, what.size(), what) == 0) {
        bytes += iWith.ToStringView();
        at += what.size();
      } else {
        bytes += Encoded(_model.substr(at++, 1));
      }
    }
    Become(bytes);
  }

  void AppendBytes(std::string_view iBytes) {
    for (const char byte : iBytes) {
      _text += byte;
    }
    Become(Encoded(_model) + std::string(iBytes));
  }

  void CheckSearch(const std::u32string& iPart) const {
    if (iPart.empty() || Characters(Encoded(iPart)) != iPart) {
      return;
    }
    const KORUnicodeString sought(std::string_view{Encoded(iPart)});
    using Mode = KORUnicodeString::KORSearchMode;
    Require(_text.SearchSubString(sought) == static_cast<int>(_model.find(iPart)), "the first occurrence");
    Require(_text.SearchSubString(sought, 0, Mode::Backward) == static_cast<int>(_model.rfind(iPart)),
            "the last occurrence");
  }

  KORUnicodeString _text;
  std::u32string _model;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  FuzzInput input(iData, iSize);
  Texts texts;
  while (!input.IsEmpty()) {
    texts.Edit(input);
    texts.Check(input);
  }
  return 0;
}
