#pragma once

#include <concepts>
#include <cstdint>
#include <cstring>
#include <new>
#include <utility>
#include <variant>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXPropertyTree/array.h"
#include "VYXPropertyTree/object.h"
#include "internal/PooledText.h"

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
 * One value of a property tree: null, Boolean, Number, String, Array or Object, in 24 bytes. The last byte tells the
 * alternative: it is where a text tells its form, with values that no text has.
 *
 * Copies are deep. A moved-from value keeps its alternative, emptied. Copying, comparing and destroying take no stack
 * for the nesting depth.
 */
struct Value {
 public:
  Value() noexcept : _number(0) { SetKind(Kind::Null); }
  template <std::same_as<bool> Boolean>
  explicit Value(Boolean iValue) noexcept : _boolean(iValue) {
    SetKind(Kind::Boolean);
  }
  explicit Value(double iValue) noexcept : _number(iValue) { SetKind(Kind::Number); }
  explicit Value(const KORUnicodeString& iText) : _string(iText) {}
  explicit Value(KORUnicodeString&& ioText) noexcept : _string(std::move(ioText)) {}
  explicit Value(json::Array&& ioArray) noexcept : _array(std::move(ioArray)) { SetKind(Kind::Array); }
  explicit Value(json::Object&& ioObject) noexcept : _object(std::move(ioObject)) { SetKind(Kind::Object); }

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

  Kind GetKind() const noexcept {
    const std::uint8_t tag = Tag();
    return tag < kFirstTag ? Kind::String : static_cast<Kind>(tag & kKindMask);
  }

  // The alternatives; BadVariantAccess when the value holds another one.
  bool GetBoolean() const { return Checked(Kind::Boolean)._boolean; }
  double GetNumber() const { return Checked(Kind::Number)._number; }
  const KORUnicodeString& GetString() const { return Checked(Kind::String)._string; }
  KORUnicodeString& GetString() { return Checked(Kind::String)._string; }
  const json::Array& GetArray() const { return Checked(Kind::Array)._array; }
  json::Array& GetArray() { return Checked(Kind::Array)._array; }
  const json::Object& GetObject() const { return Checked(Kind::Object)._object; }
  json::Object& GetObject() { return Checked(Kind::Object)._object; }

  /// Makes a text whose bytes may stand in an arena.
  template <class Allocate>
  static void MakePooled(Value* oPlace, const KORUnicodeString& iText, Allocate&& iAllocate) {
    VYX::Internal::PooledText::MakeCopy(&oPlace->_string, iText, iAllocate);
  }

  /// Makes a copy of what is neither a text nor a container.
  static void MakeScalar(Value* oPlace, const Value& iOther) noexcept {
    std::memcpy(static_cast<void*>(oPlace), static_cast<const void*>(&iOther), sizeof(Value));
  }

  /// Makes the mark of a place in an object where no member stands. It has no kind and owns nothing.
  static void MakeAbsent(Value* oPlace) noexcept { oPlace->SetTag(kAbsentTag); }
  bool IsAbsent() const noexcept { return Tag() == kAbsentTag; }

  /// Destroys a text, or gives the heap part of a container away (null when it has none); the value is dead afterwards.
  ContainerBody* Dismantle() noexcept;

 private:
  static constexpr std::uint8_t kFirstTag = VYX::Internal::PooledText::kFirstFreeTag;
  static constexpr std::uint8_t kKindMask = 0x07;
  static constexpr std::uint8_t kAbsentTag = 0xFF;

  const Value& Checked(Kind iKind) const {
    if (GetKind() != iKind) {
      ThrowBadAccess();
    }
    return *this;
  }
  Value& Checked(Kind iKind) {
    if (GetKind() != iKind) {
      ThrowBadAccess();
    }
    return *this;
  }
  [[noreturn]] static void ThrowBadAccess();

  std::uint8_t Tag() const noexcept {
    return reinterpret_cast<const std::uint8_t*>(this)[VYX::Internal::PooledText::kTagOffset];
  }
  void SetTag(std::uint8_t iTag) noexcept {
    reinterpret_cast<std::uint8_t*>(this)[VYX::Internal::PooledText::kTagOffset] = iTag;
  }
  void SetKind(Kind iKind) noexcept { SetTag(static_cast<std::uint8_t>(kFirstTag | static_cast<std::uint8_t>(iKind))); }

  void TakeFrom(Value& ioOther) noexcept {
    const std::uint8_t tag = ioOther.Tag();
    if (tag < kFirstTag) {
      new (&_string) KORUnicodeString(std::move(ioOther._string));
      return;
    }
    switch (ioOther.GetKind()) {
      case Kind::Boolean:
        new (&_boolean) bool(ioOther._boolean);
        break;
      case Kind::Number:
        new (&_number) double(ioOther._number);
        break;
      case Kind::Array:
        new (&_array) json::Array(std::move(ioOther._array));
        break;
      case Kind::Object:
        new (&_object) json::Object(std::move(ioOther._object));
        break;
      default:
        break;
    }
    SetTag(tag);
  }

  /// Ends the life of what the value holds.
  void Clear() noexcept {
    const std::uint8_t tag = Tag();
    if (tag < kFirstTag) {
      _string.~KORUnicodeString();
    } else if (GetKind() == Kind::Array) {
      _array.~Array();
    } else if (GetKind() == Kind::Object) {
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
};

static_assert(sizeof(Value) == 24);

inline Value* ArrayBody::Elements() noexcept {
  static_assert(sizeof(ArrayBody) % alignof(Value) == 0);
  return std::launder(reinterpret_cast<Value*>(this + 1));
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
