#include "platform/adapters/json_diagnosis.h"

#include <algorithm>
#include <bitset>
#include <charconv>
#include <cstdint>

#include "platform/adapters/json_reader.h"
#include "platform/adapters/json_tokens.h"

namespace VYX::Adapters {

namespace {

bool IsWhite(char iChar) {
  return iChar == ' ' || iChar == '\t' || iChar == '\n' || iChar == '\r';
}

class StrictReader {
 public:
  explicit StrictReader(std::string_view iText) : _text(iText) {}

  JsonDiagnosis Read() {
    _result.isWellFormed = ReadDocument();
    if (_result.isWellFormed && _result.isRewritten) {
      _result.rewritten.append(_text.substr(_copied));
    }
    return std::move(_result);
  }

 private:
  enum class Expect { Value, FirstElement, FirstMember, Member, CommaOrEnd };

  bool ReadDocument() {
    SkipWhite();
    if (AtEnd()) {
      _at = 0;
      return Refuse(_text.empty() ? "the text is empty" : "the text holds nothing but white space");
    }
    if (LooksLikeUtf16()) {
      _at = 0;
      return Refuse("the text is not UTF-8; it looks like UTF-16");
    }
    do {
      SkipWhite();
      if (AtEnd()) {
        return RefuseEnd();
      }
      if (!ReadNext()) {
        return false;
      }
    } while (_depth > 0);
    SkipWhite();
    return AtEnd() || Refuse("something follows the end of the document");
  }

  bool ReadNext() {
    switch (_expect) {
      case Expect::FirstElement:
        return Head() == ']' ? Close() : ReadValue();
      case Expect::FirstMember:
        return Head() == '}' ? Close() : ReadKey();
      case Expect::Member:
        return ReadKey();
      case Expect::CommaOrEnd:
        return ReadCommaOrEnd();
      case Expect::Value:
        break;
    }
    return ReadValue();
  }

  bool ReadValue() {
    switch (Head()) {
      case '[':
        return Open(false);
      case '{':
        return Open(true);
      case '"':
        return ReadString() && Done();
      case 't':
        return ReadWord("true");
      case 'f':
        return ReadWord("false");
      case 'n':
        return ReadWord("null");
      default:
        return Head() == '-' || (Head() >= '0' && Head() <= '9') ? ReadNumber() : RefuseValue();
    }
  }

  bool ReadKey() {
    if (Head() != '"') {
      return Refuse(Head() == '}' ? "a comma before the end of an object" : "a key in double quotes is missing");
    }
    if (!ReadString()) {
      return false;
    }
    SkipWhite();
    if (AtEnd()) {
      return RefuseEnd();
    }
    if (Head() != ':') {
      return Refuse("the colon behind a key is missing");
    }
    ++_at;
    _expect = Expect::Value;
    return true;
  }

  bool ReadCommaOrEnd() {
    const bool isObject = _isObject[_depth - 1];
    if (Head() == (isObject ? '}' : ']')) {
      return Close();
    }
    if (Head() != ',') {
      return Refuse(isObject ? "a comma or the end of an object is missing"
                             : "a comma or the end of an array is missing");
    }
    ++_at;
    _expect = isObject ? Expect::Member : Expect::Value;
    return true;
  }

  bool Open(bool iIsObject) {
    if (_depth == kJsonMaxDepth) {
      return Refuse("arrays and objects are nested more than 512 deep");
    }
    _isObject[_depth++] = iIsObject;
    ++_at;
    _expect = iIsObject ? Expect::FirstMember : Expect::FirstElement;
    return true;
  }

  bool Close() {
    --_depth;
    ++_at;
    return Done();
  }

  bool Done() {
    _expect = Expect::CommaOrEnd;
    return true;
  }

  bool ReadWord(std::string_view iWord) {
    if (!_text.substr(_at).starts_with(iWord)) {
      return Refuse("a value is misspelt");
    }
    _at += iWord.size();
    return Done();
  }

  bool ReadNumber() {
    const JsonNumberToken token = ScanJsonNumber(_text, _at);
    if (!token.reason.empty()) {
      _at = token.end;
      return Refuse(token.reason);
    }
    const std::string_view digits = _text.substr(_at, token.end - _at);
    double number = 0;
    if (!ConvertJsonNumber(digits, number)) {
      return Refuse("a number is beyond the range of double");
    }
    if (token.isInteger && digits == "-0") {
      Rewrite(token.end, "-0.0");
    } else if (token.isInteger && !FitsIn64Bits(digits)) {
      char buffer[32];
      const char* const end =
          std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::scientific, 16).ptr;
      Rewrite(token.end, {buffer, static_cast<std::size_t>(end - buffer)});
    }
    _at = token.end;
    return Done();
  }

  bool ReadString() {
    const std::size_t begin = _at++;
    while (!AtEnd()) {
      const auto byte = static_cast<std::uint8_t>(Head());
      if (byte == '"') {
        ++_at;
        return true;
      }
      if (byte >= 0x20 && byte < 0x80 && byte != '\\') {
        ++_at;
      } else if (!ReadSpecial(byte)) {
        return false;
      }
    }
    _at = begin;
    return Refuse("a string is not closed");
  }

  bool ReadSpecial(std::uint8_t iByte) {
    std::size_t length = 1;
    std::string_view reason = "a string is not well-formed UTF-8";
    if (iByte == '\\') {
      length = ScanJsonEscape(_text, _at, reason);
    } else if (iByte >= 0x80) {
      length = Utf8SequenceLength(_text, _at);
    } else if (iByte >= 0x08 && iByte <= 0x0D && iByte != 0x0B) {
      return Refuse("a control character in a string has to be escaped");
    } else {
      const char* const hex = "0123456789abcdef";
      const char escape[] = {'\\', 'u', '0', '0', hex[iByte >> 4], hex[iByte & 15]};
      Rewrite(_at + 1, {escape, sizeof escape});
    }
    _at += length;
    return length != 0 || Refuse(reason);
  }

  // Puts a replacement in the place of the text from here to iEnd.
  void Rewrite(std::size_t iEnd, std::string_view iReplacement) {
    if (!_result.isRewritten) {
      _result.isRewritten = true;
      _result.rewritten.reserve(_text.size() + _text.size() / 8 + 64);
    }
    _result.rewritten.append(_text.substr(_copied, _at - _copied)).append(iReplacement);
    _copied = iEnd;
  }

  bool RefuseValue() {
    if (Head() == ']' && _depth > 0 && !_isObject[_depth - 1]) {
      return Refuse("a comma before the end of an array");
    }
    return Refuse("a value is missing");
  }

  bool RefuseEnd() { return Refuse(_isObject[_depth - 1] ? "an object is not closed" : "an array is not closed"); }

  bool Refuse(std::string_view iReason) {
    _result.offset = _at;
    _result.reason = iReason;
    return false;
  }

  // The first character of a document is ASCII, so that UTF-16 shows a zero byte or its byte order mark at once.
  bool LooksLikeUtf16() const {
    const std::string_view mark = _text.substr(0, 2);
    return mark == "\xFF\xFE" || mark == "\xFE\xFF" || (mark.size() == 2 && (mark[0] == '\0') != (mark[1] == '\0'));
  }

  void SkipWhite() {
    while (!AtEnd() && IsWhite(Head())) {
      ++_at;
    }
  }
  bool AtEnd() const { return _at == _text.size(); }
  char Head() const { return _text[_at]; }

  std::string_view _text;
  std::size_t _at = 0;
  std::size_t _copied = 0;
  std::size_t _depth = 0;
  Expect _expect = Expect::Value;
  std::bitset<kJsonMaxDepth> _isObject;
  JsonDiagnosis _result;
};

// True when the "-0" at a place has the neighbours of an integer; it may still stand in a string.
bool IsLikelyNegativeZero(std::string_view iText, std::size_t iPlace) {
  constexpr std::string_view kBefore = "[:, \t\r\n";
  constexpr std::string_view kBehind = "]}, \t\r\n";
  return (iPlace == 0 || kBefore.find(iText[iPlace - 1]) != std::string_view::npos) &&
         (iPlace + 2 == iText.size() || kBehind.find(iText[iPlace + 2]) != std::string_view::npos);
}

// Without a branch in the loop, so that the compiler turns it into vector instructions.
bool HoldsPair(const char* iText, std::size_t iCount) {
  unsigned char found = 0;
  for (std::size_t i = 0; i < iCount; ++i) {
    found |= static_cast<unsigned char>((iText[i] == '-') & (iText[i + 1] == '0'));
  }
  return found != 0;
}

}  // namespace

JsonDiagnosis DiagnoseJson(std::string_view iText) {
  return StrictReader(iText).Read();
}

bool MayHoldNegativeZero(std::string_view iText) noexcept {
  constexpr std::size_t kBlock = 4096;
  const std::size_t pairs = iText.size() < 2 ? 0 : iText.size() - 1;
  for (std::size_t begin = 0; begin < pairs; begin += kBlock) {
    const std::size_t end = std::min(begin + kBlock, pairs);
    if (!HoldsPair(iText.data() + begin, end - begin)) {
      continue;
    }
    for (std::size_t at = iText.find("-0", begin); at < end; at = iText.find("-0", at + 1)) {
      if (IsLikelyNegativeZero(iText, at)) {
        return true;
      }
    }
  }
  return false;
}

}  // namespace VYX::Adapters
