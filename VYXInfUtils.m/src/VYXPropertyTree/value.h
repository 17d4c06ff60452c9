#pragma once

#include <concepts>
#include <cstdint>
#include <new>
#include <utility>
#include <variant>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXPropertyTree/array.h"
#include "VYXPropertyTree/object.h"

namespace json {

/// The alternatives of a value; the numbers are part of the design.
enum class Kind : std::uint8_t { Null = 0, Boolean = 1, Number = 2, String = 3, Array = 4, Object = 5 };

/// Raised when a value is read as an alternative that it does not hold. The text is the same with every standard
/// library.
class BadVariantAccess : public std::bad_variant_access {
 public:
  const char* what() const noexcept override { return "bad variant access"; }
};

/**
 * One value of a property tree: null, Boolean, Number, String, Array or Object, in 32 bytes.
 *
 * Copies are deep. A moved-from value keeps its alternative, emptied. Copying, comparing and destroying take no stack
 * for the nesting depth.
 */
struct Value {
 public:
  Value() noexcept : _number(0), _kind(Kind::Null) {}
  template <std::same_as<bool> Boolean>
  explicit Value(Boolean iValue) noexcept : _boolean(iValue), _kind(Kind::Boolean) {}
  explicit Value(double iValue) noexcept : _number(iValue), _kind(Kind::Number) {}
  explicit Value(const KORUnicodeString& iText) : _string(iText), _kind(Kind::String) {}
  explicit Value(KORUnicodeString&& ioText) noexcept : _string(std::move(ioText)), _kind(Kind::String) {}
  explicit Value(json::Array&& ioArray) noexcept : _array(std::move(ioArray)), _kind(Kind::Array) {}
  explicit Value(json::Object&& ioObject) noexcept : _object(std::move(ioObject)), _kind(Kind::Object) {}

  Value(const Value& iOther);
  Value(Value&& ioOther) noexcept { TakeFrom(ioOther); }
  Value& operator=(const Value& iOther) { return *this = Value(iOther); }
  Value& operator=(Value&& ioOther) noexcept {
    Value taken(std::move(ioOther));
    Clear();
    TakeFrom(taken);
    return *this;
  }
  ~Value() { Clear(); }

  Kind GetKind() const noexcept { return _kind; }

  // The alternatives; BadVariantAccess when the value holds another one.
  bool GetBoolean() const { return Checked(Kind::Boolean)._boolean; }
  double GetNumber() const { return Checked(Kind::Number)._number; }
  const KORUnicodeString& GetString() const { return Checked(Kind::String)._string; }
  KORUnicodeString& GetString() { return Checked(Kind::String)._string; }
  const json::Array& GetArray() const { return Checked(Kind::Array)._array; }
  json::Array& GetArray() { return Checked(Kind::Array)._array; }
  const json::Object& GetObject() const { return Checked(Kind::Object)._object; }
  json::Object& GetObject() { return Checked(Kind::Object)._object; }

  /// Destroys a text, or gives the heap part of a container away (null when it has none); the value is dead afterwards.
  ContainerBody* Dismantle() noexcept;

 private:
  const Value& Checked(Kind iKind) const {
    if (_kind != iKind) {
      ThrowBadAccess();
    }
    return *this;
  }
  Value& Checked(Kind iKind) {
    if (_kind != iKind) {
      ThrowBadAccess();
    }
    return *this;
  }
  [[noreturn]] static void ThrowBadAccess();

  void TakeFrom(Value& ioOther) noexcept {
    _kind = ioOther._kind;
    switch (_kind) {
      case Kind::Null:
      case Kind::Number:
        new (&_number) double(ioOther._number);
        break;
      case Kind::Boolean:
        new (&_boolean) bool(ioOther._boolean);
        break;
      case Kind::String:
        new (&_string) KORUnicodeString(std::move(ioOther._string));
        break;
      case Kind::Array:
        new (&_array) json::Array(std::move(ioOther._array));
        break;
      case Kind::Object:
        new (&_object) json::Object(std::move(ioOther._object));
        break;
    }
  }

  /// Ends the life of what the value holds.
  void Clear() noexcept {
    if (_kind == Kind::String) {
      _string.~KORUnicodeString();
    } else if (_kind == Kind::Array) {
      _array.~Array();
    } else if (_kind == Kind::Object) {
      _object.~Object();
    }
  }

  union {
    bool _boolean;
    double _number;
    KORUnicodeString _string;
    json::Array _array;
    json::Object _object;
  };
  Kind _kind;
};

static_assert(sizeof(Value) == 32);

inline Value* ArrayBody::Elements() noexcept {
  static_assert(sizeof(ArrayBody) % alignof(Value) == 0);
  return std::launder(reinterpret_cast<Value*>(this + 1));
}

inline Value* Array::begin() noexcept {
  return _body == nullptr ? nullptr : _body->Elements();
}
inline Value* Array::end() noexcept {
  return begin() + Size();
}
inline const Value* Array::begin() const noexcept {
  return _body == nullptr ? nullptr : _body->Elements();
}
inline const Value* Array::end() const noexcept {
  return begin() + Size();
}

/**
 * True when the compact texts of two values or objects are equal; builds neither. The text of a value determines it up
 * to the payload of a not-a-number: escaping is one-to-one, and 17 digits tell any two numbers apart.
 */
bool HaveEqualText(const Value& iLeft, const Value& iRight);
bool HaveEqualText(const Object& iLeft, const Object& iRight);

}  // namespace json
