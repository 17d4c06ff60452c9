#include "VYXPropertyTree/strict_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "KORSysTS/text_bytes.h"
#include "VYXPropertyTree/number_text.h"
#include "VYXPropertyTree/object_body.h"
#include "internal/escape_js.h"

namespace json {

namespace {

constexpr int kLargestIndent = 16;
constexpr double kLargestPlainInteger = 9007199254740992.0;  // 2^53

bool IsControl(char iChar) noexcept {
  return static_cast<unsigned char>(iChar) < 0x20;
}

class StrictWriter {
 public:
  explicit StrictWriter(int iIndent) noexcept
      : _indent(static_cast<std::size_t>(std::clamp(iIndent, 0, kLargestIndent))) {}

  KORUnicodeString Write(const Object& iObject) {
    Open(iObject);
    while (!_open.empty()) {
      if (const Value* const value = BeginNext(_open.back())) {
        WriteValue(*value);
      } else {
        Close();
      }
    }
    return KORUnicodeString(std::string_view(_text));
  }

 private:
  /// A container whose bracket is open.
  struct Frame {
    SlotTable::Cursor members;
    const Entry* member;  // of an object: the one being written
    const Value* elements;
    std::size_t count;  // of what was begun
    std::size_t size;
    bool isObject;
  };

  /// Writes what stands before the next value of a container; null when there is none.
  const Value* BeginNext(Frame& ioFrame) {
    if (ioFrame.count == ioFrame.size) {
      return nullptr;
    }
    if (ioFrame.count++ > 0) {
      _text += ',';
    }
    BreakLine(_open.size());
    if (!ioFrame.isObject) {
      return ioFrame.elements + (ioFrame.count - 1);
    }
    ioFrame.member = ioFrame.members.Next();
    WriteString(ioFrame.member->key, "The key");
    _text += _indent == 0 ? ":" : ": ";
    return &ioFrame.member->value;
  }

  void Open(const Array& iArray) {
    _text += '[';
    _open.push_back({{}, nullptr, iArray.begin(), 0, iArray.Size(), false});
  }
  void Open(const Object& iObject) {
    _text += '{';
    _open.push_back({MembersOf(iObject), nullptr, nullptr, 0, iObject.Size(), true});
  }
  void Close() {
    const Frame closed = _open.back();
    _open.pop_back();
    if (closed.size > 0) {
      BreakLine(_open.size());
    }
    _text += closed.isObject ? '}' : ']';
  }

  void BreakLine(std::size_t iLevel) {
    if (_indent > 0) {
      _text += '\n';
      _text.append(iLevel * _indent, ' ');
    }
  }

  void WriteValue(const Value& iValue) {
    switch (iValue.GetKind()) {
      case Kind::Null:
        _text += "null";
        break;
      case Kind::Boolean:
        _text += iValue.GetBoolean() ? "true" : "false";
        break;
      case Kind::Number:
        WriteShortestNumber(iValue.GetNumber());
        break;
      case Kind::String:
        WriteString(iValue.GetString(), "The text");
        break;
      case Kind::Array:
        Open(iValue.GetArray());
        break;
      case Kind::Object:
        Open(iValue.GetObject());
        break;
    }
  }

  void WriteShortestNumber(double iNumber) {
    char digits[kNumberTextSize];
    if (!std::isfinite(iNumber)) {
      const std::string reason(digits, WriteNumber(digits, iNumber));
      Refuse("The number", reason.c_str());
    }
    const bool isPlainInteger = std::trunc(iNumber) == iNumber && std::fabs(iNumber) <= kLargestPlainInteger;
    const std::to_chars_result written =
        isPlainInteger && !(iNumber == 0 && std::signbit(iNumber))
            ? std::to_chars(digits, digits + sizeof digits, static_cast<std::int64_t>(iNumber))
            : std::to_chars(digits, digits + sizeof digits, iNumber);
    _text.append(digits, written.ptr);
  }

  void WriteString(const KORUnicodeString& iText, const char* iWhat) {
    const std::string_view text = iText.ToStringView();
    if (!VYX::Text::IsWellFormed(text)) {
      Refuse(iWhat, "it is no UTF-8");
    }
    _text += '"';
    const std::size_t start = _text.size();
    VYX::Internal::AppendEscapedForJS(_text, text);
    if (std::any_of(_text.begin() + static_cast<std::ptrdiff_t>(start), _text.end(), IsControl)) {
      EscapeControls(start);
    }
    _text += '"';
  }

  /// Replaces the control characters that are left behind a position.
  void EscapeControls(std::size_t iStart) {
    const std::string text = _text.substr(iStart);
    _text.resize(iStart);
    for (const char letter : text) {
      if (IsControl(letter)) {
        constexpr char kDigits[] = "0123456789abcdef";
        const auto code = static_cast<unsigned char>(letter);
        _text += {'\\', 'u', '0', '0', kDigits[code >> 4U], kDigits[code & 0xFU]};
      } else {
        _text += letter;
      }
    }
  }

  [[noreturn]] void Refuse(const char* iWhat, const char* iReason) const {
    throw std::range_error(std::string(iWhat) + " at '" + Place() + "' cannot stand in JSON: " + iReason);
  }

  /// The place of what is being written as a JSON pointer (RFC 6901).
  std::string Place() const {
    std::string place;
    for (const Frame& frame : _open) {
      place += '/';
      if (!frame.isObject) {
        place += std::to_string(frame.count - 1);
        continue;
      }
      for (const char letter : frame.member->key.ToStringView()) {
        place += letter == '~' ? "~0" : letter == '/' ? "~1" : std::string(1, letter);
      }
    }
    return place;
  }

  std::size_t _indent;
  std::string _text;
  std::vector<Frame> _open;
};

}  // namespace

KORUnicodeString StrictText(const Object& iObject, int iIndent) {
  return StrictWriter(iIndent).Write(iObject);
}

}  // namespace json
