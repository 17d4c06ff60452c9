#include "VYXPropertyTree/compact_text.h"

#include <string>
#include <string_view>
#include <vector>

#include "VYXPropertyTree/number_text.h"
#include "VYXPropertyTree/object_body.h"
#include "internal/escape_js.h"

namespace json {

namespace {

class Writer {
 public:
  KORUnicodeString Write(const Value& iValue) {
    WriteValue(iValue);
    return Finish();
  }
  KORUnicodeString Write(const Object& iObject) {
    Open(iObject);
    return Finish();
  }

 private:
  /// A container whose bracket is open.
  struct Frame {
    SlotTable::Cursor members;
    const Value* element;
    const Value* end;
    bool isObject;
    bool isFirst;
  };

  KORUnicodeString Finish() {
    while (!_open.empty()) {
      if (const Value* const value = BeginNext(_open.back())) {
        WriteValue(*value);
      } else {
        _text += _open.back().isObject ? '}' : ']';
        _open.pop_back();
      }
    }
    return KORUnicodeString(std::string_view(_text));
  }

  /// Writes what stands before the next value of a container; null when there is none.
  const Value* BeginNext(Frame& ioFrame) {
    if (!ioFrame.isObject) {
      if (ioFrame.element == ioFrame.end) {
        return nullptr;
      }
      Separate(ioFrame);
      return ioFrame.element++;
    }
    const Entry* const member = ioFrame.members.Next();
    if (member == nullptr) {
      return nullptr;
    }
    Separate(ioFrame);
    WriteString(member->key);
    _text += ':';
    return &member->value;
  }

  void Separate(Frame& ioFrame) {
    if (!ioFrame.isFirst) {
      _text += ',';
    }
    ioFrame.isFirst = false;
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
        WriteNumberText(iValue.GetNumber());
        break;
      case Kind::String:
        WriteString(iValue.GetString());
        break;
      case Kind::Array:
        Open(iValue.GetArray());
        break;
      case Kind::Object:
        Open(iValue.GetObject());
        break;
    }
  }

  void WriteNumberText(double iNumber) {
    char digits[kNumberTextSize];
    _text.append(digits, WriteNumber(digits, iNumber));
  }

  void WriteString(const KORUnicodeString& iText) {
    _text += '"';
    VYX::Internal::AppendEscapedForJS(_text, iText.ToStringView());
    _text += '"';
  }

  void Open(const Array& iArray) {
    _text += '[';
    _open.push_back({{}, iArray.begin(), iArray.end(), false, true});
  }
  void Open(const Object& iObject) {
    _text += '{';
    _open.push_back({MembersOf(iObject), nullptr, nullptr, true, true});
  }

  std::string _text;
  std::vector<Frame> _open;
};

}  // namespace

KORUnicodeString CompactText(const Value& iValue) {
  return Writer().Write(iValue);
}

KORUnicodeString CompactText(const Object& iObject) {
  return Writer().Write(iObject);
}

}  // namespace json
