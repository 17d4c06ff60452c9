#include "VYXPropertyTree/object.h"

#include "VYXPropertyTree/object_body.h"

namespace json {

namespace {

/// The value of a key in a body with a shape, absent or not; null for a key that the shape has not.
const Value* ShapedValue(const ObjectBody& iBody, const SearchKey& iKey) noexcept {
  const std::size_t index = iBody.shape->Find(iKey);
  return index == Shape::kNone ? nullptr : iBody.Values() + index;
}

MappedBody& AsMapped(ObjectBody& ioBody) noexcept {
  return static_cast<MappedBody&>(ioBody);
}

/// Sets a value of a body with a shape.
Value& Replace(ObjectBody& ioBody, Value& ioOld, Value&& ioValue) noexcept {
  ioBody.Touch();
  if (!ioOld.IsAbsent()) {
    return ioOld = std::move(ioValue);
  }
  ++ioBody.size;
  return *new (&ioOld) Value(std::move(ioValue));
}

}  // namespace

std::size_t Object::Size() const noexcept {
  return _body == nullptr ? 0 : _body->size;
}

const Value* Object::Find(const KORUnicodeString& iKey) const noexcept {
  if (_body == nullptr) {
    return nullptr;
  }
  const SearchKey key(iKey.ToStringView());
  if (_body->shape != nullptr) {
    const Value* const value = ShapedValue(*_body, key);
    return value == nullptr || value->IsAbsent() ? nullptr : value;
  }
  const SlotTable& slots = AsMapped(*_body).slots;
  const SlotTable::Place place = slots.Locate(key);
  return place.isFound ? slots.At(place).value : nullptr;
}

Value* Object::Find(const KORUnicodeString& iKey) noexcept {
  Value* const value = const_cast<Value*>(std::as_const(*this).Find(iKey));
  if (value != nullptr) {
    _body->Touch();
  }
  return value;
}

Value& Object::Set(const KORUnicodeString& iKey, Value&& ioValue) {
  const SearchKey key(iKey.ToStringView());
  if (_body == nullptr) {
    _body = MappedBody::Make();
  } else if (_body->shape != nullptr) {
    if (const Value* const value = ShapedValue(*_body, key)) {
      return Replace(*_body, const_cast<Value&>(*value), std::move(ioValue));
    }
    _body = MappedBody::Make(_body);
  }
  MappedBody& body = AsMapped(*_body);
  const SlotTable::Place place = body.slots.LocateForInsert(key);
  if (place.isFound) {
    return *body.slots.At(place).value = std::move(ioValue);
  }
  return body.Insert(place, key, iKey) = std::move(ioValue);
}

void Object::Merge(Object&& ioOther) {
  if (_body == nullptr) {
    _body = ioOther.Detach();
    return;
  }
  if (ioOther._body == nullptr) {
    return;
  }
  ioOther._body->Touch();
  MemberCursor members = MembersOf(ioOther);
  while (const Member member = members.Next()) {
    // The bytes of a text stay with the arena.
    const bool isText = member.value->GetKind() == Kind::String;
    Set(*member.key, isText ? Value(*member.value) : std::move(*member.value));
  }
}

bool Object::Erase(const KORUnicodeString& iKey) noexcept {
  if (_body == nullptr) {
    return false;
  }
  const SearchKey key(iKey.ToStringView());
  if (_body->shape != nullptr) {
    Value* const value = const_cast<Value*>(ShapedValue(*_body, key));
    if (value == nullptr || value->IsAbsent()) {
      return false;
    }
    _body->Touch();
    value->~Value();
    Value::MakeAbsent(value);
    --_body->size;
    return true;
  }
  MappedBody& body = AsMapped(*_body);
  const SlotTable::Place place = body.slots.Locate(key);
  if (!place.isFound) {
    return false;
  }
  body.Erase(place);
  return true;
}

void Object::DestroyMembers() noexcept {
  Destroy(_body);
}

}  // namespace json
